#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/ado/ForwardingDatabase.h"
#include "refhost/eai/Login.h"
#include "tests/ClsPriceJustVou/PriceAccount.h"
#include "tests/support/NameOfCase.h"

#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

namespace {

using test::byDepartment;
using test::byItem;
using test::byWarehouse;
using test::Entry;
using test::Outcome;
using test::PriceAccount;
using test::Voucher;

/// What the account, the login and the voucher are like, and what the check says. The voucher goes through but for what
/// a case changes.
struct Case {
    std::string name;
    std::string_view valuation = byItem;
    std::string setup = {};
    Voucher voucher = {};
    std::string entry = Entry("1004", "26.5");
    std::string CurDate = "2023-01-15";
    std::string cUserName = "王会计";
    std::string iMonth = "1";
    /// Nothing when the row passes.
    std::optional<std::string> message = std::nullopt;
};

constexpr std::string_view wrongToday = "当前日期不在当前会计月份内，不能新增价格调整单";
constexpr std::string_view wrongDate = "制单日期不在当前会计月份内，不能新增价格调整单";
constexpr std::string_view postedLater = "当前日期小于最大记账日期,不能新增价格调整单";
constexpr std::string_view badItem = "单据P1,存货编码1004或自由项不合法。";
constexpr std::string_view processed = "存货已经期末处理。";
constexpr std::string_view badPrice = "数字不正确或小于零！";
constexpr std::string_view madeHere = "不能导入半成品或产成品价格调整单。";

std::string Set(const std::string& assignments) {
    return "UPDATE inventory SET " + assignments + " WHERE cInvCode = N'1004'";
}

std::string Posted(const std::string& dKeepDate) {
    return "UPDATE Ia_subsidiary SET dKeepDate = '" + dKeepDate + "' WHERE cWhCode = N'04'";
}

std::string Summary(const std::string& columns, const std::string& values) {
    return "INSERT INTO ia_summary (cInvCode, iYear, iMonth, iPeriod" + columns + ") VALUES (N'1004', 2023, 1, 1" +
           values + ")";
}

std::string CostAccounting(const std::string& dCAFirstDate, const std::string& bRLOrST) {
    return "INSERT INTO AccInformation (cSysID, cName, cValue) VALUES (N'ca', N'dCAFirstDate', " + dCAFirstDate +
           "), (N'ca', N'bRLOrST', " + bRLOrST +
           ")\nGO\nINSERT INTO CO_BOMList (cInvCode, cComCode) VALUES (N'1004', N'1007')";
}

std::vector<Case> Cases() {
    const auto header = [](auto Voucher::*member, std::string text) {
        Voucher voucher;
        voucher.*member = std::move(text);
        return voucher;
    };
    const auto dated = [&](std::string text) { return header(&Voucher::dCJVDate, std::move(text)); };
    std::vector<Case> cases = {
        {.name = "Passes", .message = std::nullopt},

        {.name = "DateIsNone", .voucher = dated("2024-13-40"), .message = "请输入正确的日期格式"},
        {.name = "DateIsAWord", .voucher = dated("昨天"), .message = "请输入正确的日期格式"},

        {.name = "EveryMonthClosed", .setup = "UPDATE GL_mend SET bflag_IA = 1", .message = ""},
        {.name = "NoMonthAtAll", .setup = "DELETE FROM GL_mend", .message = ""},
        {.name = "OpeningNotBooked",
         .setup = "INSERT INTO GL_mend (iyear, iperiod, iYPeriod, bflag_IA) VALUES (2023, 0, 202300, 0)",
         .message = "系统没有期初记账"},

        {.name = "TodayBeforeMonth", .CurDate = "2022-12-31", .message = std::string(wrongToday)},
        {.name = "TodayIsThe31stOfAMonthThatEndsOnThe30th",
         .CurDate = "2023-01-31",
         .message = std::string(wrongToday)},
        {.name = "TodayIsTheFirstDay", .CurDate = "2023-01-01"},
        {.name = "TodayIsTheLastDay", .CurDate = "2023-01-30"},
        {.name = "LoginInAnotherMonth", .iMonth = "2", .message = std::string(wrongToday)},
        {.name = "MonthNotInCalendar",
         .setup = "DELETE FROM QxSystem..UA_Period WHERE cAcc_ID = N'001'",
         .message = std::string(wrongToday)},

        {.name = "NoDate", .voucher = dated(""), .message = std::string(wrongDate)},
        {.name = "DateBeforeMonth", .voucher = dated("2022-12-31"), .message = std::string(wrongDate)},
        {.name = "DateAfterMonth", .voucher = dated("2023-01-31"), .message = std::string(wrongDate)},
        {.name = "DateIsTheFirstDay", .voucher = dated("2023-01-01")},
        {.name = "DateIsTheLastDay", .voucher = dated("2023-01-30")},
        // As a point in time it is after the last day's start; as text it is that day.
        {.name = "DateWithATimeOnTheLastDay", .voucher = dated("2023-01-30 18:30:00")},
        {.name = "DateWithoutLeadingZeros", .voucher = dated("2023/1/5")},

        {.name = "PostedLater", .setup = Posted("2023-01-16"), .message = std::string(postedLater)},
        {.name = "PostedToday", .setup = Posted("2023-01-15")},
        {.name = "PostedLaterToday", .setup = Posted("2023-01-15 18:30:00")},
        {.name = "NothingPosted", .setup = "UPDATE Ia_subsidiary SET dKeepDate = NULL"},

        {.name = "NoMaker", .voucher = header(&Voucher::cMaker, ""), .cUserName = "", .message = "制单人必输"},
        {.name = "MakerIsTheOperator", .voucher = header(&Voucher::cMaker, "")},
        {.name = "BlankMakerIsTheOperator", .voucher = header(&Voucher::cMaker, "   ")},
        {.name = "NoItemCode", .entry = Entry("", "26.5"), .message = "存货编码不能为空"},

        {.name = "ItemUnknown", .entry = Entry("9", "1"), .message = "单据P1,存货编码9或自由项不合法。"},
        {.name = "ItemIsAService", .setup = Set("bService = 1"), .message = std::string(badItem)},
        {.name = "ItemIsADiscount", .setup = Set("bInvType = 1"), .message = std::string(badItem)},
        {.name = "ItemIsAPtoModel", .setup = Set("bPTOModel = 1"), .message = std::string(badItem)},
        {.name = "ItemWithoutPrices", .setup = "DELETE FROM InvCheckFreeIA870", .message = std::string(badItem)},
        {.name = "FreeItemUnknown",
         .setup = Set("bCheckFree10 = 1"),
         .entry = Entry("1004", "26.5", "<cFree10>红</cFree10>"),
         .message = std::string(badItem)},
        {.name = "FreeItemNotChecked",
         .setup = Set("bCheckFree10 = 0"),
         .entry = Entry("1004", "26.5", "<cFree10>红</cFree10>")},
        {.name = "FreeItemMissing",
         .setup = Set("bCheckFree3 = 1") + "\nGO\nUPDATE InvCheckFreeIA870 SET cFree3 = N'大'",
         .message = std::string(badItem)},
        {.name = "FreeItemKnown",
         .setup = Set("bCheckFree3 = 1") + "\nGO\nUPDATE InvCheckFreeIA870 SET cFree3 = N'大'",
         .entry = Entry("1004", "26.5", "<cFree3>大</cFree3>")},

        {.name = "ByItemNotAtPlannedPrice",
         .setup = Set("cValueType = N'售价法'"),
         .message = "存货1004不是计划价存货。"},
        {.name = "ByWarehouseAnyValuation", .valuation = byWarehouse, .setup = Set("cValueType = N'先进先出法'")},
        {.name = "ByDepartmentAnyValuation", .valuation = byDepartment, .setup = Set("cValueType = N'先进先出法'")},

        {.name = "ByItemLowerCaseFreeItemUnknown",
         .entry = Entry("1004", "26.5", "<cfree2>红</cfree2>"),
         .message = "仓库没有全部设置计价方式或计划价/售价核算的仓库中的存货没有设置计划价！"},
        {.name = "ByItemLowerCaseFreeItemKnown",
         .setup = "UPDATE InvCheckFreeIA870 SET cFree2 = N'红'",
         .entry = Entry("1004", "26.5", "<cfree2>红</cfree2>")},
        {.name = "ByWarehouseLowerCaseFreeItemsNotRead",
         .valuation = byWarehouse,
         .entry = Entry("1004", "26.5", "<cfree2>红</cfree2>")},

        {.name = "ByItemProcessed", .setup = Summary("", ""), .message = std::string(processed)},
        {.name = "ByItemProcessedDirect", .setup = Summary(", iDirect", ", 1")},
        {.name = "ByItemProcessedInAnotherMonth", .setup = Summary("", "") + "\nGO\nUPDATE ia_summary SET iMonth = 2"},
        {.name = "ByItemProcessedInAnotherYear", .setup = Summary("", "") + "\nGO\nUPDATE ia_summary SET iYear = 2022"},
        {.name = "ByItemNotProcessed", .setup = Summary("", "") + "\nGO\nUPDATE ia_summary SET iPeriod = 0"},

        {.name = "ByWarehouseNoSuchWarehouse",
         .valuation = byWarehouse,
         .setup = "UPDATE Warehouse SET cWhValueStyle = N'全月平均法'",
         .message = "没有计划价法/售价法仓库。"},
        {.name = "ByDepartmentNoSuchWarehouse",
         .valuation = byDepartment,
         .setup = "UPDATE Warehouse SET cWhValueStyle = N'全月平均法'",
         .message = "没有计划价法/售价法仓库。"},
        {.name = "ByItemNoSuchWarehouse", .setup = "UPDATE Warehouse SET cWhValueStyle = N'全月平均法'"},
        {.name = "ByWarehouseProcessedAtPlannedPrices",
         .valuation = byWarehouse,
         .setup = Summary(", cWhCode", ", N'03'"),
         .message = std::string(processed)},
        {.name = "ByWarehouseProcessedAtRetailPrices",
         .valuation = byWarehouse,
         .setup = Summary(", cWhCode", ", N'04'"),
         .message = std::string(processed)},
        {.name = "ByWarehouseProcessedAtOtherPrices",
         .valuation = byWarehouse,
         .setup = Summary(", cWhCode", ", N'01'")},
        {.name = "ByWarehouseProcessedDirect",
         .valuation = byWarehouse,
         .setup = Summary(", cWhCode, iDirect", ", N'03', 1")},
        {.name = "ByWarehouseProcessedOfADepartment",
         .valuation = byWarehouse,
         .setup = Summary(", cDepCode", ", N'05'")},
        {.name = "ByDepartmentProcessed",
         .valuation = byDepartment,
         .setup = Summary(", cDepCode", ", N'05'"),
         .message = std::string(processed)},
        {.name = "ByDepartmentProcessedOfAWarehouse",
         .valuation = byDepartment,
         .setup = Summary(", cWhCode", ", N'03'")},
        {.name = "ByDepartmentProcessedAtOtherPrices",
         .valuation = byDepartment,
         .setup = Summary(", cDepCode", ", N'03'")},

        {.name = "NoPrice", .entry = Entry("1004", ""), .message = "调整后计划价/售价不能为空!"},
        {.name = "PriceBelowZero", .entry = Entry("1004", "-0.01"), .message = std::string(badPrice)},
        {.name = "PriceIsNoNumber", .entry = Entry("1004", "abc"), .message = std::string(badPrice)},
        {.name = "PriceIsZero", .entry = Entry("1004", "0")},

        {.name = "MadeHere", .setup = CostAccounting("N'2023-01-01'", "N'1'"), .message = std::string(madeHere)},
        {.name = "MadeHereCostAccountingNotStarted", .setup = CostAccounting("N''", "N'1'")},
        {.name = "MadeHereCostAccountingNull", .setup = CostAccounting("NULL", "N'1'")},
        {.name = "MadeHereNotStandardCosting", .setup = CostAccounting("N'2023-01-01'", "N'0'")},
        {.name = "MadeHereStandardCostingNull", .setup = CostAccounting("N'2023-01-01'", "NULL")},
        {.name = "BoughtUnderCostAccounting",
         .setup = CostAccounting("N'2023-01-01'", "N'1'"),
         .entry = Entry("1007", "0.6")},
        {.name = "MadeHereByWarehouse",
         .valuation = byWarehouse,
         .setup = CostAccounting("N'2023-01-01'", "N'1'"),
         .message = std::string(madeHere)},
        {.name = "MadeHereByDepartment",
         .valuation = byDepartment,
         .setup = CostAccounting("N'2023-01-01'", "N'1'"),
         .message = std::string(madeHere)},
        {.name = "ByWarehousePasses", .valuation = byWarehouse},
        {.name = "ByDepartmentPasses", .valuation = byDepartment},
    };
    return cases;
}

class CheckPriceRow : public testing::TestWithParam<Case> {};

TEST_P(CheckPriceRow, Says) {
    const Case& test = GetParam();
    PriceAccount account(test.valuation);
    account.Run(test.setup);
    account.login = {test.CurDate, test.cUserName, test.iMonth};
    Voucher voucher = test.voucher;
    voucher.entries = test.entry;

    const std::vector<Outcome> expected =
        test.message ? std::vector<Outcome>{{"", "999", "单据P1导入失败：" + *test.message + "\r\n"}}
                     : std::vector<Outcome>{{"单据P1", "0", "成功导入："}};
    EXPECT_EQ(test::Outcomes(account.Import(test::Request({voucher}))), expected);
    EXPECT_EQ(account.Rows("SELECT COUNT(*) AS vouchers FROM CostJustVouch"),
              std::vector<std::string>{test.message ? "{\"vouchers\":0}" : "{\"vouchers\":1}"});
}

INSTANTIATE_TEST_SUITE_P(Rules, CheckPriceRow, testing::ValuesIn(Cases()), test::nameOfCase);

TEST(CheckPriceRowId, MustBeThere) {
    PriceAccount account;
    EXPECT_EQ(test::Outcomes(account.Import(test::Request({{.ID = "", .entries = Entry("1004", "26.5")}}))),
              (std::vector<Outcome>{{"", "999", "单据导入失败：调整单ID必输\r\n"}}));
}

/// A request that breaks every rule that can be broken together, mended one rule after the other.
TEST(CheckPriceRowOrder, FirstBrokenRuleSpeaks) {
    PriceAccount account(byItem);
    account.Run("UPDATE Ia_subsidiary SET dKeepDate = '2023-01-20'\nGO\n" + Set("cValueType = NULL") + "\nGO\n" +
                Set("bService = 1") + "\nGO\n" + Summary("", "") + "\nGO\n" + CostAccounting("N'2023-01-01'", "N'1'"));
    account.login = {"2022-12-01", "", "1"};
    Voucher voucher{.ID = "", .cMaker = "", .dCJVDate = "x"};
    std::string code;
    std::string free = "<cfree1>红</cfree1>";
    std::string price;
    const auto message = [&] {
        voucher.entries = Entry(code, price, free);
        const std::vector<Outcome> outcomes = test::Outcomes(account.Import(test::Request({voucher})));
        return outcomes.size() == 1 ? outcomes[0].dsc : std::string("not one outcome");
    };
    const auto refused = [&](std::string_view text) {
        return "单据" + voucher.ID + "导入失败：" + std::string(text) + "\r\n";
    };
    EXPECT_EQ(message(), refused("请输入正确的日期格式"));
    voucher.dCJVDate = "2022-01-01";
    EXPECT_EQ(message(), refused(wrongToday));
    account.login.CurDate = "2023-01-15";
    EXPECT_EQ(message(), refused(wrongDate));
    voucher.dCJVDate = "2023-01-15";
    EXPECT_EQ(message(), refused(postedLater));
    account.login.CurDate = "2023-01-20";
    EXPECT_EQ(message(), refused("调整单ID必输"));
    voucher.ID = "P1";
    EXPECT_EQ(message(), refused("制单人必输"));
    voucher.cMaker = "李工";
    EXPECT_EQ(message(), refused("存货编码不能为空"));
    code = "1004";
    EXPECT_EQ(message(), refused(badItem));
    account.Run(Set("bService = 0"));
    EXPECT_EQ(message(), refused("存货1004不是计划价存货。"));
    account.Run(Set("cValueType = N'计划价法'"));
    EXPECT_EQ(message(), refused("仓库没有全部设置计价方式或计划价/售价核算的仓库中的存货没有设置计划价！"));
    free.clear();
    EXPECT_EQ(message(), refused(processed));
    account.Run("DELETE FROM ia_summary");
    EXPECT_EQ(message(), refused("调整后计划价/售价不能为空!"));
    price = "-1";
    EXPECT_EQ(message(), refused(badPrice));
    price = "1";
    EXPECT_EQ(message(), refused(madeHere));
    account.Run("DELETE FROM CO_BOMList");
    EXPECT_EQ(message(), "成功导入：");
}

TEST(CheckPriceRowTrap, ErrorRefusesTheRowAndIsLost) {
    PriceAccount account;
    account.faults.statement = test::FailOn("from ia_summary");
    EXPECT_EQ(test::Outcomes(account.Import(test::Request({{.entries = Entry("1004", "26.5")}}))),
              (std::vector<Outcome>{{"", "999", "单据P1导入失败：\r\n"}}));
    EXPECT_EQ(account.log().back(), "CommitTrans");
}

TEST(CheckPriceRowTrap, ErrorKeepsTheMessageOfTheRowBefore) {
    PriceAccount account;
    account.faults.statement = test::FailOn("N'1007' and iYear");
    EXPECT_EQ(test::Outcomes(account.Import(test::Request({{.entries = Entry("1004", "-1") + Entry("1007", "1")}}))),
              (std::vector<Outcome>{{"", "999", "单据P1导入失败：单据P1导入失败：数字不正确或小于零！\r\n"}}));
}

/// Answers the query for the open month with no record at all, which no database does.
class NoOpenMonth : public refhost::ForwardingDatabase {
public:
    using ForwardingDatabase::ForwardingDatabase;

    refhost::ResultSet Query(std::string_view sql) override {
        refhost::ResultSet result = ForwardingDatabase::Query(sql);
        if (sql.find("min(iyperiod)") != std::string_view::npos) {
            result.cells = {};
            result.rowCount = 0;
        }
        return result;
    }
};

TEST(CheckPriceRowPeriod, NoRecordOfTheOpenMonth) {
    const PriceAccount account;
    refhost::Environment environment([](const std::string& connectionString) {
        return std::make_unique<NoOpenMonth>(refhost::OpenDatabase(connectionString));
    });
    refhost::Login login(account.LoginXml(), environment);
    kovra::ClsPriceJustVou instance(environment);
    EXPECT_EQ(test::Outcomes(instance.Transact(test::Request({{.entries = Entry("1004", "26.5")}}), &login)),
              (std::vector<Outcome>{{"", "999", "单据P1导入失败：系统错误，没有设置会计期间\r\n"}}));
}

} // namespace
