#include "tests/ClsPriceJustVou/PriceAccount.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using test::byDepartment;
using test::byWarehouse;
using test::Entry;
using test::Outcome;
using test::Outcomes;
using test::PriceAccount;
using test::Request;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Labels = std::vector<std::string>;

/// Joins pieces of a log.
Labels operator+(Labels a, const Labels& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const Labels start = {"option quantity decimals", "option price decimals", "BeginTrans", "drop work table",
                      "create work table"};
const Labels dates = {"open month", "calendar", "latest posting"};
const Labels rowByItem =
    Labels{"repeated?"} + dates + Labels{"item and free items",     "option valuation",  "planned price?",
                                         "option valuation",        "free items' price", "processed, by item?",
                                         "cost accounting started?"};
const Labels rowByWarehouse =
    Labels{"repeated?"} + dates + Labels{"item and free items",     "option valuation", "option valuation",
                                         "planned-price warehouse", "option valuation", "processed, by warehouse?",
                                         "cost accounting started?"};
const Labels stage = {"stage"};
const Labels save = {"drop result table", "head to save", "rows to save"};
const Labels drops = {"drop work table", "drop result table"};
const Labels post = {"card", "head to post", "SELECT *, '' AS editprop FROM v_CostJustVouch_B WHERE ID = 1"};
const Labels commit = {"CommitTrans"};
const Labels rollback = {"RollbackTrans"};

const Outcome saved{"单据P1", "0", "成功导入："};
constexpr const char* unexpected = "产生未知异常，导入失败！";

std::string OneRow() { return Entry("1004", "26.5"); }

TEST(ImportVouchers, SavesADocument) {
    PriceAccount account;
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))), ElementsAre(saved));
    EXPECT_EQ(account.log(), start + rowByItem + stage + save + drops + commit);
    EXPECT_THAT(account.WorkTables(), IsEmpty());
}

TEST(ImportVouchers, ChecksEveryRowInFull) {
    PriceAccount account;
    account.Import(Request({{.entries = OneRow() + Entry("1007", "0.6")}}));
    EXPECT_EQ(account.log(), start + rowByItem + stage + rowByItem + stage + save + drops + commit);
}

TEST(ImportVouchers, AsksForWarehousesUnderValuationByWarehouse) {
    PriceAccount account(byWarehouse);
    account.Import(Request({{.entries = OneRow()}}));
    EXPECT_EQ(account.log(), start + rowByWarehouse + stage + save + drops + commit);
}

TEST(ImportVouchers, AsksForDepartmentsUnderAnyOtherValuation) {
    for (const std::string_view valuation : {byDepartment, std::string_view("")}) {
        PriceAccount account(valuation);
        account.Import(Request({{.entries = OneRow()}}));
        EXPECT_THAT(account.log(), Contains("processed, by department?")) << valuation;
        EXPECT_THAT(account.log(), Not(Contains("processed, by warehouse?"))) << valuation;
    }
}

TEST(ImportVouchers, AsksForCostAccountingOneStepAfterTheOther) {
    PriceAccount account;
    account.Run("INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'ca', N'dCAFirstDate', N'2023-01-01'), "
                "(N'ca', N'bRLOrST', N'1')");
    account.Import(Request({{.entries = OneRow()}}));
    EXPECT_EQ(account.log(),
              (start + rowByItem + Labels{"standard costing?", "made here?"} + stage + save + drops + commit));
}

TEST(ImportVouchers, PostsRightAfterSaving) {
    PriceAccount account;
    EXPECT_THAT(Outcomes(account.Import(Request({{.cAccounter = "王会计", .entries = OneRow()}}))), ElementsAre(saved));
    EXPECT_EQ(account.log(), start + rowByItem + stage + save + drops + post + commit);
    EXPECT_THAT(account.Rows("SELECT cVouCode, iAInPrice FROM Ia_subsidiary WHERE cVouType = N'22'"),
                ElementsAre(R"({"cVouCode":"2023010001","iAInPrice":162})"));
}

