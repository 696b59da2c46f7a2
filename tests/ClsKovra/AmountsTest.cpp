#include "ClsKovra/Amounts.h"

#include "tests/ClsKovra/Lookups.h"
#include "tests/ClsKovra/OpeningFixture.h"

namespace {

namespace lookup = test::lookup;
using test::Inserted;
using test::Outcome;
using testing::ElementsAre;
using testing::IsEmpty;

std::string Row(std::string_view warehouse, std::string_view item, std::string_view quantity, std::string_view cost,
                std::string_view price, std::string_view more = {}) {
    std::string row = "<row><cWhCode>";
    row.append(warehouse).append("</cWhCode><cInvCode>").append(item).append("</cInvCode><iQuantity>");
    row.append(quantity).append("</iQuantity><iCost>").append(cost).append("</iCost><iPrice>").append(price);
    return row.append("</iPrice>").append(more).append("</row>");
}

/// The statement of such a row: `values` are those behind the two codes.
std::string FullInsert(std::string_view warehouse, std::string_view item, std::string_view values) {
    std::string sql = "Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, cWhCode, cInvCode, IAInQuantity, iInCost, "
                      "IAInPrice, iDebitDifCost, iCreditDifcost, cBusType ) Values(2023,'34', 1,'";
    sql.append(warehouse).append("', '").append(item).append("', ").append(values).append("'EAI' )");
    return Inserted(sql);
}

class AmountsTest : public test::OpeningTest {
protected:
    void ExpectRefused(const std::string& row, std::string_view message) {
        const Outcome outcome = ImportOne(row);
        EXPECT_EQ(outcome.code, 101);
        EXPECT_EQ(outcome.description, message);
        EXPECT_THAT(account.Rows("SELECT AutoID FROM Ia_subsidiary"), IsEmpty());
    }
    /// Imports a row that is accepted and returns its insert's trace line.
    std::string Insert(const std::string& row) {
        const Outcome outcome = ImportOne(row);
        EXPECT_EQ(outcome.code, 0) << outcome.description;
        return Lines().back();
    }
};

TEST_F(AmountsTest, PlannedPriceStoresThePlannedAmountAndDebitsTheDifference) {
    EXPECT_EQ(Insert(Row("02", "P1", "10", "9", "30")), FullInsert("02", "P1", "10, 2.5, 25, 5, Null, "));
    EXPECT_THAT(account.Rows("SELECT iAInQuantity, iInCost, iAInPrice, iDebitDifCost, iCreditDifCost FROM "
                             "Ia_subsidiary"),
                ElementsAre(R"({"iAInQuantity":10,"iInCost":2.5,"iAInPrice":25,"iDebitDifCost":5,)"
                            R"("iCreditDifCost":null})"));
}

TEST_F(AmountsTest, RetailPriceStoresTheRetailAmountAndCreditsTheDifference) {
    EXPECT_EQ(Insert(Row("03", "P1", "10", "9", "30")), FullInsert("03", "P1", "10, 2.5, 25, Null, -5, "));
}

TEST_F(AmountsTest, NoDifferenceIsNull) {
    EXPECT_EQ(Insert(Row("02", "P1", "10", "", "25")), FullInsert("02", "P1", "10, 2.5, 25, Null, Null, "));
}

TEST_F(AmountsTest, AsksForThePriceByFreeItemsInOrder) {
    Insert(Row("02", "P1", "10", "9", "30"));
    EXPECT_THAT(RowLines(),
                ElementsAre(lookup::Item("P1"), lookup::Scope(), lookup::FreeItems("P1"), lookup::Warehouse("02"),
                            lookup::Scope(), lookup::MethodOfWarehouse("02"), lookup::Flag("bInvQuality", "P1"),
                            lookup::Price("P1"), FullInsert("02", "P1", "10, 2.5, 25, 5, Null, ")));
}

TEST_F(AmountsTest, ThePriceByFreeItemsReplacesTheItems) {
    account.Run("INSERT INTO InvCheckFreeIA870 (cInvCode, cFree1, cFree10, fInvRCost) VALUES ('P1', N'红', N'小', 4)");
    EXPECT_EQ(Insert(Row("02", "P1", "10", "", "30", "<cFree1>红</cFree1><cFree10>小</cFree10>")),
              Inserted("Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, cWhCode, cInvCode, cFree1, cFree10, "
                       "IAInQuantity, iInCost, IAInPrice, iDebitDifCost, iCreditDifcost, cBusType ) "
                       "Values(2023,'34', 1,'02', 'P1', '红', '小', 10, 4, 40, -10, Null, 'EAI' )"));
    EXPECT_THAT(Lines(), testing::Contains(lookup::Price("P1", {"红", "", "", "", "", "", "", "", "", "小"})));
}

TEST_F(AmountsTest, AFreeItemLeftEmptyInThePriceListMatchesAny) {
    account.Run("INSERT INTO InvCheckFreeIA870 (cInvCode, cFree1, fInvRCost) VALUES ('P1', N'红', 4)");
    EXPECT_EQ(Insert(Row("02", "P1", "10", "", "25")), FullInsert("02", "P1", "10, 2.5, 25, Null, Null, "));
    account.Run("UPDATE InvCheckFreeIA870 SET cFree1 = NULL");
    EXPECT_EQ(Insert(Row("02", "P1", "10", "", "40")), FullInsert("02", "P1", "10, 4, 40, Null, Null, "));
}

TEST_F(AmountsTest, PlannedPriceNeedsAQuantity) {
    for (const std::string_view quantity : {"0", "", "keine", "0.00"}) {
        ExpectRefused(Row("02", "P1", quantity, "1", "30"), "计划价/售价法不允许导入数量为0的期初数据。");
        ExpectRefused(Row("03", "P1", quantity, "1", "30"), "计划价/售价法不允许导入数量为0的期初数据。");
    }
    EXPECT_THAT(Lines(), testing::Not(testing::Contains(lookup::Price("P1"))));
}

TEST_F(AmountsTest, PlannedPriceNeedsAPrice) {
    ExpectRefused(Row("02", "A1", "10", "1", "30"), "请在存货目录中录入该存货的计划单价。");
    ExpectRefused(Row("03", "A1", "10", "1", "30"), "请在存货目录中录入该存货的售价。");
}

TEST_F(AmountsTest, ANullPriceByFreeItemsHidesTheItems) {
    account.Run("INSERT INTO InvCheckFreeIA870 (cInvCode, fInvRCost) VALUES ('P1', NULL)");
    ExpectRefused(Row("02", "P1", "10", "1", "30"), "请在存货目录中录入该存货的计划单价。");
}

TEST_F(AmountsTest, ANegativePlannedPriceIsRefusedForEveryMethod) {
    account.Run("UPDATE inventory SET iInvRCost = -0.01 WHERE cInvCode = 'P1'");
    for (const std::string_view warehouse : {"01", "02", "03", "04"}) {
        ExpectRefused(Row(warehouse, "P1", "10", "1", "30"), "单价必须大于等于零。");
    }
    EXPECT_THAT(Lines(), testing::Not(testing::Contains(lookup::Price("P1"))));
}

TEST_F(AmountsTest, ANegativePriceByFreeItemsIsRefused) {
    account.Run("INSERT INTO InvCheckFreeIA870 (cInvCode, fInvRCost) VALUES ('P1', -4)");
    ExpectRefused(Row("02", "P1", "10", "1", "30"), "单价必须大于等于零。");
    EXPECT_EQ(Lines().back(), lookup::Price("P1"));
}

TEST_F(AmountsTest, ANegativeCostIsRefused) {
    ExpectRefused(Row("01", "A1", "10", "-0.5", "30"), "单价必须大于等于零。");
    ExpectRefused(Row("01", "A1", "0", "-0.5", "30"), "单价必须大于等于零。");
}

TEST_F(AmountsTest, ANegativeQuantityIsRefusedForIndividualPricing) {
    ExpectRefused(Row("04", "A1", "-1", "2", "-2"), "个别计价法不允许录入负数量。");
    EXPECT_EQ(Lines().back(), lookup::Flag("bInvQuality", "A1")) << "the tracking flag is not asked for";
}

TEST_F(AmountsTest, ANegativeQuantityIsRefusedForTrackedItems) {
    account.Run("UPDATE inventory SET bTrack = 1 WHERE cInvCode = 'A1'");
    ExpectRefused(Row("01", "A1", "-1", "2", "-2"), "跟踪型管理的存货不允许录入负数量。");
    EXPECT_EQ(Lines().back(), lookup::Flag("bTrack", "A1"));
}

TEST_F(AmountsTest, ANegativeQuantityIsAcceptedForAverageCostWithoutTracking) {
    EXPECT_EQ(Insert(Row("01", "A1", "-1", "2", "-2")), FullInsert("01", "A1", "-1, 2, -2, Null, Null, "));
    EXPECT_THAT(Lines(), testing::Contains(lookup::Flag("bTrack", "A1")));
    account.Run("UPDATE inventory SET bTrack = NULL WHERE cInvCode = 'A1'");
    EXPECT_EQ(Insert(Row("01", "A1", "-1", "2", "-2")), FullInsert("01", "A1", "-1, 2, -2, Null, Null, "));
}

TEST_F(AmountsTest, ANegativeQuantityAtPlannedPriceGivesANegativeAmount) {
    EXPECT_EQ(Insert(Row("02", "P1", "-10", "", "-24")), FullInsert("02", "P1", "-10, 2.5, -25, 1, Null, "));
    EXPECT_EQ(Insert(Row("03", "P1", "-10", "", "-24")), FullInsert("03", "P1", "-10, 2.5, -25, Null, -1, "));
}

TEST_F(AmountsTest, TheFirstMessageWins) {
    account.Run("UPDATE inventory SET iInvRCost = -1, bTrack = 1 WHERE cInvCode = 'P1'");
    ExpectRefused(Row("04", "P1", "-1", "-2", "1"), "个别计价法不允许录入负数量。");
    ExpectRefused(Row("02", "P1", "-1", "-2", "1"), "跟踪型管理的存货不允许录入负数量。");
    ExpectRefused(Row("02", "P1", "0", "-2", "1"), "单价必须大于等于零。");
    account.Run("UPDATE inventory SET iInvRCost = NULL WHERE cInvCode = 'P1'");
    ExpectRefused(Row("02", "P1", "0", "-2", "1"), "计划价/售价法不允许导入数量为0的期初数据。");
}

TEST_F(AmountsTest, AnAmountOnlyBalanceWritesNoQuantity) {
    EXPECT_EQ(Insert(Row("01", "A1", "0", "3", "100")),
              Inserted("Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, cWhCode, cInvCode, IAInPrice, "
                       "iDebitDifCost, iCreditDifcost, cBusType ) Values(2023,'34', 1,'01', 'A1', 100, Null, Null, "
                       "'EAI' )"));
    EXPECT_THAT(account.Rows("SELECT iYear, cVouType, bRdFlag, iAInQuantity, iInCost, iAInPrice, iDebitDifCost, "
                             "iCreditDifCost, cBusType FROM Ia_subsidiary"),
                ElementsAre(R"({"iYear":2023,"cVouType":"34","bRdFlag":true,"iAInQuantity":null,"iInCost":null,)"
                            R"("iAInPrice":100,"iDebitDifCost":null,"iCreditDifCost":null,"cBusType":"EAI"})"));
}

TEST_F(AmountsTest, AnAmountOnlyBalanceOfNothingWritesANull) {
    EXPECT_EQ(Insert(Row("01", "A1", "", "", "0")),
              Inserted("Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, cWhCode, cInvCode, IAInPrice, "
                       "iDebitDifCost, iCreditDifcost, cBusType ) Values(2023,'34', 1,'01', 'A1', Null, Null, Null, "
                       "'EAI' )"));
}

TEST_F(AmountsTest, AQuantityWritesItsZeroes) {
    EXPECT_EQ(Insert(Row("01", "A1", "5", "0", "0")), FullInsert("01", "A1", "5, 0, 0, Null, Null, "));
}

TEST_F(AmountsTest, ReadsTheNumberThatATextBeginsWith) {
    struct Case {
        std::string_view text;
        std::string_view number;
    };
    for (const auto& [text, number] : {
             Case{" 1 234.5x", "1234.5"},
             Case{"\t1\n2", "12"},
             Case{"1e3", "1000"},
             Case{"1.5E-2", "0.015"},
             Case{"&amp;H10", "16"},
             Case{"1,234", "1"},
             Case{"+7", "7"},
             Case{"12.30", "12.3"},
             Case{"0.1234567890123456", "0.123456789012346"},
             Case{"123456789012345", "123456789012345"},
         }) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Insert(Row("01", "A1", "2", "1", text)),
                  FullInsert("01", "A1", "2, 1, " + std::string(number) + ", Null, Null, "));
    }
}

