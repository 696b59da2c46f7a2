// 5,000 opening balances as people type them: every fault is found at its cell, no figure is taken wrong, and the
// refused rows, once corrected, are the rest.

#include "examples/opening-5000/FaultyOpening.h"

#include "import/file/ReadBytes.h"
#include "import/outcome/Outcome.h"
#include "import/reading/Workbook.h"
#include "import/rows/Spreadsheet.h"
#include "import/writing/RefusedRows.h"
#include "tests/import/PackageFile.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

namespace {

using importing::Message;
using importing::Note;
using importing::RowState;
namespace message = importing::message;

importing::Sheet Read(const std::string& path) {
    return importing::Spreadsheet(path, {}, {}, nullptr).Read(opening::Codes());
}

std::vector<std::string> Meant(const opening::Row& row) { return {row.meant.begin(), row.meant.end()}; }

class FaultyOpening : public testing::Test {
protected:
    static void SetUpTestSuite() {
        rows_ = new std::vector<opening::Row>(opening::Rows());
        folder_ = new test::TestFolder;
        path_ = new std::string(folder_->File("期初-5000.xlsx"));
        opening::WriteWorkbook(*path_, *rows_);
        sheet_ = new importing::Sheet(Read(*path_));
    }
    static void TearDownTestSuite() {
        delete sheet_;
        delete path_;
        delete folder_;
        delete rows_;
    }

    static const std::vector<opening::Row>& rows() { return *rows_; }
    static const importing::Sheet& sheet() { return *sheet_; }
    static std::string File(const std::string& name) { return folder_->File(name); }

    /// What an import makes of the file, as far as the checks go.
    static importing::Outcome OutcomeOfChecks() {
        importing::Outcome outcome;
        outcome.classFields = sheet().classFields;
        outcome.columns = sheet().columns;
        for (const importing::Row& row : sheet().rows) {
            const RowState state = row.refusals.empty() ? RowState::ready : RowState::refusedByChecks;
            outcome.rows.push_back({.row = row, .state = state, .key = {}, .messages = {}, .account = {}});
        }
        return outcome;
    }

