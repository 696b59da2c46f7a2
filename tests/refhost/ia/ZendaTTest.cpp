#include "refhost/ia/ZendaT.h"

#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "refhost/ia/RsXmlHelper.h"
#include "refhost/ia/VoucherContext.h"
#include "refhost/trace/Traced.h"
#include "tests/support/TestAccount.h"

#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view byItem = "按存货核算";
constexpr std::string_view byWarehouse = "按仓库核算";

/// The component on an account with the items A (planned price 25) and B (prices by its first free item), on
/// 2023-01-15.
class ZendaT : public testing::Test {
protected:
    ZendaT()
        : trace_((account_.folder() / "trace.jsonl").string()), environment_(&trace_),
          login_(account_.LoginXml(), environment_), context_(std::make_shared<refhost::VoucherContext>(login_)),
          connection_(environment_.CreateConnection()), component_(environment_) {
        account_.Run(
            R"(INSERT INTO Warehouse (cWhCode, cWhValueStyle) VALUES (N'01', N'全月平均法'), (N'03', N'计划价法'),
(N'04', N'售价法'), (N'09', NULL)
GO
INSERT INTO inventory (cInvCode, cValueType, iInvRCost) VALUES (N'A', N'计划价法', 25), (N'B', N'计划价法', 400),
(N'C', N'计划价法', NULL)
GO
INSERT INTO InvCheckFreeIA870 (cInvCode, cFree1, fInvRCost) VALUES (N'A', NULL, 25), (N'B', N'国产', 380),
(N'B', N'进口', NULL)
GO
INSERT INTO Ia_subsidiary (dVouDate, dKeepDate, cWhCode, cInvCode, cFree1, iAInQuantity, iAOutQuantity, iAInPrice,
iAOutPrice) VALUES
(NULL, NULL, N'03', N'A', NULL, 100, NULL, 2500, NULL),
('2022-12-31', NULL, N'04', N'A', NULL, 8, NULL, 200, NULL),
('2023-01-05', '2023-01-10', N'03', N'A', NULL, NULL, 30, NULL, 750),
('2023-01-05', '2023-01-12', N'03', N'A', NULL, 4.5, NULL, 112.5, NULL),
('2023-01-05', '2023-01-16', N'03', N'A', NULL, 1000, NULL, 25000, NULL),
('2023-01-16', NULL, N'03', N'A', NULL, 1000, NULL, 25000, NULL),
('2022-12-31', NULL, N'03', N'B', N'国产', 10, NULL, 3800, NULL),
('2022-12-31', NULL, N'03', N'B', N'进口', 3, NULL, 1200, NULL)
GO
CREATE TABLE W (cWhCode nvarchar(10) NULL, cInvCode nvarchar(60) NOT NULL, bRandom int NULL,
iCJVACost decimal(30, 10) NULL, cFree1 nvarchar(20) NULL, cFree2 nvarchar(20) NULL, cFree3 nvarchar(20) NULL,
cFree4 nvarchar(20) NULL, cFree5 nvarchar(20) NULL, cFree6 nvarchar(20) NULL, cFree7 nvarchar(20) NULL,
cFree8 nvarchar(20) NULL, cFree9 nvarchar(20) NULL, cFree10 nvarchar(20) NULL)
GO
)");
        connection_->Open(login_.ConnectionString(), "", "", host::command_option::unspecified);
    }

    void Option(const std::string& cName, std::string_view value) {
        account_.Run("INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'" + cName + "', N'" +
                     std::string(value) + "')");
    }
    void StageRow(const std::string& cInvCode, const std::string& price, const std::string& cFree1 = {}) {
        account_.Run("INSERT INTO W (cWhCode, cInvCode, bRandom, iCJVACost, cFree1) VALUES ('', '" + cInvCode +
                     "', 0, " + price + ", N'" + cFree1 + "')");
    }
    std::vector<std::string> Updated(std::string_view valuation, const std::string& voucherId = "-1") {
        Option("cValueStyle", valuation);
        component_.Update("W", "W_Result", context_, *connection_, voucherId, false);
        return account_.Rows("SELECT cWhCode, cInvCode, cFree1, cValueStyle, iQuantity, iMoney, iCJVBCost, iCJVACost, "
                             "iAdjustMoney FROM W_Result ORDER BY cInvCode, cFree1, cWhCode");
    }