TEST_F(AmountsTest, ReadsNegativeFractionsWithoutALeadingZero) {
    EXPECT_EQ(Insert(Row("01", "A1", "-.5", "1", "-.5")), FullInsert("01", "A1", "-0.5, 1, -0.5, Null, Null, "));
}

TEST_F(AmountsTest, ReadsNothingFromFullWidthDigitsAndOtherTexts) {
    for (const std::string_view text : {"１２", "abc", "￥12", "-", "."}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Insert(Row("01", "A1", "2", "1", text)), FullInsert("01", "A1", "2, 1, 0, Null, Null, "));
    }
}

TEST_F(AmountsTest, AmountsBeyondFifteenDigitsKeepFifteen) {
    EXPECT_EQ(Insert(Row("01", "A1", "2", "1", "1234567890123456789")),
              FullInsert("01", "A1", "2, 1, 1.23456789012346E+18, Null, Null, "));
    EXPECT_THAT(account.Rows("SELECT iAInPrice FROM Ia_subsidiary"),
                ElementsAre(R"({"iAInPrice":1.23456789012346e+18})"));
}

TEST_F(AmountsTest, ANumberThatIsTooLargeRefusesTheRow) { ExpectRefused(Row("01", "A1", "2", "1", "1e400"), "溢出"); }

