#include "tests/ClsPriceJustVou/PriceAccount.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using test::Entry;
using test::Outcome;
using test::Outcomes;
using test::PriceAccount;
using test::Request;
using test::Voucher;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The statement that the class sent under `label`.
std::string Sent(const PriceAccount& account, std::string_view begin) {
    for (const std::string& sql : account.statements()) {
        if (sql.starts_with(begin)) {
            return sql;
        }
    }
    return "none";
}

std::string StagedPrice(PriceAccount& account, std::string_view iCJVACost) {
    account.Import(Request({{.entries = Entry("1004", iCJVACost)}}));
    const std::string sql = Sent(account, "Insert into");
    const std::size_t begin = sql.find("cast(");
    return begin == std::string::npos ? sql : sql.substr(begin, sql.find(", \r\n", begin) - begin);
}

TEST(ImportPriceVoucher, StagesAPriceInItsDecimals) {
    PriceAccount account;
    EXPECT_EQ(StagedPrice(account, "12.5"), "cast(12.5 as decimal(38,4))");
    EXPECT_EQ(StagedPrice(account, " 12.50 "), "cast(12.5 as decimal(38,4))");
    EXPECT_EQ(StagedPrice(account, "1,200"), "cast(1200 as decimal(38,4))");
    EXPECT_EQ(StagedPrice(account, "0"), "cast(0 as decimal(38,4))");
}

TEST(ImportPriceVoucher, DecimalsOfPricesAreTheLeadingNumberOfTheOption) {
    PriceAccount account;
    const auto option = [&](const std::string& value) {
        account.Run("UPDATE AccInformation SET cValue = " + value + " WHERE cName = N'iStrsPriDecDgt'");
    };
    option("N'2位'");
    EXPECT_EQ(StagedPrice(account, "12.5"), "cast(12.5 as decimal(38,2))");
    option("N''");
    EXPECT_EQ(StagedPrice(account, "12.5"), "cast(12.5 as decimal(38,0))");
    account.Run("DELETE FROM AccInformation WHERE cName = N'iStrsPriDecDgt'");
    EXPECT_EQ(StagedPrice(account, "12.5"), "cast(12.5 as decimal(38,0))");
}

TEST(ImportPriceVoucher, StagesTheRowWithoutItsWarehouse) {
    PriceAccount account;
    // The document then fails behind its rows, so that they stay.
    account.faults.statement = test::FailOn("CREATE TABLE [dbo].[IA_tmpPriceJDATA_Result]");
    account.Import(Request({{.entries = Entry("1004", "26.123456",
                                              "<cWhCode>03</cWhCode><cFree1>甲</cFree1>"
                                              "<cFree10>癸</cFree10>")}}));
    account.faults = {};
    EXPECT_THAT(account.Rows("SELECT cWhCode, cInvCode, bRandom, iCJVACost, cFree1, cFree2, cFree10 "
                             "FROM IA_tmpPriceJDATA"),
                ElementsAre(R"({"cWhCode":"","cInvCode":"1004","bRandom":0,"iCJVACost":26.1235000000,)"
                            R"("cFree1":"甲","cFree2":"","cFree10":"癸"})"));
}

TEST(ImportPriceVoucher, EmptyMakerIsCheckedAsTheOperatorButSavedEmpty) {
    PriceAccount account;
    EXPECT_THAT(Outcomes(account.Import(Request({{.cMaker = "", .entries = Entry("1004", "26.5")}}))),
                ElementsAre(Outcome{"单据P1", "0", "成功导入："}));
    EXPECT_THAT(Sent(account, "select '' as AutoId"), HasSubstr(" as ID, '' as cMaker, \r\n"));
    EXPECT_THAT(account.Rows("SELECT cMaker FROM CostJustVouch"), ElementsAre(R"({"cMaker":null})"));
}

TEST(ImportPriceVoucher, HeadTakesTheDatesFormatAndTheLoginsDateForNone) {
    PriceAccount account;
    account.Import(Request({{.dCJVDate = "2023/1/9", .entries = Entry("1004", "26.5")}}));
    EXPECT_THAT(Sent(account, "select '' as AutoId"), HasSubstr("'2023-01-09' as dCJVDate"));
    // Without rows nothing checks the empty date.
    account.Import(Request({{.dCJVDate = ""}}));
    EXPECT_THAT(Sent(account, "select '' as AutoId"), HasSubstr("'2023-01-15' as dCJVDate"));
}