    // NOLINTBEGIN: shared by the tests, since 5,000 rows take a while under the sanitizers.
    static inline std::vector<opening::Row>* rows_ = nullptr;
    static inline test::TestFolder* folder_ = nullptr;
    static inline std::string* path_ = nullptr;
    static inline importing::Sheet* sheet_ = nullptr;
    // NOLINTEND
};

TEST_F(FaultyOpening, HasEachFaultAsOftenAsItSays) {
    const auto byWords = [](const Message& a, const Message& b) { return a.english < b.english; };
    std::map<Message, std::size_t, decltype(byWords)> counts;
    std::size_t corrections = 0;
    std::size_t warnings = 0;
    for (const opening::Row& row : rows()) {
        corrections += row.correction ? 1U : 0U;
        warnings += row.warned ? 1U : 0U;
        if (row.fault) {
            ++counts[row.fault->note.message];
        }
    }
    EXPECT_EQ(counts, (decltype(counts){{message::codeLeadingZeros, 30},
                                        {message::codeDigitForLetter, 15},
                                        {message::codeUnknownNear, 20},
                                        {message::codeExponent, 5},
                                        {message::codeQuote, 5},
                                        {message::valueMissing, 30},
                                        {message::numberGrouping, 12},
                                        {message::numberPercent, 6},
                                        {message::numberNone, 23},
                                        {message::numberNegative, 4},
                                        {message::cellError, 8},
                                        {message::dateTwoReadings, 15},
                                        {message::dateSerial, 10},
                                        {message::dateNoDay, 6},
                                        {message::textCodePage, 8},
                                        {message::textLong, 7},
                                        {message::rowRepeated, 42}}));
    EXPECT_EQ(corrections, 525U);
    EXPECT_EQ(warnings, 25U);
}

TEST_F(FaultyOpening, HasEveryFaultFoundAtItsCellAndNoFigureTakenWrong) {
    EXPECT_EQ(sheet().faults, std::vector<Note>());
    ASSERT_EQ(sheet().rows.size(), rows().size());
    for (std::size_t index = 0; index < rows().size(); ++index) {
        const opening::Row& made = rows()[index];
        const importing::Row& read = sheet().rows[index];
        ASSERT_EQ(read.line, made.line);
        if (made.fault) {
            ASSERT_EQ(read.refusals.size(), 1U) << made.line;
            EXPECT_EQ(read.refusals[0].column, made.fault->column) << made.line;
            EXPECT_EQ(read.refusals[0].note, made.fault->note) << made.line;
            continue;
        }
        ASSERT_TRUE(read.refusals.empty()) << made.line << Words(read.refusals[0].note, importing::Language::english);
        EXPECT_EQ(read.values, Meant(made)) << made.line;
        EXPECT_EQ(read.warnings.size(), made.warned ? 1U : 0U) << made.line;
        ASSERT_EQ(read.corrections.size(), made.correction ? 1U : 0U) << made.line;
        if (made.correction) {
            EXPECT_EQ(read.corrections[0].column, made.correction->column) << made.line;
            EXPECT_EQ(read.corrections[0].old, made.correction->old) << made.line;
            EXPECT_EQ(read.corrections[0].now, made.correction->now) << made.line;
        }
    }
}

TEST_F(FaultyOpening, IsTheOneOfTheExamples) {
    const std::string examples = KOVRA_SOURCE_DIR "/examples/期初-5000";
    importing::Workbook made(*path_);
    importing::Workbook kept(examples + ".xlsx");
    const std::unique_ptr<importing::Table> one = made.Open(0);
    const std::unique_ptr<importing::Table> other = kept.Open(0);
    importing::Line line;
    importing::Line same;
    while (one->Next(line)) {
        ASSERT_TRUE(other->Next(same));
        ASSERT_EQ(line.number, same.number);
        ASSERT_EQ(line.cells.size(), same.cells.size()) << line.number;
        for (std::size_t column = 0; column < line.cells.size(); ++column) {
            ASSERT_EQ(line.cells[column].kind, same.cells[column].kind) << line.number;
            ASSERT_EQ(line.cells[column].text, same.cells[column].text) << line.number;
        }
    }
    EXPECT_FALSE(other->Next(same));
    EXPECT_EQ(importing::ReadBytes(examples + ".sql"), opening::AccountSql());
}

TEST_F(FaultyOpening, LeavesItsRefusedRowsAndOnceCorrectedEverythingIsInOnce) {
    const std::string refused = File("期初-5000.拒绝.xlsx");
    importing::WriteRefusedRows(OutcomeOfChecks(), importing::Language::chinese, refused);
    const importing::Sheet again = Read(refused);
    std::vector<std::string> lines;
    std::vector<std::string> faulty;
    for (const importing::Row& row : again.rows) {
        lines.push_back(row.cells.at(1).text);
    }
    for (const opening::Row& row : rows()) {
        if (row.fault) {
            faulty.push_back(std::to_string(row.line));
        }
    }
    EXPECT_EQ(lines, faulty);

    const std::string corrected = File("期初-5000.更正.xlsx");
    opening::CorrectRefused(refused, rows(), corrected);
    const importing::Sheet rest = Read(corrected);
    EXPECT_EQ(rest.faults, std::vector<Note>());
    std::multiset<std::vector<std::string>> all;
    for (const importing::Row& row : sheet().rows) {
        if (row.refusals.empty()) {
            all.insert(row.values);
        }
    }
    for (const importing::Row& row : rest.rows) {
        EXPECT_TRUE(row.refusals.empty()) << row.line << Words(row.refusals[0].note, importing::Language::english);
        all.insert(std::vector<std::string>(row.values.begin() + 2, row.values.end()));
    }
    std::multiset<std::vector<std::string>> meant;
    for (const opening::Row& row : rows()) {
        meant.insert(Meant(row));
    }
    EXPECT_EQ(all, meant);
}

} // namespace
