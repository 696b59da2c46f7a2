#include "tests/ClsKovra/Lookups.h"
#include "tests/ClsKovra/OpeningFixture.h"

namespace master_data {
namespace {

namespace lookup = test::lookup;
using test::Inserted;
using test::Opened;
using test::Outcome;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::string_view key = "仓库编码：01， 存货编码：A1";

/// A row of item A1 in warehouse 01 that is accepted, with further children.
std::string Row(std::string_view more = {}) {
    std::string row = "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iQuantity>5</iQuantity><iCost>2</iCost>"
                      "<iPrice>10</iPrice>";
    return row.append(more).append("</row>");
}

class MasterDataTest : public test::OpeningTest {
protected:
    void ExpectRefused(const std::string& row, std::string_view message, const std::vector<std::string>& lookups) {
        const Outcome outcome = ImportOne(row);
        EXPECT_EQ(outcome.code, 101);
        EXPECT_EQ(outcome.description, message);
        EXPECT_THAT(RowLines(), ElementsAreArray(lookups));
        EXPECT_THAT(account.Rows("SELECT AutoID FROM Ia_subsidiary"), IsEmpty());
    }
    void ExpectAccepted(const std::string& row) { EXPECT_EQ(ImportOne(row), (Outcome{std::string(key), 0, "ok"})); }