TEST(ImportVouchers, BlankBookkeeperDoesNotPost) {
    PriceAccount account;
    account.Import(Request({{.cAccounter = "  ", .entries = OneRow()}}));
    EXPECT_EQ(account.log(), start + rowByItem + stage + save + drops + commit);
}

TEST(ImportVouchers, RefusesADocumentForOneRow) {
    PriceAccount account;
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = Entry("1007", "-1") + OneRow()}}))),
                ElementsAre(Outcome{"", "999", "单据P1导入失败：数字不正确或小于零！\r\n"}));
    Labels refused = rowByItem;
    refused.pop_back();
    EXPECT_EQ(account.log(), start + refused + rowByItem + stage + drops + commit);
    EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouch"), IsEmpty());
    EXPECT_THAT(account.WorkTables(), IsEmpty());
}

TEST(ImportVouchers, MessageOfEachRefusedRowHoldsTheOneBefore) {
    PriceAccount account;
    // The second row passes its checks but repeats the first staged one; the third fails its own.
    EXPECT_THAT(
        Outcomes(account.Import(Request({{.entries = Entry("1007", "x") + OneRow() + OneRow() + Entry("", "1")}}))),
        ElementsAre(Outcome{"", "999", "单据P1导入失败：存货编码不能为空\r\n"}));
    EXPECT_THAT(
        Outcomes(account.Import(Request({{.entries = Entry("1007", "x") + OneRow() + OneRow()}}))),
        ElementsAre(Outcome{"", "999", "单据P1导入失败：单据P1导入失败：数字不正确或小于零！存货1004重复\r\n"}));
}

TEST(ImportVouchers, RowThatFailsItsChecksCanRepeatToo) {
    PriceAccount account;
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow() + Entry("1004", "-1")}}))),
                ElementsAre(Outcome{"", "999", "单据P1导入失败：数字不正确或小于零！存货1004重复\r\n"}));
}

TEST(ImportVouchers, WarehousesDoNotTellRowsApart) {
    PriceAccount account;
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = Entry("1004", "26", "<cWhCode>03</cWhCode>") +
                                                             Entry("1004", "27", "<cWhCode>04</cWhCode>")}}))),
                ElementsAre(Outcome{"", "999", "单据P1导入失败：存货1004重复\r\n"}));
}

TEST(ImportVouchers, StagedEmptyFreeItemRepeatsAnyOther) {
    PriceAccount account;
    const std::string plain = Entry("1004", "26");
    const std::string red = Entry("1004", "26", "<cFree3>红</cFree3>");
    const std::string blue = Entry("1004", "26", "<cFree3>蓝</cFree3>");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = plain + red}}))),
                ElementsAre(Outcome{"", "999", "单据P1导入失败：存货1004重复\r\n"}));
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = red + red}}))),
                ElementsAre(Outcome{"", "999", "单据P1导入失败：存货1004重复\r\n"}));
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = red + blue + plain}}))), ElementsAre(saved));
}

TEST(ImportVouchers, AddingRefusedStopsBeforeAnyTransaction) {
    PriceAccount account;
    account.Run("INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'bPriceAdjLocked', N'1')");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))),
                ElementsAre(Outcome{"", "999", "期末处理正在进行，不能新增价格调整单"}));
    EXPECT_THAT(account.log(), IsEmpty());
    EXPECT_THAT(account.WorkTables(), IsEmpty());
}

TEST(ImportVouchers, SaveRefusedDropsTheTablesAndCommits) {
    PriceAccount account;
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = ""}}))),
                ElementsAre(Outcome{"", "999", "单据没有明细行，不能保存\r\n"}));
    EXPECT_EQ(account.log(), start + save + drops + commit);
}

