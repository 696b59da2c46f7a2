#include "import/outcome/Outcome.h"

#include "import/outcome/Reasons.h"
#include "import/outcome/Totals.h"
#include "import/reading/Csv.h"

#include <gtest/gtest.h>

namespace {

using importing::Finding;
using importing::Language;
using importing::Outcome;
using importing::Reason;
using importing::RowOutcome;
using importing::RowState;
using importing::Totals;
namespace message = importing::message;

/// An outcome of opening balances with the columns warehouse, item, quantity, amount.
class OutcomeOfOpening : public ::testing::Test {
protected:
    OutcomeOfOpening() {
        outcome.classFields = importing::FieldsOf("ClsKovra");
        importing::CsvTable table("仓库编码,存货编码,数量,金额\n", ',');
        importing::Line line;
        table.Next(line);
        outcome.columns = importing::ReadHeadings(line, *outcome.classFields, {});
        outcome.warehouseNames = {{"01", "成品库"}};
        outcome.accountNames = {{"1405", "库存商品"}};
    }

    RowOutcome& Add(RowState state, std::vector<std::string> values, std::string account = "1405") {
        RowOutcome& row = outcome.rows.emplace_back();
        row.row.line = outcome.rows.size() + 1;
        row.row.values = std::move(values);
        row.state = state;
        row.account = std::move(account);
        return row;
    }

    Outcome outcome;
};

TEST_F(OutcomeOfOpening, TotalsAddUpWhatIsTakenByWarehouseAndAccount) {
    Add(RowState::imported, {"01", "1001", "2", "10.10"});
    Add(RowState::alreadyIn, {"01", "1002", "3", "0.20"}, "");
    Add(RowState::ready, {"02", "1001", "1", "-5"}).row.corrections.push_back({2, "１", "1"});
    const Totals totals = importing::TotalsOf(outcome);
    EXPECT_EQ(totals.taken.rows, 3U);
    EXPECT_EQ(totals.taken.quantity, 6);
    EXPECT_DOUBLE_EQ(totals.taken.amount, 5.3);
    EXPECT_EQ(totals.corrected, 1U);
    ASSERT_EQ(totals.byWarehouse.size(), 2U);
    EXPECT_EQ(totals.byWarehouse[0].code, "01");
    EXPECT_EQ(totals.byWarehouse[0].name, "成品库");
    EXPECT_EQ(totals.byWarehouse[0].sums.rows, 2U);
    EXPECT_DOUBLE_EQ(totals.byWarehouse[0].sums.amount, 10.3);
    EXPECT_EQ(totals.byWarehouse[1].code, "02");
    EXPECT_EQ(totals.byWarehouse[1].name, "");
    ASSERT_EQ(totals.byAccount.size(), 2U);
    EXPECT_EQ(totals.byAccount[0].code, "");
    EXPECT_DOUBLE_EQ(totals.byAccount[0].sums.amount, 0.2);
    EXPECT_EQ(totals.byAccount[1].name, "库存商品");
    EXPECT_DOUBLE_EQ(totals.byAccount[1].sums.amount, 5.1);
}

TEST_F(OutcomeOfOpening, TotalsKeepRefusedAndOpenRowsApart) {
    Add(RowState::refusedByChecks, {"", "1001", "2", "7"});
    Add(RowState::refusedByClass, {"01", "1001", "1", "3"});
    Add(RowState::notReached, {"01", "1002", "4", "20"});
    Add(RowState::inDoubt, {"01", "1003", "5", "30"});
    const Totals totals = importing::TotalsOf(outcome);
    EXPECT_EQ(totals.taken.rows, 0U);
    EXPECT_TRUE(totals.byWarehouse.empty());
    EXPECT_EQ(totals.refused.rows, 2U);
    EXPECT_EQ(totals.refused.quantity, 3);
    EXPECT_EQ(totals.refused.amount, 10);
    EXPECT_EQ(totals.open.rows, 2U);
    EXPECT_EQ(totals.open.amount, 50);
    EXPECT_EQ(importing::CountOf(outcome, RowState::inDoubt), 1U);
}

TEST_F(OutcomeOfOpening, ACentIsNotLostInAHundredThousandRows) {
    for (int i = 0; i < 100000; ++i) {
        Add(RowState::ready, {"01", "1001", "0.1", "0.01"});
    }
    const Totals totals = importing::TotalsOf(outcome);
    EXPECT_NEAR(totals.taken.amount, 1000, 1e-9);
    EXPECT_NEAR(totals.taken.quantity, 10000, 1e-8);
}

TEST_F(OutcomeOfOpening, RefusalsAreGroupedByReasonTheMostFrequentFirst) {
    const auto missing = [](std::size_t column) { return Finding{column, {message::valueMissing, {"金额"}}, {}}; };
    Add(RowState::refusedByClass, {"01", "1001", "1", "1"}).messages = {"批次超长！"};
    for (const char* const code : {"9", "8", "7"}) {
        Add(RowState::refusedByChecks, {"01", "", "1", "1"}).row.refusals = {{1, {message::codeUnknown, {code}}, {}}};
    }
    Add(RowState::refusedByChecks, {"01", "1001", "1", ""}).row.refusals = {
        missing(3), {std::nullopt, {message::rowRepeated, {"2"}}, {}}};
    const std::vector<Reason> reasons = importing::ReasonsOfRefusals(outcome, Language::chinese, 2);
    ASSERT_EQ(reasons.size(), 4U);
    EXPECT_EQ(reasons[0].words, "没有编码“…”。");
    EXPECT_EQ(reasons[0].count, 3U);
    EXPECT_EQ(reasons[0].places, (std::vector<std::string>{"B3", "B4"}));
    EXPECT_FALSE(reasons[0].byClass);
    EXPECT_EQ(reasons[1].words, "批次超长！");
    EXPECT_TRUE(reasons[1].byClass);
    EXPECT_EQ(reasons[1].places, (std::vector<std::string>{"2"}));
    EXPECT_EQ(reasons[2].places, (std::vector<std::string>{"D6"}));
    EXPECT_EQ(reasons[3].words, "与第 … 行重复。");
    EXPECT_EQ(reasons[3].places, (std::vector<std::string>{"6"}));
}

TEST_F(OutcomeOfOpening, WarningsAreGroupedToo) {
    Add(RowState::ready, {"01", "1001", "1", "1"}).row.warnings = {{3, {message::amountDiffers, {"0.5"}}, {}}};
    const std::vector<Reason> reasons = importing::ReasonsOfWarnings(outcome, Language::english, 5);
    ASSERT_EQ(reasons.size(), 1U);
    EXPECT_EQ(reasons[0].words, "The amount differs by … from quantity times unit cost.");
    EXPECT_TRUE(importing::ReasonsOfRefusals(outcome, Language::english, 5).empty());
}

TEST_F(OutcomeOfOpening, AFileWithoutAColumnHasNoValuesInIt) {
    const RowOutcome& row = Add(RowState::ready, {"01", "1001", "1", "1"});
    EXPECT_EQ(importing::ValueOf(outcome, row.row, "cInvCode"), "1001");
    EXPECT_EQ(importing::ValueOf(outcome, row.row, "cMemo"), "");
}

} // namespace