    std::unique_ptr<host::DOMDocument> Document(const std::string& rows) {
        std::unique_ptr<host::DOMDocument> document = environment_.CreateDOMDocument();
        EXPECT_TRUE(document->LoadXML("<xml xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\">"
                                      "<rs:data>" +
                                      rows + "</rs:data></xml>"));
        return document;
    }
    static std::string Head(const std::string& date = "2023-01-15", const std::string& cCode = "2023010001") {
        return "<z:row AutoId='' dCJVDate='" + date + "' cMemo='O&apos;Hara' cCode='" + cCode +
               "' ID='-1' cMaker='' cAccounter='' VT_ID='5101' VouchType='22' cInvCode='' iCJVBCost='0' "
               "iCJVACost='0'/>";
    }
    static std::string Row(const std::string& cInvCode, const std::string& more = {}) {
        return "<z:row editprop='A' cInvCode='" + cInvCode + "' iCJVACost='26.5000000000' iCJVBCost='25.0000000000' " +
               more + "/>";
    }
    /// Whether it was saved; the message is kept.
    bool Save(const std::string& head, const std::string& rows) {
        message_.clear();
        return component_.save(*Document(head), *Document(rows), 2, message_, *connection_, true, context_);
    }
    bool Post(const std::string& head) {
        message_.clear();
        return component_.DoAccount(*Document(head), *Document(""), context_, *connection_, true, message_);
    }
    host::Value Number(const std::string& head) {
        refhost::RsXmlHelper helper(environment_);
        const std::unique_ptr<host::DOMDocument> document = Document(head);
        const auto data = helper.XmlToVouchData(*document);
        return component_.GetVouchNum(context_, "22", *data, false, true);
    }
    std::vector<std::string> TraceLines() {
        trace_.Flush();
        return test::ReadLines(account_.folder() / "trace.jsonl");
    }

    test::TestAccount account_;
    refhost::Trace trace_;
    refhost::Traced<refhost::Environment> environment_;
    refhost::Login login_;
    std::shared_ptr<host::VoucherContext> context_;
    std::unique_ptr<host::Connection> connection_;
    refhost::ZendaT component_;
    std::string message_;
};

TEST_F(ZendaT, AllowsAddingUnlessLocked) {
    EXPECT_TRUE(component_.AllowAdd(message_, context_, *connection_));
    Option("bPriceAdjLocked", "0");
    EXPECT_TRUE(component_.AllowAdd(message_, context_, *connection_));
    EXPECT_EQ(message_, "");
    account_.Run("UPDATE AccInformation SET cValue = NULL WHERE cName = N'bPriceAdjLocked'");
    EXPECT_TRUE(component_.AllowAdd(message_, context_, *connection_));
    account_.Run("UPDATE AccInformation SET cValue = N'1' WHERE cName = N'bPriceAdjLocked'");
    EXPECT_FALSE(component_.AllowAdd(message_, context_, *connection_));
    EXPECT_EQ(message_, "期末处理正在进行，不能新增价格调整单");
}

TEST_F(ZendaT, AllowsAddingWhateverTheMonths) {
    account_.Run("INSERT INTO GL_mend (iyear, iperiod, iYPeriod, bflag_IA) VALUES (2023, 1, 202301, 1)");
    EXPECT_TRUE(component_.AllowAdd(message_, context_, *connection_));
    account_.Run("DELETE FROM GL_mend");
    EXPECT_TRUE(component_.AllowAdd(message_, context_, *connection_));
}

TEST_F(ZendaT, OpensARecordsetAgainAndAgain) {
    const std::unique_ptr<host::Recordset> recordset = environment_.CreateRecordset();
    component_.OpenDBS(*recordset, *connection_, "SELECT cInvCode FROM inventory");
    EXPECT_EQ(recordset->RecordCount(), 3);
    component_.OpenDBS(*recordset, *connection_, "SELECT cWhCode FROM Warehouse");
    EXPECT_EQ(recordset->RecordCount(), 4);
}