TEST(ImportVouchers, PostingRefusedLeavesAnEmptyReasonAndTheSavedVoucher) {
    PriceAccount account;
    account.Run("INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'IA', N'bPostLocked', N'1')");
    EXPECT_THAT(Outcomes(account.Import(Request({{.cAccounter = "王会计", .entries = OneRow()}}))),
                ElementsAre(saved, Outcome{"记账失败！", "999", ""}));
    EXPECT_EQ(account.log(), start + rowByItem + stage + save + drops + post + commit);
    EXPECT_THAT(account.Rows("SELECT cAccounter FROM CostJustVouch"), ElementsAre(R"({"cAccounter":null})"));
}

TEST(ImportVouchers, PostingErrorIsReportedTwice) {
    PriceAccount account;
    account.faults.statement = test::FailOn("INSERT INTO Ia_subsidiary");
    EXPECT_THAT(
        Outcomes(account.Import(Request({{.cAccounter = "王会计", .entries = OneRow()}}))),
        ElementsAre(saved, Outcome{"记账失败！", "999", "Injected failure."}, Outcome{"", "999", "Injected failure."}));
    EXPECT_EQ(account.log(), start + rowByItem + stage + save + drops + post + commit);
}

TEST(ImportVouchers, PostingErrorReplacesTheReport) {
    PriceAccount account;
    account.faults.statement = test::FailOn("FROM Vouchers_base");
    // The first document is refused by its missing header, which leaves the work table to the second.
    std::string request = Request({{.ID = "P1", .cAccounter = "王会计", .entries = OneRow()}, {.ID = "P2"}});
    request.insert(request.find("<voucher>"), "<voucher/>");
    const std::vector<Outcome> outcomes = Outcomes(account.Import(request));
    ASSERT_EQ(outcomes.size(), 6U);
    EXPECT_EQ(outcomes[0], (Outcome{"91", "999", "对象变量或 With 块变量未设置"}));
    EXPECT_EQ(outcomes[2], saved);
    EXPECT_EQ(outcomes[3], (Outcome{"记账失败！", "999", "Injected failure."}));
    EXPECT_EQ(outcomes[4], (Outcome{"", "999", "Injected failure."}));
    // The third document has no rows: its voucher meets a missing work table in the companion, past the point where
    // it counts as imported.
    EXPECT_EQ(outcomes[5].key, "-2147217865");
}

TEST(ImportVouchers, ReportGrowsFromRefusalToRefusal) {
    PriceAccount account;
    std::string request = Request({{.ID = "P1", .entries = Entry("1004", "-1")}});
    request.insert(request.find("<voucher>"), "<voucher/>");
    const std::vector<Outcome> outcomes = Outcomes(account.Import(request));
    const std::string first =
        "<qxinterface docid=\"J1\" proc=\"ADD\"><item key=\"91\" code=\"999\" dsc=\"对象变量或 With "
        "块变量未设置\"/></qxinterface>\r\n";
    EXPECT_THAT(outcomes, ElementsAre(Outcome{"91", "999", "对象变量或 With 块变量未设置"}, Outcome{"", "999", first},
                                      Outcome{"", "999", first + "单据P1导入失败：数字不正确或小于零！\r\n"}));
}

/// A request of one good document between this many that have no header, which ends them in error 91.
std::string GoodOneAmong(int before, int behind) {
    std::string request = Request({{.ID = "P1", .entries = OneRow()}});
    for (int document = 0; document < before; ++document) {
        request.insert(request.find("<voucher>"), "<voucher/>");
    }
    for (int document = 0; document < behind; ++document) {
        request.insert(request.rfind("</"), "<voucher/>");
    }
    return request;
}

const Outcome noHeader{"91", "999", "对象变量或 With 块变量未设置"};
const Outcome noHeaderAlone{"", "999", "对象变量或 With 块变量未设置"};

