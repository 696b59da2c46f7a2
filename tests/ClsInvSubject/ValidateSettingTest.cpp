#include "tests/ClsInvSubject/Fixture.h"
#include "tests/support/NameOfCase.h"

namespace test {
namespace {

using ValidateSetting = InventorySettings;

constexpr const char* noKey = "仓库编码、存货分类编码、存货编码三者必须输入其中之一。";
constexpr const char* itemAndClass = "存货和存货分类不能同时存在。";
constexpr const char* noAccount = "存货科目编码、差异科目编码、分期收款发出商品科目编码、委托代销发出商品科目编码、"
                                  "直运科目编码五项必须输入其中之一。";

struct KeyCase {
    const char* name;
    const char* row;
    const char* key;
};

class Key : public InventorySettings, public testing::WithParamInterface<KeyCase> {};

TEST_P(Key, LeavesASeparatorForEachFieldBehindTheFirst) {
    const ImportRun run = Import("ADD", std::string("<row>") + GetParam().row + "<cInvHead>1401</cInvHead></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{GetParam().key, 0, "ok"}}));
}

INSTANTIATE_TEST_SUITE_P(All, Key,
                         testing::Values(KeyCase{"Warehouse", "<cWhCode>01</cWhCode>", "仓库编码：01， ， "},
                                         KeyCase{"Class", "<cInvCCode>C</cInvCCode>", "存货分类：C， "},
                                         KeyCase{"Item", "<cInvCode>A</cInvCode>", "存货编码：A"},
                                         KeyCase{"WarehouseAndClass", "<cWhCode>01</cWhCode><cInvCCode>C</cInvCCode>",
                                                 "仓库编码：01， 存货分类：C， "},
                                         KeyCase{"WarehouseAndItem", "<cWhCode>01</cWhCode><cInvCode>A</cInvCode>",
                                                 "仓库编码：01， ， 存货编码：A"}),
                         test::nameOfCase);

struct MissingCase {
    const char* name;
    const char* fields;
    const char* key;
    std::string message;
};

class MissingFields : public InventorySettings, public testing::WithParamInterface<MissingCase> {};

TEST_P(MissingFields, AreRefusedBeforeAnyLookUp) {
    const ImportRun run = Import("ADD", std::string("<row>") + GetParam().fields + "</row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{GetParam().key, 101, GetParam().message}}));
    EXPECT_EQ(RowLines(run), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(
    All, MissingFields,
    testing::Values(MissingCase{"NoKey", "<cInvHead>1401</cInvHead>", "", noKey},
                    MissingCase{"NoKeyAndNoAccount", "", "", std::string(noKey) + noAccount},
                    MissingCase{"NoAccount", "<cWhCode>01</cWhCode>", "仓库编码：01， ， ", noAccount},
                    MissingCase{"ItemAndClass", "<cInvCCode>C</cInvCCode><cInvCode>A</cInvCode><czyHead>1401</czyHead>",
                                "存货分类：C， 存货编码：A", itemAndClass},
                    MissingCase{"ItemAndClassAndNoAccount",
                                "<cWhCode>01</cWhCode><cInvCCode>C</cInvCCode><cInvCode>A</cInvCode>",
                                "仓库编码：01， 存货分类：C， 存货编码：A", std::string(itemAndClass) + noAccount}),
    test::nameOfCase);

class OneAccount : public InventorySettings, public testing::WithParamInterface<std::string> {};

TEST_P(OneAccount, Suffices) {
    const std::string& field = GetParam();
    const ImportRun run = Import("ADD", "<row><cWhCode>01</cWhCode><" + field + ">1401</" + field + "></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"仓库编码：01， ， ", 0, "ok"}}));
    EXPECT_EQ(account.Rows("select " + field + " from IA_HeadSet"),
              std::vector<std::string>{"{\"" + field + "\":\"1401\"}"});
}

std::string FieldName(const testing::TestParamInfo<std::string>& info) { return info.param; }

INSTANTIATE_TEST_SUITE_P(All, OneAccount, testing::Values("cInvHead", "cDifHead", "cOutHead", "cEnDispHead", "czyHead"),
                         FieldName);

TEST_F(ValidateSetting, AsksForAnItemAndEveryAccountInOrder) {
    const ImportRun run =
        Import("ADD", "<row><czyHead>1405</czyHead><cEnDispHead>1404</cEnDispHead><cOutHead>1403</cOutHead>"
                      "<cDifHead>1402</cDifHead><cInvHead>1401</cInvHead><cInvCode>A</cInvCode>"
                      "<cWhCode>01</cWhCode></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{"仓库编码：01， ， 存货编码：A", 0, "ok"}}));
    std::vector<std::string> lines = RowLines(run);
    ASSERT_EQ(lines.size(), 9U);
    // What saves the row is the write's own matter.
    lines.resize(7);
    EXPECT_EQ(lines,
              (std::vector{
                  LookedUp("Select cValuetype From inventory  Where cInvCode='A' and bService=0 and bInvType=0 and "
                           "isnull(bPTOModel,0)=0 "),
                  LookedUp("Select cwhvaluestyle From Warehouse  Where cWhCode='01' "),
                  LookedUp("select ccode from code where ccode = '1401' and  bend =1 and iyear =2023"),
                  LookedUp("select ccode from code where ccode = '1402' and  bend =1 and iyear =2023"),
                  LookedUp("select ccode from code where ccode = '1403' and  bend =1 and iyear =2023"),
                  LookedUp("select ccode from code where ccode = '1404' and  bend =1 and iyear =2023"),
                  LookedUp("select ccode from code where ccode = '1405' and  bend =1 and iyear =2023"),
              }));
}

TEST_F(ValidateSetting, AsksForAClassBeforeTheWarehouse) {
    const ImportRun run = Import("ADD", "<row><cWhCode>02</cWhCode><cInvCCode>C1</cInvCCode>"
                                        "<cInvHead>1401</cInvHead></row>");
    std::vector<std::string> lines = RowLines(run);
    ASSERT_EQ(lines.size(), 5U);
    lines.resize(3);
    EXPECT_EQ(lines, (std::vector{
                         LookedUp("Select cInvCCode From inventoryclass  Where cInvCCode='C1'"),
                         LookedUp("Select cwhvaluestyle From Warehouse  Where cWhCode='02' "),
                         LookedUp("select ccode from code where ccode = '1401' and  bend =1 and iyear =2023"),
                     }));
}

struct CodeCase {
    const char* name;
    const char* fields;
    const char* message;
    std::size_t lookups;
};

class CodeCheck : public InventorySettings, public testing::WithParamInterface<CodeCase> {};

TEST_P(CodeCheck, StopsAtTheFirstUnknownCode) {
    const ImportRun run = Import("ADD", std::string("<row>") + GetParam().fields + "</row>");
    EXPECT_NE(run.result.find(std::string("code=\"101\" dsc=\"") + GetParam().message + "\"/></qxinterface>"),
              std::string::npos)
        << run.result;
    EXPECT_EQ(run.result.find("\"ok\""), std::string::npos) << run.result;
    EXPECT_EQ(RowLines(run).size(), GetParam().lookups);
    EXPECT_EQ(Stored(), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(
    All, CodeCheck,
    testing::Values(
        CodeCase{"UnknownItem", "<cWhCode>X</cWhCode><cInvCode>X</cInvCode><cInvHead>X</cInvHead>", "存货编码不合法。",
                 1},
        CodeCase{"ServiceItem", "<cInvCode>S</cInvCode><cInvHead>1401</cInvHead>", "存货编码不合法。", 1},
        CodeCase{"DiscountItem", "<cInvCode>D</cInvCode><cInvHead>1401</cInvHead>", "存货编码不合法。", 1},
        CodeCase{"PtoModelItem", "<cInvCode>P</cInvCode><cInvHead>1401</cInvHead>", "存货编码不合法。", 1},
        CodeCase{"UnknownClass", "<cWhCode>X</cWhCode><cInvCCode>X</cInvCCode><cInvHead>X</cInvHead>",
                 "存货分类编码不合法。", 1},
        CodeCase{"UnknownWarehouse", "<cWhCode>X</cWhCode><cInvCCode>C</cInvCCode><cInvHead>X</cInvHead>",
                 "仓库编码不合法。", 2},
        CodeCase{"UnknownInventoryAccount",
                 "<cWhCode>01</cWhCode><cInvHead>X</cInvHead><cDifHead>X</cDifHead><cOutHead>X</cOutHead>"
                 "<cEnDispHead>X</cEnDispHead><czyHead>X</czyHead>",
                 "存货科目编码不合法。", 2},
        CodeCase{"UnknownDifferenceAccount",
                 "<cWhCode>01</cWhCode><cInvHead>1401</cInvHead><cDifHead>X</cDifHead><cOutHead>X</cOutHead>"
                 "<cEnDispHead>X</cEnDispHead><czyHead>X</czyHead>",
                 "差异科目编码不合法。", 3},
        CodeCase{"UnknownInstalmentAccount",
                 "<cWhCode>01</cWhCode><cInvHead>1401</cInvHead><cDifHead>1401</cDifHead><cOutHead>X</cOutHead>"
                 "<cEnDispHead>X</cEnDispHead><czyHead>X</czyHead>",
                 "分期收款发出商品科目编码不合法。", 4},
        CodeCase{"UnknownConsignmentAccount",
                 "<cWhCode>01</cWhCode><cInvHead>1401</cInvHead><cDifHead>1401</cDifHead><cOutHead>1401</cOutHead>"
                 "<cEnDispHead>X</cEnDispHead><czyHead>X</czyHead>",
                 "委托代销发出商品科目编码不合法。", 5},
        CodeCase{"UnknownDirectShipmentAccount",
                 "<cWhCode>01</cWhCode><cInvHead>1401</cInvHead><cDifHead>1401</cDifHead><cOutHead>1401</cOutHead>"
                 "<cEnDispHead>1401</cEnDispHead><czyHead>X</czyHead>",
                 "直运科目编码不合法。", 6},
        CodeCase{"AccountWithSubAccounts", "<cWhCode>01</cWhCode><cInvHead>14</cInvHead>", "存货科目编码不合法。", 2},
        CodeCase{"AccountOfAnotherYear", "<cWhCode>01</cWhCode><czyHead>1499</czyHead>", "直运科目编码不合法。", 2}),
    test::nameOfCase);

TEST_F(ValidateSetting, AcceptsAnItemWhosePtoFlagIsNull) {
    EXPECT_EQ(Import("ADD", "<row><cInvCode>B</cInvCode><cInvHead>1401</cInvHead></row>").result,
              ResultDocument("ADD", {{"存货编码：B", 0, "ok"}}));
}

struct QuoteCase {
    const char* name;
    const char* fields;
    const char* key;
    const char* sql;
};

class Quote : public InventorySettings, public testing::WithParamInterface<QuoteCase> {};

TEST_P(Quote, RefusesTheRowWithoutAWord) {
    // The next row is imported all the same.
    const ImportRun run = Import("ADD", std::string("<row>") + GetParam().fields +
                                            "</row><row><cWhCode>01</cWhCode><cInvHead>1401</cInvHead></row>");
    EXPECT_EQ(run.result, ResultDocument("ADD", {{GetParam().key, 101, ""}, {"仓库编码：01， ， ", 0, "ok"}}));
    const std::vector<std::string> lines = RowLines(run);
    ASSERT_GT(lines.size(), 4U);
    EXPECT_EQ(lines[lines.size() - 5], LookedUp(GetParam().sql, -2147217900));
    EXPECT_EQ(Stored().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    All, Quote,
    testing::Values(QuoteCase{"Item", "<cInvCode>A'B</cInvCode><cInvHead>1401</cInvHead>", "存货编码：A'B",
                              "Select cValuetype From inventory  Where cInvCode='A'B' and bService=0 and bInvType=0 "
                              "and isnull(bPTOModel,0)=0 "},
                    QuoteCase{"Class", "<cInvCCode>A'B</cInvCCode><cInvHead>1401</cInvHead>", "存货分类：A'B， ",
                              "Select cInvCCode From inventoryclass  Where cInvCCode='A'B'"},
                    QuoteCase{"Warehouse", "<cWhCode>A'B</cWhCode><cInvHead>1401</cInvHead>", "仓库编码：A'B， ， ",
                              "Select cwhvaluestyle From Warehouse  Where cWhCode='A'B' "},
                    QuoteCase{"InventoryAccount", "<cWhCode>02</cWhCode><cInvHead>A'B</cInvHead>", "仓库编码：02， ， ",
                              "select ccode from code where ccode = 'A'B' and  bend =1 and iyear =2023"},
                    QuoteCase{"DirectShipmentAccount",
                              "<cWhCode>02</cWhCode><cInvHead>1401</cInvHead><czyHead>A'B</czyHead>",
                              "仓库编码：02， ， ",
                              "select ccode from code where ccode = 'A'B' and  bend =1 and iyear =2023"}),
    test::nameOfCase);

} // namespace
} // namespace test