TEST_F(ZendaT, MarksItsOwnStatementsButNotTheOnesItOpensForOthers) {
    component_.AllowAdd(message_, context_, *connection_);
    const std::unique_ptr<host::Recordset> recordset = environment_.CreateRecordset();
    component_.OpenDBS(*recordset, *connection_, "SELECT cInvCode FROM inventory");
    StageRow("A", "26.5");
    Updated(byItem);
    component_.GetDefaultTemplateID("IA51", *connection_);
    ASSERT_TRUE(Save(Head(), Row("A"))) << message_;
    Number(Head());
    component_.GetMaxID(*connection_, false);
    ASSERT_TRUE(Post("<z:row ID='1'/>")) << message_;

    std::vector<std::string> own;
    for (const std::string& line : TraceLines()) {
        if (line.find("\"host\":true") == std::string::npos) {
            own.push_back(line);
        }
    }
    ASSERT_EQ(own.size(), 2U);
    EXPECT_THAT(own[0], HasSubstr("\"op\":\"Connect\""));
    EXPECT_EQ(own[1],
              R"({"op":"Open","sql":"SELECT cInvCode FROM inventory","cursor":3,"lock":1,"options":1,"location":2})");
}

TEST_F(ZendaT, UpdateByItemTakesTheStockOfAllWarehouses) {
    StageRow("A", "26.5");
    // 100 + 8 - 30 + 4.5, of what is on the ledger until the 15th; 82.5 * 1.5.
    EXPECT_THAT(
        Updated(byItem),
        ElementsAre(R"({"cWhCode":null,"cInvCode":"A","cFree1":"","cValueStyle":"计划价法","iQuantity":82.500000,)"
                    R"("iMoney":2062.5000,"iCJVBCost":25.0000000000,"iCJVACost":26.5000000000,)"
                    R"("iAdjustMoney":123.7500})"));
}

TEST_F(ZendaT, UpdateByWarehouseGivesARowForEachPlannedOrRetailPriceWarehouse) {
    StageRow("A", "24");
    EXPECT_THAT(
        Updated(byWarehouse),
        ElementsAre(R"({"cWhCode":"03","cInvCode":"A","cFree1":"","cValueStyle":"计划价法","iQuantity":74.500000,)"
                    R"("iMoney":1862.5000,"iCJVBCost":25.0000000000,"iCJVACost":24.0000000000,)"
                    R"("iAdjustMoney":-74.5000})",
                    R"({"cWhCode":"04","cInvCode":"A","cFree1":"","cValueStyle":"售价法","iQuantity":8.000000,)"
                    R"("iMoney":200.0000,"iCJVBCost":25.0000000000,"iCJVACost":24.0000000000,)"
                    R"("iAdjustMoney":-8.0000})"));
}

TEST_F(ZendaT, UpdateReadsTheValuationAsTheClassesDo) {
    StageRow("A", "24");
    // A value counts without blanks around it, a default as it stands.
    EXPECT_EQ(Updated(" " + std::string(byItem) + " ").size(), 1U);
    account_.Run("UPDATE AccInformation SET cValue = NULL, cDefault = N' 按存货核算' WHERE cName = N'cValueStyle'\nGO\n"
                 "DROP TABLE W_Result");
    component_.Update("W", "W_Result", context_, *connection_, "-1", false);
    EXPECT_EQ(account_.Rows("SELECT cInvCode FROM W_Result").size(), 2U);
}

TEST_F(ZendaT, UpdateByDepartmentGivesTheSameRows) {
    StageRow("A", "24");
    EXPECT_EQ(Updated("按部门核算").size(), 2U);
}

TEST_F(ZendaT, UpdateTakesThePriceOfTheFreeItemsElseTheItems) {
    StageRow("B", "390", "国产");
    StageRow("B", "390", "进口");
    StageRow("B", "390", "无");
    StageRow("C", "1");
    // In the collation's order: guó, jìn, wú.
    EXPECT_THAT(Updated(byItem),
                ElementsAre(HasSubstr(R"("cFree1":"国产","cValueStyle":"计划价法","iQuantity":10.000000,)"
                                      R"("iMoney":3800.0000,"iCJVBCost":380.0000000000)"),
                            HasSubstr(R"("cFree1":"进口","cValueStyle":"计划价法","iQuantity":3.000000,)"
                                      R"("iMoney":1200.0000,"iCJVBCost":400.0000000000)"),
                            HasSubstr(R"("cFree1":"无","cValueStyle":"计划价法","iQuantity":0.000000,)"
                                      R"("iMoney":0.0000,"iCJVBCost":400.0000000000)"),
                            HasSubstr(R"("cInvCode":"C","cFree1":"","cValueStyle":"计划价法","iQuantity":0.000000,)"
                                      R"("iMoney":0.0000,"iCJVBCost":0.0000000000)")));
}