TEST(ImportVouchers, ReportAtItsBoundGrowsNoMoreAndKeepsWhatIsSaved) {
    PriceAccount account;
    // The first report: the result document, which holds the error alone, and the end of a line.
    const std::string first = "<qxinterface docid=\"J1\" proc=\"ADD\"><item key=\"91\" code=\"999\" "
                              "dsc=\"对象变量或 With 块变量未设置\"/></qxinterface>\r\n";
    EXPECT_THAT(
        Outcomes(account.Import(GoodOneAmong(2, 1), first.size())),
        ElementsAre(noHeader, Outcome{"", "999", first}, noHeader, noHeaderAlone, saved, noHeader, noHeaderAlone));
    EXPECT_EQ(account.log().back(), "CommitTrans");
    EXPECT_THAT(account.Rows("SELECT cCode FROM CostJustVouch"), ElementsAre(R"({"cCode":"2023010001"})"));
    // One byte less, and it takes none.
    EXPECT_THAT(Outcomes(account.Import(GoodOneAmong(1, 0), first.size() - 1)),
                ElementsAre(noHeader, noHeaderAlone, saved));
}

TEST(ImportVouchers, RefusalBehindTheBoundCarriesItsOwnMessageAlone) {
    PriceAccount account;
    std::string request = Request({{.ID = "P1", .entries = Entry("1004", "-1") + Entry("1007", "x")}});
    request.insert(request.find("<voucher>"), "<voucher/>");
    EXPECT_THAT(Outcomes(account.Import(request, 100)),
                ElementsAre(noHeader, noHeaderAlone, Outcome{"", "999", "单据P1导入失败：数字不正确或小于零！"}));
}

TEST(ImportVouchers, ThirtyErringDocumentsAroundAGoodOneKeepIt) {
    PriceAccount account;
    const std::vector<Outcome> outcomes = Outcomes(account.Import(GoodOneAmong(15, 15), 1'000'000));
    ASSERT_EQ(outcomes.size(), 61U);
    EXPECT_EQ(outcomes[30], saved);
    EXPECT_EQ(outcomes.back(), noHeaderAlone);
    EXPECT_EQ(account.log().back(), "CommitTrans");
    EXPECT_THAT(account.Rows("SELECT cCode FROM CostJustVouch"), ElementsAre(R"({"cCode":"2023010001"})"));
}

TEST(ImportVouchers, ErrorInTheWorkTableRollsBack) {
    PriceAccount account;
    account.faults.statement = test::FailOn("CREATE TABLE [IA_tmpPriceJDATA]");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))),
                ElementsAre(Outcome{unexpected, "999", "Injected failure."}));
    EXPECT_EQ(account.log(), start + rollback);
}

TEST(ImportVouchers, ErrorBeforeTheTransactionRollsNothingBack) {
    PriceAccount account;
    account.Run("UPDATE AccInformation SET cValue = N'40000' WHERE cName = N'iStrsQuanDecDgt'");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))),
                ElementsAre(Outcome{unexpected, "999", "溢出"}));
    EXPECT_EQ(account.log(), Labels{"option quantity decimals"});

    account.faults.statement = test::FailOn("bPriceAdjLocked");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))),
                ElementsAre(Outcome{unexpected, "999", "Injected failure."}));
    EXPECT_THAT(account.log(), IsEmpty());
}

TEST(ImportVouchers, TransactionThatDoesNotBeginIsNotRolledBack) {
    PriceAccount account;
    account.faults.transaction = test::FailOn("BeginTrans");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))),
                ElementsAre(Outcome{unexpected, "999", "Injected failure."}));
    EXPECT_THAT(account.log(), ElementsAre("option quantity decimals", "option price decimals", "BeginTrans"));
}

TEST(ImportVouchers, CommitThatFailsIsRolledBack) {
    PriceAccount account;
    account.faults.transaction = test::FailOn("CommitTrans");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))),
                ElementsAre(saved, Outcome{unexpected, "999", "Injected failure."}));
    EXPECT_EQ(account.log(), start + rowByItem + stage + save + drops + commit + rollback);
    EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouch"), IsEmpty());
    EXPECT_THAT(account.Rows("SELECT iInvRCost FROM inventory WHERE cInvCode = N'1004'"),
                ElementsAre(R"({"iInvRCost":25})"));
}