TEST(ImportPriceVoucher, HeadIsSentAsItStands) {
    PriceAccount account;
    account.Import(Request({{.cMemo = "调价", .entries = Entry("1004", "26.5")}}));
    EXPECT_EQ(Sent(account, "select '' as AutoId"),
              "select '' as AutoId, '2023-01-15' as dCJVDate, '调价' as cMemo, \r\n"
              "CONVERT(NVARCHAR(60), N'') as cCode, -1 as ID, '李工' as cMaker, \r\n"
              "CONVERT(NVARCHAR(40), N'') as cAccounter, '5101' as VT_ID, '22' as VouchType, \r\n"
              "'' as cInvCode, 0 as iCJVBCost, 0 as iCJVACost");
}

TEST(ImportPriceVoucher, QuotesAreSplicedAsTheyStand) {
    PriceAccount account;
    const std::vector<Outcome> outcomes =
        Outcomes(account.Import(Request({{.cMemo = "a'b", .entries = Entry("1004", "26.5")}})));
    ASSERT_EQ(outcomes.size(), 1U);
    EXPECT_EQ(outcomes[0].key, "-2147217900");
    EXPECT_THAT(Sent(account, "select '' as AutoId"), HasSubstr("'a'b' as cMemo"));
}

TEST(ImportPriceVoucher, CardWithoutATemplateSavesNone) {
    PriceAccount account;
    account.Run("DELETE FROM VoucherTemplates");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = Entry("1004", "26.5")}}))),
                ElementsAre(Outcome{"单据P1", "0", "成功导入："}));
    EXPECT_THAT(Sent(account, "select '' as AutoId"), HasSubstr("'' as VT_ID"));
}

TEST(ImportPriceVoucher, NumbersVouchersInTheirMonth) {
    PriceAccount account;
    for (int i = 0; i < 2; ++i) {
        account.Import(Request({{.entries = Entry("1004", "26.5")}}));
    }
    EXPECT_THAT(account.Rows("SELECT cCode FROM CostJustVouch ORDER BY AutoID"),
                ElementsAre(R"({"cCode":"2023010001"})", R"({"cCode":"2023010002"})"));
}

TEST(ImportPriceVoucher, MissingHeaderIsAnError) {
    PriceAccount account;
    const std::vector<Outcome> outcomes = Outcomes(account.Import(
        R"(<x roottag="v" docid="J1" proc="ADD"><v><body><entry><cInvCode>1004</cInvCode></entry></body></v></x>)"));
    ASSERT_EQ(outcomes.size(), 2U);
    EXPECT_EQ(outcomes[0], (Outcome{"91", "999", "对象变量或 With 块变量未设置"}));
    EXPECT_THAT(account.Rows("SELECT ID FROM CostJustVouch"), IsEmpty());
}

TEST(ImportPriceVoucher, TakesTheFirstVoucherOfAResultOfSeveralFreeItems) {
    PriceAccount account;
    account.Run("UPDATE inventory SET bCheckFree1 = 1 WHERE cInvCode = N'1004'\nGO\n"
                "UPDATE InvCheckFreeIA870 SET cFree1 = N'红' WHERE cInvCode = N'1004'\nGO\n"
                "INSERT INTO InvCheckFreeIA870 (cInvCode, cFree1, fInvRCost) VALUES (N'1004', N'蓝', 30)");
    EXPECT_THAT(Outcomes(account.Import(Request({{.entries = Entry("1004", "26", "<cFree1>红</cFree1>") +
                                                             Entry("1004", "31", "<cFree1>蓝</cFree1>")}}))),
                ElementsAre(Outcome{"单据P1", "0", "成功导入："}));
    EXPECT_THAT(account.Rows("SELECT cFree1, iCJVBCost, iCJVACost FROM CostJustVouchs ORDER BY AutoID"),
                ElementsAre(R"({"cFree1":"红","iCJVBCost":25.0000000000,"iCJVACost":26.0000000000})",
                            R"({"cFree1":"蓝","iCJVBCost":30.0000000000,"iCJVACost":31.0000000000})"));
}

} // namespace