TEST_F(ZendaT, UpdateTakesTheStockOfAllFreeItemsForARowWithoutThem) {
    StageRow("B", "390");
    EXPECT_THAT(Updated(byItem), ElementsAre(HasSubstr(R"("iQuantity":13.000000,"iMoney":5000.0000)")));
}

TEST_F(ZendaT, UpdateRoundsTheAdjustmentToTwoPlacesAwayFromZero) {
    account_.Run("UPDATE Ia_subsidiary SET iAInQuantity = 3 WHERE cFree1 = N'国产'");
    StageRow("B", "380.005", "国产");
    EXPECT_THAT(Updated(byItem), ElementsAre(HasSubstr(R"("iAdjustMoney":0.0200)")));
    account_.Run("DROP TABLE W_Result\nGO\nDELETE FROM AccInformation\nGO\nUPDATE W SET iCJVACost = 379.995");
    EXPECT_THAT(Updated(byItem), ElementsAre(HasSubstr(R"("iAdjustMoney":-0.0200)")));
}

TEST_F(ZendaT, UpdateOfASavedVoucherTakesItsDate) {
    account_.Run("INSERT INTO CostJustVouch (ID, dCJVDate) VALUES (70, '2023-01-11')");
    StageRow("A", "26.5");
    EXPECT_THAT(Updated(byItem, "1"), ElementsAre(HasSubstr(R"("iQuantity":78.000000,"iMoney":1950.0000)")));
}

TEST_F(ZendaT, UpdateOfNothingGivesNothing) { EXPECT_THAT(Updated(byItem), IsEmpty()); }

TEST_F(ZendaT, GivesTheDefaultTemplate) {
    EXPECT_EQ(component_.GetDefaultTemplateID("IA51", *connection_), host::Value(5101));
    account_.Run("INSERT INTO VoucherTemplates (VT_ID, VT_CardNumber) VALUES (7, N'IA51')\nGO\n"
                 "UPDATE VoucherTemplates SET bDefault = 0 WHERE VT_ID = 4801");
    EXPECT_EQ(component_.GetDefaultTemplateID("IA51", *connection_), host::Value(5101));
    EXPECT_TRUE(component_.GetDefaultTemplateID("IA48", *connection_).IsEmpty());
}

TEST_F(ZendaT, NumbersVouchersWithinTheirMonth) {
    component_.GetMaxID(*connection_, false);
    EXPECT_EQ(Number(Head()), host::Value("2023010001"));
    account_.Run("INSERT INTO CostJustVouch (ID, cCode) VALUES (1, N'2023010009'), (2, N'2023020044'), "
                 "(3, N'2023010010-1'), (4, N'202301'), (5, N'20230199x9')");
    EXPECT_EQ(Number(Head()), host::Value("2023010010"));
    EXPECT_EQ(Number(Head("2023-02-28")), host::Value("2023020045"));
    EXPECT_EQ(Number(Head("2023-12-01")), host::Value("2023120001"));
    account_.Run("INSERT INTO CostJustVouch (ID, cCode) VALUES (6, N'2023019999')");
    EXPECT_EQ(Number(Head()), host::Value("20230110000"));
    account_.Run("INSERT INTO CostJustVouch (ID, cCode) VALUES (7, N'20230110000')");
    EXPECT_EQ(Number(Head()), host::Value("20230110001"));
}

TEST_F(ZendaT, NumbersNothingWithoutAConnectionOrADate) {
    EXPECT_THROW(Number(Head()), host::Error);
    component_.GetMaxID(*connection_, false);
    EXPECT_THROW(Number(Head("")), host::Error);
    EXPECT_THROW(Number(""), host::Error);
}