TEST(ImportVouchers, RollbackThatFailsIsTheResult) {
    PriceAccount account;
    account.faults.transaction = [](std::string_view operation) {
        if (operation != "BeginTrans") {
            throw host::Error(host::error_number::unspecified, std::string(operation) + " failed.");
        }
    };
    EXPECT_EQ(account.Import(Request({{.entries = OneRow()}})),
              R"(<error code="-2147467259" dsc="RollbackTrans failed."/>)");
    EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouch"), IsEmpty());
}

TEST(ImportVouchers, OutcomeThatCannotBeAppendedEndsTheCall) {
    PriceAccount account;
    account.faults.eaiHelper = test::FailOn("AddResultItem", 7, "内存溢出");
    EXPECT_EQ(account.Import(Request({{.entries = OneRow()}})), R"(<error code="7" dsc="内存溢出"/>)");
    EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouch"), IsEmpty());
    EXPECT_THAT(account.WorkTables(), IsEmpty());
}

TEST(ImportVouchers, ErrorInsideADocumentDoesNotRollBack) {
    PriceAccount account;
    const std::vector<Outcome> outcomes =
        Outcomes(account.Import(Request({{.entries = OneRow() + Entry("10'04", "1")}})));
    ASSERT_EQ(outcomes.size(), 2U);
    EXPECT_EQ(outcomes[0].key, "-2147217900");
    EXPECT_EQ(outcomes[0].code, "999");
    EXPECT_EQ(outcomes[1].key, "");
    EXPECT_EQ(outcomes[1].dsc, "<qxinterface docid=\"J1\" proc=\"ADD\"><item key=\"-2147217900\" code=\"999\" dsc=\"" +
                                   outcomes[0].dsc + "\"/></qxinterface>\r\n");
    EXPECT_EQ(account.log(), (start + rowByItem + stage + Labels{"repeated?"} + commit));
    // What the document staged is still there: the next request drops it.
    EXPECT_THAT(account.WorkTables(), ElementsAre(R"({"name":"IA_tmpPriceJDATA"})"));
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))), ElementsAre(saved));
}

TEST(ImportVouchers, ErrorOfTheCompanionCountsAsImported) {
    PriceAccount account;
    account.faults.statement = test::FailOn("CREATE TABLE [dbo].[IA_tmpPriceJDATA_Result]", 42, "no room");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))),
                ElementsAre(Outcome{"42", "999", "no room"}));
    EXPECT_EQ(account.log(), (start + rowByItem + stage + Labels{"drop result table"} + commit));
    // So a bookkeeper's name posts a voucher that is not there.
    EXPECT_THAT(Outcomes(account.Import(Request({{.cAccounter = "王会计", .entries = OneRow()}}))),
                ElementsAre(Outcome{"42", "999", "no room"}, Outcome{"记账失败！", "999", ""}));
    EXPECT_EQ(account.log(), (start + rowByItem + stage +
                              Labels{"drop result table", "card", "head to post", "head to post"} + commit));
    EXPECT_TRUE(account.statements().at(account.statements().size() - 2).ends_with(" WHERE AutoID = -1"));
}

TEST(ImportVouchers, IdentifierBeyond16BitsIsAnErrorAfterSaving) {
    PriceAccount account;
    account.Run("SET IDENTITY_INSERT CostJustVouch ON\nGO\nINSERT INTO CostJustVouch (AutoID, ID) VALUES (32767, 7)");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = OneRow()}}))), ElementsAre(Outcome{"6", "999", "溢出"}));
    EXPECT_THAT(account.Rows("SELECT AutoID, ID FROM CostJustVouch WHERE AutoID > 32767"),
                ElementsAre(R"({"AutoID":32768,"ID":8})"));
}