    void ValueByItem() { account.Run("UPDATE AccInformation SET cValue = N'按存货核算' WHERE cName = N'cValueStyle'"); }
};

TEST_F(MasterDataTest, AsksInOrderWhenValuedByWarehouse) {
    ExpectAccepted(Row());
    std::vector<std::string> expected = lookup::MasterData("01", "A1");
    expected.push_back(lookup::Flag("bInvQuality", "A1"));
    expected.push_back(Inserted("Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, cWhCode, cInvCode, IAInQuantity, "
                                "iInCost, IAInPrice, iDebitDifCost, iCreditDifcost, cBusType ) Values(2023,'34', "
                                "1,'01', 'A1', 5, 2, 10, Null, Null, 'EAI' )"));
    EXPECT_THAT(RowLines(), ElementsAreArray(expected));
}

TEST_F(MasterDataTest, AsksInOrderWhenValuedByItem) {
    ValueByItem();
    ExpectAccepted(Row());
    EXPECT_THAT(RowLines(),
                ElementsAre(lookup::Item("A1"), lookup::Scope(), lookup::FreeItems("A1"), lookup::Warehouse("01"),
                            lookup::Scope(), lookup::MethodOfItem("A1"), lookup::BatchAccounting("A1"),
                            lookup::Flag("bInvQuality", "A1"), testing::HasSubstr("Insert Into Ia_subsidiary")));
}

TEST_F(MasterDataTest, ReportsEachMissingFieldAlone) {
    ExpectRefused("<row><cInvCode>A1</cInvCode><iPrice>1</iPrice></row>", "仓库编码不能为空。", {});
    ExpectRefused("<row><cWhCode>01</cWhCode><iPrice>1</iPrice></row>", "存货编码不能为空。", {});
    ExpectRefused("<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode></row>", "金额不能为空。", {});
}

TEST_F(MasterDataTest, ReportsAllMissingFieldsAtOnce) {
    ExpectRefused("<row/>", "仓库编码不能为空。存货编码不能为空。金额不能为空。", {});
}

TEST_F(MasterDataTest, ReadsNamesWithTheirLetterCase) {
    ExpectRefused("<row><CWHCODE>01</CWHCODE><cinvcode>A1</cinvcode><iprice>1</iprice></row>",
                  "仓库编码不能为空。存货编码不能为空。金额不能为空。", {});
}

TEST_F(MasterDataTest, RefusesAnUnknownItem) {
    ExpectRefused("<row><cWhCode>01</cWhCode><cInvCode>X9</cInvCode><iPrice>1</iPrice></row>", "存货编码不合法。",
                  {lookup::Item("X9")});
}

TEST_F(MasterDataTest, RefusesServicesDiscountsAndModelsAsUnknown) {
    for (const std::string flag : {"bService", "bInvType", "bPTOModel"}) {
        SCOPED_TRACE(flag);
        account.Run("UPDATE inventory SET " + flag + " = 1 WHERE cInvCode = 'A1'");
        ExpectRefused(Row(), "存货编码不合法。", {lookup::Item("A1")});
        account.Run("UPDATE inventory SET " + flag + " = 0 WHERE cInvCode = 'A1'");
    }
}

TEST_F(MasterDataTest, AcceptsAnItemWithANullModelFlag) {
    account.Run("UPDATE inventory SET bPTOModel = NULL WHERE cInvCode = 'A1'");
    ExpectAccepted(Row());
}

TEST_F(MasterDataTest, RefusesAnItemWithoutAMethodWhenValuedByItem) {
    ValueByItem();
    account.Run("UPDATE inventory SET cValueType = NULL WHERE cInvCode = 'A1'");
    ExpectRefused(Row(), "该存货没有设置计价方式。", {lookup::Item("A1"), lookup::Scope()});
}

TEST_F(MasterDataTest, DoesNotMissTheItemsMethodWhenValuedByWarehouse) {
    account.Run("UPDATE inventory SET cValueType = NULL WHERE cInvCode = 'A1'");
    ExpectAccepted(Row());
}

TEST_F(MasterDataTest, RefusesAMissingFreeItemWhateverTheOthersHold) {
    account.Run("UPDATE inventory SET bFree3 = 1 WHERE cInvCode = 'A1'");
    ExpectRefused(Row("<cFree1>红</cFree1><cFree2>大</cFree2><cFree3/><cFree4>重</cFree4>"),
                  "设置自由项的存货必须输入自由项。", {lookup::Item("A1"), lookup::Scope(), lookup::FreeItems("A1")});
    ExpectAccepted(Row("<cFree3>A</cFree3>"));
}

TEST_F(MasterDataTest, LooksAtAllTenFreeItems) {
    account.Run("UPDATE inventory SET bFree1 = NULL, bFree10 = 1 WHERE cInvCode = 'A1'");
    ExpectRefused(Row("<cFree9>九</cFree9>"), "设置自由项的存货必须输入自由项。",
                  {lookup::Item("A1"), lookup::Scope(), lookup::FreeItems("A1")});
    ExpectAccepted(Row("<cFree10>十</cFree10>"));
}

TEST_F(MasterDataTest, RefusesAnUnknownWarehouse) {
    ExpectRefused("<row><cWhCode>99</cWhCode><cInvCode>A1</cInvCode><iPrice>1</iPrice></row>", "仓库编码不合法。",
                  {lookup::Item("A1"), lookup::Scope(), lookup::FreeItems("A1"), lookup::Warehouse("99")});
}

TEST_F(MasterDataTest, RefusesAWarehouseOutsideCostingAsUnknown) {
    account.Run("UPDATE Warehouse SET bInCost = 0 WHERE cWhCode = '01'");
    ExpectRefused(Row(), "仓库编码不合法。",
                  {lookup::Item("A1"), lookup::Scope(), lookup::FreeItems("A1"), lookup::Warehouse("01")});
}

TEST_F(MasterDataTest, RefusesAWarehouseWithoutAMethod) {
    account.Run("UPDATE Warehouse SET cWhValueStyle = NULL WHERE cWhCode = '01'");
    ExpectRefused(Row(), "该仓库没有设置计价方式。",
                  {lookup::Item("A1"), lookup::Scope(), lookup::FreeItems("A1"), lookup::Warehouse("01")});
}

TEST_F(MasterDataTest, DoesNotMissTheWarehousesMethodWhenValuedByItem) {
    ValueByItem();
    account.Run("UPDATE Warehouse SET cWhValueStyle = NULL WHERE cWhCode = '01'");
    ExpectAccepted(Row());
}

TEST_F(MasterDataTest, RefusesAMissingBatchNumberWhereCostIsByBatch) {
    account.Run("UPDATE inventory SET bCheckBatch = 1, bInvBatch = 1 WHERE cInvCode = 'A1'");
    for (const std::string method : {"全月平均法", "移动平均法", "先进先出法", "后进先出法"}) {
        SCOPED_TRACE(method);
        account.Run("UPDATE Warehouse SET cWhValueStyle = N'" + method + "' WHERE cWhCode = '01'");
        ExpectRefused(Row(), "批次核算的存货未录入批号，不允许导入。", lookup::MasterData("01", "A1"));
    }
    ExpectAccepted(Row("<cBatchCode>B1</cBatchCode>"));
}

TEST_F(MasterDataTest, RefusesAMissingBatchNumberWhenValuedByItem) {
    ValueByItem();
    account.Run("UPDATE inventory SET bCheckBatch = 1 WHERE cInvCode = 'A1'");
    ExpectRefused(Row(), "批次核算的存货未录入批号，不允许导入。",
                  {lookup::Item("A1"), lookup::Scope(), lookup::FreeItems("A1"), lookup::Warehouse("01"),
                   lookup::Scope(), lookup::MethodOfItem("A1"), lookup::BatchAccounting("A1")});
}

TEST_F(MasterDataTest, ExemptsTheOtherMethodsFromBatchAccounting) {
    account.Run("UPDATE inventory SET bCheckBatch = 1, iInvRCost = 2 WHERE cInvCode = 'A1'");
    for (const std::string method : {"个别计价法", "计划价法", "售价法"}) {
        SCOPED_TRACE(method);
        account.Run("UPDATE Warehouse SET cWhValueStyle = N'" + method + "' WHERE cWhCode = '01'");
        ExpectAccepted(Row());
        EXPECT_THAT(RowLines(), testing::Not(testing::Contains(lookup::BatchAccounting("A1"))));
    }
}

TEST_F(MasterDataTest, ANullBatchAccountingFlagDoesNotAskForABatchNumber) {
    account.Run("UPDATE inventory SET bCheckBatch = NULL WHERE cInvCode = 'A1'");
    ExpectAccepted(Row());
}

class ProjectTest : public MasterDataTest {
protected:
    ProjectTest() {
        account.Run("INSERT INTO fitem (citem_class, citem_name, ctable) VALUES ('97', N'研发项目', 'fitemss97')\nGO\n"
                    "INSERT INTO fitem (citem_class, citem_name, ctable) VALUES ('00', N'存货项目', 'Inventory')\nGO\n"
                    "INSERT INTO fitemss97 (citemcode, citemname) VALUES ('RD01', N'主轴研制')");
    }
    static std::vector<std::string> After(std::vector<std::string> further) {
        std::vector<std::string> lookups = lookup::MasterData("01", "A1");
        lookups.insert(lookups.end(), further.begin(), further.end());
        return lookups;
    }
};

TEST_F(ProjectTest, WritesTheNamesIntoTheRow) {
    ExpectAccepted(Row("<cItem_class>97</cItem_class><cItemCode>RD01</cItemCode><cItemCName/><cName>旧名</cName>"));
    EXPECT_THAT(
        RowLines(),
        ElementsAreArray(
            After({lookup::ProjectClass("97"), lookup::Project("fitemss97", "RD01"), lookup::Flag("bInvQuality", "A1"),
                   Inserted("Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, cWhCode, cInvCode, cItem_class, "
                            "cItemCode, cItemCName, cName, IAInQuantity, iInCost, IAInPrice, iDebitDifCost, "
                            "iCreditDifcost, cBusType ) Values(2023,'34', 1,'01', 'A1', '97', 'RD01', '研发项目', "
                            "'主轴研制', 5, 2, 10, Null, Null, 'EAI' )")})));
}

TEST_F(ProjectTest, FindsAProjectAmongTheItems) {
    ExpectAccepted(Row("<cItem_class>00</cItem_class><cItemCode>P1</cItemCode><cItemCName/><cName/>"));
    EXPECT_THAT(RowLines(), testing::Contains(lookup::ProjectOfInventory("Inventory", "P1")));
    EXPECT_THAT(account.Rows("SELECT cItemCName, cName FROM Ia_subsidiary"),
                ElementsAre(R"({"cItemCName":"存货项目","cName":"轴承"})"));
}

TEST_F(ProjectTest, RefusesAClassWithoutAProject) {
    ExpectRefused(Row("<cItem_class>97</cItem_class>"), "没有录入项目。", lookup::MasterData("01", "A1"));
}

TEST_F(ProjectTest, RefusesAProjectWithoutAClass) {
    ExpectRefused(Row("<cItemCode>RD01</cItemCode>"), "没有录入项目大类。", lookup::MasterData("01", "A1"));
}

TEST_F(ProjectTest, RefusesAnUnknownClass) {
    ExpectRefused(Row("<cItem_class>55</cItem_class><cItemCode>RD01</cItemCode><cItemCName/><cName/>"),
                  "项目大类不合法。", After({lookup::ProjectClass("55")}));
}

TEST_F(ProjectTest, RefusesAnUnknownProject) {
    ExpectRefused(Row("<cItem_class>97</cItem_class><cItemCode>RD99</cItemCode><cItemCName/><cName/>"), "项目不合法。",
                  After({lookup::ProjectClass("97"), lookup::Project("fitemss97", "RD99")}));
}

TEST_F(ProjectTest, RefusesAnUnknownProjectAmongTheItems) {
    ExpectRefused(Row("<cItem_class>00</cItem_class><cItemCode>X9</cItemCode><cItemCName/><cName/>"), "项目不合法。",
                  After({lookup::ProjectClass("00"), lookup::ProjectOfInventory("Inventory", "X9")}));
}

TEST_F(ProjectTest, RefusesWithoutAMessageWhenAChildForAnameIsMissing) {
    ExpectRefused(Row("<cItem_class>97</cItem_class><cItemCode>RD01</cItemCode><cName/>"), "",
                  After({lookup::ProjectClass("97")}));
    ExpectRefused(Row("<cItem_class>97</cItem_class><cItemCode>RD01</cItemCode><cItemCName/>"), "",
                  After({lookup::ProjectClass("97"), lookup::Project("fitemss97", "RD01")}));
}

TEST_F(ProjectTest, RefusesWithoutAMessageWhenANameIsNull) {
    account.Run("UPDATE fitemss97 SET citemname = NULL");
    ExpectRefused(Row("<cItem_class>97</cItem_class><cItemCode>RD01</cItemCode><cItemCName/><cName/>"), "",
                  After({lookup::ProjectClass("97"), lookup::Project("fitemss97", "RD01")}));
}

TEST_F(ProjectTest, AsksATableWithoutANameWhenItIsNull) {
    account.Run("UPDATE fitem SET ctable = NULL WHERE citem_class = '97'");
    std::string failed = Opened("Select cItemCode,cItemName from  Where cItemCode ='RD01' ");
    failed.insert(failed.size() - 1, R"(,"error":-2147217900)");
    ExpectRefused(Row("<cItem_class>97</cItem_class><cItemCode>RD01</cItemCode><cItemCName/><cName/>"), "",
                  After({lookup::ProjectClass("97"), failed}));
}

TEST_F(MasterDataTest, GivesTheFirstOfTwoFailures) {
    struct Case {
        std::string setup;
        std::string row;
        std::string_view message;
    };
    // Each row fails in two ways; the later check is not reached.
    const std::vector<Case> cases = {
        {"", "<row><cWhCode>99</cWhCode><cInvCode>X9</cInvCode></row>", "金额不能为空。"},
        {"", "<row><cWhCode>99</cWhCode><cInvCode>X9</cInvCode><iPrice>1</iPrice></row>", "存货编码不合法。"},
        {"UPDATE inventory SET bFree1 = 1 WHERE cInvCode = 'A1'",
         "<row><cWhCode>99</cWhCode><cInvCode>A1</cInvCode><iPrice>1</iPrice></row>",
         "设置自由项的存货必须输入自由项。"},
        {"UPDATE inventory SET bFree1 = 0, bCheckBatch = 1 WHERE cInvCode = 'A1'",
         "<row><cWhCode>99</cWhCode><cInvCode>A1</cInvCode><iPrice>1</iPrice></row>", "仓库编码不合法。"},
        {"", Row("<cItemCode>RD01</cItemCode>"), "批次核算的存货未录入批号，不允许导入。"},
        {"UPDATE inventory SET bCheckBatch = 0 WHERE cInvCode = 'A1'",
         Row("<cItemCode>RD01</cItemCode><dVouDate>never</dVouDate>"), "没有录入项目大类。"},
        {"", Row("<dVouDate>never</dVouDate><cDefine4>never</cDefine4>"), "入库日期日期不合法！"},
        {"",
         "<row><cWhCode>01</cWhCode><cInvCode>A1</cInvCode><iPrice>1</iPrice><iCost>-1</iCost>"
         "<cBatchCode>B</cBatchCode></row>",
         "不是批次管理的存货！"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.message);
        if (!one.setup.empty()) {
            account.Run(one.setup);
        }
        const Outcome outcome = ImportOne(one.row);
        EXPECT_EQ(outcome.code, 101);
        EXPECT_EQ(outcome.description, one.message);
    }
}

} // namespace
} // namespace master_data