TEST_F(ZendaT, SavesHeadRowsAndPrices) {
    account_.Run("INSERT INTO CostJustVouch (ID, cCode) VALUES (41, N'2022120001')");
    ASSERT_TRUE(Save(Head(), Row("A", "cWhCode='03' cFree10='x' cValueStyle='计划价法' iQuantity='74.500000' "
                                      "iMoney='1862.5000' iAdjustMoney='111.7500'") +
                                 Row("B", "cFree1='国产'") + Row("B", "cFree1='无'")))
        << message_;
    EXPECT_EQ(message_, "");
    EXPECT_THAT(account_.Rows("SELECT ID, cCode, dCJVDate, cMaker, cAccounter, dAccountDate, cMemo, VT_ID, VouchType "
                              "FROM CostJustVouch WHERE AutoID = 2"),
                ElementsAre(R"({"ID":42,"cCode":"2023010001","dCJVDate":"2023-01-15","cMaker":null,"cAccounter":null,)"
                            R"("dAccountDate":null,"cMemo":"O'Hara","VT_ID":5101,"VouchType":"22"})"));
    EXPECT_THAT(
        account_.Rows("SELECT ID, cWhCode, cInvCode, cFree1, cFree10, cValueStyle, iQuantity, iMoney, iCJVBCost, "
                      "iCJVACost, iAdjustMoney FROM CostJustVouchs ORDER BY AutoID"),
        ElementsAre(R"({"ID":42,"cWhCode":"03","cInvCode":"A","cFree1":null,"cFree10":"x","cValueStyle":"计划价法",)"
                    R"("iQuantity":74.5,"iMoney":1862.5000,"iCJVBCost":25.0000000000,"iCJVACost":26.5000000000,)"
                    R"("iAdjustMoney":111.7500})",
                    HasSubstr(R"("cInvCode":"B","cFree1":"国产")"), HasSubstr(R"("cInvCode":"B","cFree1":"无")")));
    EXPECT_EQ(component_.GetMaxID(*connection_, false), host::Value(2));
    // A has no price for its tenth free item and B none for "无": there the item's own price moves.
    EXPECT_THAT(account_.Rows("SELECT cInvCode, iInvRCost FROM inventory ORDER BY cInvCode"),
                ElementsAre(R"({"cInvCode":"A","iInvRCost":26.5})", R"({"cInvCode":"B","iInvRCost":26.5})",
                            R"({"cInvCode":"C","iInvRCost":null})"));
    EXPECT_THAT(account_.Rows("SELECT cInvCode, cFree1, fInvRCost FROM InvCheckFreeIA870 ORDER BY AutoID"),
                ElementsAre(R"({"cInvCode":"A","cFree1":null,"fInvRCost":25})",
                            R"({"cInvCode":"B","cFree1":"国产","fInvRCost":26.5})",
                            R"({"cInvCode":"B","cFree1":"进口","fInvRCost":null})"));
}

TEST_F(ZendaT, SavesThePriceOfFreeItemsAlone) {
    ASSERT_TRUE(Save(Head(), Row("B", "cFree1='国产'"))) << message_;
    EXPECT_THAT(account_.Rows("SELECT iInvRCost FROM inventory WHERE cInvCode = N'B'"),
                ElementsAre(R"({"iInvRCost":400})"));
}

TEST_F(ZendaT, SavesThePriceOfAnItemWithoutFreeItemsInBothPlaces) {
    ASSERT_TRUE(Save(Head(), Row("A"))) << message_;
    EXPECT_THAT(account_.Rows("SELECT I.iInvRCost, P.fInvRCost FROM inventory I INNER JOIN InvCheckFreeIA870 P ON "
                              "P.cInvCode = I.cInvCode WHERE I.cInvCode = N'A'"),
                ElementsAre(R"({"iInvRCost":26.5,"fInvRCost":26.5})"));
}

TEST_F(ZendaT, SavesTheStockAsOfTheVouchersDate) {
    // Until the 11th: 100 - 30 in warehouse 03, 8 in warehouse 04.
    ASSERT_TRUE(Save(Head("2023-01-11"), Row("A", "cWhCode='03' iQuantity='74.5'") +
                                             Row("A", "cWhCode='04' iQuantity='8'") + Row("A", "iQuantity='82.5'")))
        << message_;
    EXPECT_THAT(account_.Rows("SELECT cWhCode, iQuantity, iMoney, iAdjustMoney FROM CostJustVouchs ORDER BY AutoID"),
                ElementsAre(R"({"cWhCode":"03","iQuantity":70,"iMoney":1750.0000,"iAdjustMoney":105.0000})",
                            R"({"cWhCode":"04","iQuantity":8,"iMoney":200.0000,"iAdjustMoney":12.0000})",
                            R"({"cWhCode":null,"iQuantity":78,"iMoney":1950.0000,"iAdjustMoney":117.0000})"));
}

TEST_F(ZendaT, SavesManyRowsInOrder) {
    std::string rows;
    for (int i = 0; i < 401; ++i) {
        rows += Row("A", "cFree1='" + std::to_string(i) + "'");
    }
    ASSERT_TRUE(Save(Head(), rows)) << message_;
    EXPECT_THAT(account_.Rows("SELECT COUNT(*) AS n, MAX(AutoID) AS last FROM CostJustVouchs"),
                ElementsAre(R"({"n":401,"last":401})"));
    EXPECT_THAT(account_.Rows("SELECT cFree1 FROM CostJustVouchs WHERE AutoID IN (1, 200, 201, 401) ORDER BY AutoID"),
                ElementsAre(R"({"cFree1":"0"})", R"({"cFree1":"199"})", R"({"cFree1":"200"})", R"({"cFree1":"400"})"));
}

TEST_F(ZendaT, SavesNothingThatIsIncomplete) {
    const auto refusal = [&](const std::string& head, const std::string& rows) {
        EXPECT_FALSE(Save(head, rows));
        return message_;
    };
    EXPECT_EQ(refusal(Head(), ""), "单据没有明细行，不能保存");
    EXPECT_EQ(refusal("", Row("A")), "单据没有表头，不能保存");
    EXPECT_EQ(refusal(Head(""), Row("A")), "单据没有正确的日期，不能保存");
    EXPECT_EQ(refusal(Head("2023-02-30"), Row("A")), "单据没有正确的日期，不能保存");
    EXPECT_EQ(refusal(Head("2023-01-15", ""), Row("A")), "单据没有编号，不能保存");
    EXPECT_EQ(refusal(Head(), Row("A") + Row("")), "单据有明细行没有存货编码，不能保存");
    EXPECT_EQ(refusal(Head(), "<z:row cInvCode='A'/>"), "单据有明细行没有调整后的价格，不能保存");
    EXPECT_THAT(account_.Rows("SELECT ID FROM CostJustVouch"), IsEmpty());
    EXPECT_THAT(account_.Rows("SELECT ID FROM CostJustVouchs"), IsEmpty());
}

TEST_F(ZendaT, SavesAVoucherAsAWholeOrNotAtAll) {
    // 78 of A until the 11th: what their amount changes by is beyond what money holds.
    const std::string beyond = "<z:row cInvCode='A' iCJVBCost='25' iCJVACost='900000000000000'/>";
    for (const bool inTransaction : {false, true}) {
        if (inTransaction) {
            connection_->BeginTrans();
        }
        EXPECT_THROW(Save(Head("2023-01-11"), Row("B") + beyond), host::Error);
        ASSERT_TRUE(Save(Head("2023-01-11"), Row("B", "cFree1='国产'"))) << message_;
        if (inTransaction) {
            connection_->CommitTrans();
        }
        EXPECT_THAT(account_.Rows("SELECT cCode FROM CostJustVouch"), ElementsAre(R"({"cCode":"2023010001"})"));
        EXPECT_THAT(account_.Rows("SELECT cInvCode, cFree1 FROM CostJustVouchs"),
                    ElementsAre(R"({"cInvCode":"B","cFree1":"国产"})"));
        EXPECT_THAT(account_.Rows("SELECT iInvRCost FROM inventory WHERE cInvCode <> N'C' ORDER BY cInvCode"),
                    ElementsAre(R"({"iInvRCost":25})", R"({"iInvRCost":400})"));
        account_.Run("DELETE FROM CostJustVouch\nGO\nDELETE FROM CostJustVouchs");
    }
}

TEST_F(ZendaT, PostsAVoucherAsAWholeOrNotAtAll) {
    ASSERT_TRUE(Save(Head(), Row("A", "cWhCode='03'"))) << message_;
    // The last statement of posting fails.
    account_.Run("DROP VIEW v_CostJustVouch_H\nGO\nALTER TABLE CostJustVouch DROP COLUMN dAccountDate");
    for (const bool inTransaction : {false, true}) {
        if (inTransaction) {
            connection_->BeginTrans();
        }
        EXPECT_THROW(Post("<z:row ID='1'/>"), host::Error);
        if (inTransaction) {
            connection_->CommitTrans();
        }
        EXPECT_THAT(account_.Rows("SELECT AutoID FROM Ia_subsidiary WHERE cVouType = N'22'"), IsEmpty());
        EXPECT_THAT(account_.Rows("SELECT cAccounter FROM CostJustVouch"), ElementsAre(R"({"cAccounter":null})"));
    }
}

TEST_F(ZendaT, PostsAVoucherOnce) {
    account_.Run("INSERT INTO CostJustVouch (ID, cCode) VALUES (41, N'2022120001')");
    ASSERT_TRUE(Save(Head("2023-01-14"), Row("A", "cWhCode='03'") + Row("B", "cWhCode='04' cFree1='国产'")))
        << message_;
    ASSERT_TRUE(Post("<z:row AutoId='2' ID='42'/>")) << message_;
    EXPECT_THAT(account_.Rows("SELECT iYear, iMonth, id, cVouType, cVouCode, dVouDate, dKeepDate, bRdFlag, cWhCode, "
                              "cInvCode, cFree1, iAInQuantity, iAInPrice, iCreditDifCost, cMaker, cAccounter, cMemo "
                              "FROM Ia_subsidiary WHERE cVouType = N'22' ORDER BY AutoID"),
                ElementsAre(R"({"iYear":2023,"iMonth":1,"id":1,"cVouType":"22","cVouCode":"2023010001",)"
                            R"("dVouDate":"2023-01-14","dKeepDate":"2023-01-15","bRdFlag":true,"cWhCode":"03",)"
                            R"("cInvCode":"A","cFree1":null,"iAInQuantity":null,"iAInPrice":111.75,)"
                            R"("iCreditDifCost":111.75,"cMaker":null,"cAccounter":"王会计","cMemo":"O'Hara"})",
                            HasSubstr(R"("cWhCode":"04","cInvCode":"B","cFree1":"国产")")));
    EXPECT_THAT(account_.Rows("SELECT ID, cAccounter, dAccountDate FROM CostJustVouch ORDER BY AutoID"),
                ElementsAre(R"({"ID":41,"cAccounter":null,"dAccountDate":null})",
                            R"({"ID":42,"cAccounter":"王会计","dAccountDate":"2023-01-15"})"));
    EXPECT_FALSE(Post("<z:row AutoId='2' ID='42'/>"));
    EXPECT_EQ(message_, "单据已经记账，不能重复记账");
    EXPECT_THAT(account_.Rows("SELECT COUNT(*) AS n FROM Ia_subsidiary WHERE cVouType = N'22'"),
                ElementsAre(R"({"n":2})"));
}

TEST_F(ZendaT, PostsNothingThatIsUnknownOrWhileLocked) {
    ASSERT_TRUE(Save(Head(), Row("A"))) << message_;
    EXPECT_FALSE(Post(""));
    EXPECT_EQ(message_, "单据不存在，不能记账");
    EXPECT_FALSE(Post("<z:row ID='77'/>"));
    EXPECT_EQ(message_, "单据不存在，不能记账");
    Option("bPostLocked", "1");
    EXPECT_FALSE(Post("<z:row ID='1'/>"));
    EXPECT_EQ(message_, "记账功能已锁定，不能记账");
    EXPECT_THAT(account_.Rows("SELECT AutoID FROM Ia_subsidiary WHERE cVouType = N'22'"), IsEmpty());
    account_.Run("UPDATE AccInformation SET cValue = N'0' WHERE cName = N'bPostLocked'");
    EXPECT_TRUE(Post("<z:row ID='1'/>"));
}

TEST_F(ZendaT, ContextCarriesTheLogin) {
    EXPECT_EQ(&context_->Login(), &login_);
    EXPECT_EQ(&environment_.CreateIaVoucherService()->Context(login_)->Login(), &login_);
}

} // namespace