TEST(ImportVouchers, SecondDocumentMeetsNoWorkTable) {
    PriceAccount account;
    const std::vector<Outcome> outcomes = Outcomes(
        account.Import(Request({{.ID = "P1", .entries = OneRow()}, {.ID = "P2", .entries = Entry("1007", "0.6")}})));
    const Outcome missing{"-2147217865", "999", "Invalid object name 'IA_tmpPriceJDATA'."};
    EXPECT_THAT(outcomes, ElementsAre(saved, missing,
                                      Outcome{"", "999",
                                              "<qxinterface docid=\"J1\" proc=\"ADD\"><item key=\"单据P1\" code=\"0\" "
                                              "dsc=\"成功导入：\"/><item key=\"-2147217865\" code=\"999\" "
                                              "dsc=\"Invalid object name 'IA_tmpPriceJDATA'.\"/></qxinterface>\r\n"}));
    EXPECT_EQ(account.log(), (start + rowByItem + stage + save + drops + Labels{"repeated?"} + commit));
    EXPECT_THAT(account.Rows("SELECT cCode FROM CostJustVouch"), ElementsAre(R"({"cCode":"2023010001"})"));
}

TEST(ImportVouchers, NoDocumentLeavesTheWorkTable) {
    PriceAccount account;
    EXPECT_EQ(account.Import(Request({})), R"(<qxinterface docid="J1" proc="ADD"/>)");
    EXPECT_EQ(account.log(), start + commit);
    EXPECT_THAT(account.WorkTables(), ElementsAre(R"({"name":"IA_tmpPriceJDATA"})"));
}

TEST(ImportVouchers, RolledBackRequestLeavesTheDatabaseAsItWas) {
    PriceAccount account;
    account.Import(Request({}));
    const std::string shape = "SELECT name FROM syscolumns WHERE id = OBJECT_ID(N'IA_tmpPriceJDATA') ORDER BY colid";
    account.Run("INSERT INTO IA_tmpPriceJDATA (cInvCode, iCJVACost) VALUES (N'left behind', 1)");
    const std::vector<std::string> columns = account.Rows(shape);
    for (const std::string failing : {"select '' as AutoId", "SELECT MAX(AutoID) FROM CostJustVouch"}) {
        // The document's own trap takes the error and cannot append its outcome, nor can the loop's: the request ends
        // with the transaction open.
        account.faults.statement = test::FailOn(failing);
        account.faults.eaiHelper = test::FailOn("AddResultItem");
        account.Import(Request({{.cAccounter = "王会计", .entries = OneRow()}}));
        account.faults = {};
        EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouch"), IsEmpty());
        EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouchs"), IsEmpty());
        EXPECT_THAT(account.Rows("SELECT iInvRCost FROM inventory WHERE cInvCode = N'1004'"),
                    ElementsAre(R"({"iInvRCost":25})"));
        EXPECT_THAT(account.WorkTables(), ElementsAre(R"({"name":"IA_tmpPriceJDATA"})"));
        EXPECT_THAT(account.Rows("SELECT cInvCode FROM IA_tmpPriceJDATA"),
                    ElementsAre(R"({"cInvCode":"left behind"})"));
        EXPECT_EQ(account.Rows(shape), columns);
    }
    account.faults.transaction = test::FailOn("CommitTrans");
    account.Import(Request({{.cAccounter = "王会计", .entries = OneRow()}}));
    account.faults = {};
    EXPECT_THAT(account.Rows("SELECT cInvCode FROM IA_tmpPriceJDATA"), ElementsAre(R"({"cInvCode":"left behind"})"));
    EXPECT_THAT(account.Rows("SELECT AutoID FROM Ia_subsidiary WHERE cVouType = N'22'"), IsEmpty());
    EXPECT_THAT(account.Rows("SELECT fInvRCost FROM InvCheckFreeIA870 WHERE cInvCode = N'1004'"),
                ElementsAre(R"({"fInvRCost":25})"));
}

} // namespace