TEST_F(AmountsTest, ADifferenceIsFreeOfBinaryDust) {
    // 0.3 - 0.1 is 0.19999999999999998 as a double.
    account.Run("UPDATE inventory SET iInvRCost = 0.1 WHERE cInvCode = 'P1'");
    EXPECT_EQ(Insert(Row("02", "P1", "1", "", "0.3")), FullInsert("02", "P1", "1, 0.1, 0.1, 0.2, Null, "));
}

struct Split {
    double unitCost;
    double quantity;
    double given;
    double amount;
    double debit;
};

TEST(SplitPlannedAmountTest, RoundsHalvesAwayFromZero) {
    for (const Split& split : {
             Split{2.5, 10, 30, 25, 5},
             Split{0.125, 1, 0, 0.13, -0.13},
             Split{0.125, -1, 0, -0.13, 0.13},
             Split{1.005, 1, 0, 1.01, -1.01},
             Split{-1.005, 1, 0, -1.01, 1.01},
             Split{2.675, 1, 0, 2.68, -2.68},
             Split{0.004, 1, 0, 0, 0},
             Split{1, 1, 0.125, 1, -0.87},
             Split{0, 1, -0.125, 0, -0.13},
             Split{1, 123456789012345, 0, 123456789012345, -123456789012345},
         }) {
        SCOPED_TRACE(testing::Message() << split.unitCost << " x " << split.quantity << ", " << split.given);
        kovra::Amounts planned{.quantity = split.quantity, .unitCost = split.unitCost, .amount = split.given};
        kovra::SplitPlannedAmount(planned, "计划价法");
        EXPECT_DOUBLE_EQ(planned.amount, split.amount);
        EXPECT_DOUBLE_EQ(planned.debitDifference, split.debit);
        EXPECT_EQ(planned.creditDifference, 0);

        kovra::Amounts retail{.quantity = split.quantity, .unitCost = split.unitCost, .amount = split.given};
        kovra::SplitPlannedAmount(retail, "售价法");
        EXPECT_DOUBLE_EQ(retail.amount, split.amount);
        EXPECT_EQ(retail.debitDifference, 0);
        EXPECT_DOUBLE_EQ(retail.creditDifference, -split.debit);
    }
}

} // namespace
