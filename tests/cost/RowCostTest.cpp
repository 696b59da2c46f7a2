// What one more row of an import costs, in counts that are the same on every machine: what 200 rows take beyond what
// 100 take, shared out. A count that grows with the rows before it, such as the steps of a search without an index,
// shows as well.

#include "bench/imports/MemoryAccount.h"
#include "bench/imports/RunImport.h"
#include "tests/cost/CountingNew.h"

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace test_cost {
namespace {

/// What a row may cost at the most.
struct Bound {
    bench::Import (*import)();
    /// Look-ups and writes that the rules prescribe for a row; exactly so many.
    int statements;
    /// Instructions of SQLite's machine.
    int steps;
    /// Allocations of C++ code.
    int allocations;
};

void PrintTo(const Bound& bound, std::ostream* out) { *out << bound.import().name; }

// Where the bounds come from.
//
// Steps of a row. A look-up whose values no row had before runs; others repeat, and are answered without. One that runs
// begins, ends, opens a table and its index, seeks and gives its row (9); of each condition the value is loaded, the
// column read, Null replaced and both compared (4); each column of the answer is read (1).
constexpr int LookUpSteps(int conditions, int columns = 1) { return 9 + 4 * conditions + columns; }
/// An insert begins, ends, opens its table, takes a row number, makes the record and puts it in (10), with each of the
/// table's columns loaded (1). Each index is opened, and its key gets the row's number, is made and put in (4), with
/// its columns copied and Null replaced (3). The identity number is read from its table and written back (18), behind
/// those of two tables at the most (3 each).
constexpr int InsertSteps(int columns, int keyColumns, int indexes) {
    return 10 + columns + 3 * keyColumns + 4 * indexes + 18 + 2 * 3;
}

// Allocations of a row. A field has none: its text is short and comes without a handle of its node.
/// Beside its text a look-up has a recordset (1) and the cells of its row (1).
constexpr int recordset = 2;
/// Every statement's text is made in one piece.
constexpr int text = 1;
constexpr int codeCheck = recordset + text;
/// The row's key is put together (3), and the outcome has handles of its element and of the document's (2); now and
/// then a document takes a further piece of memory for its nodes (1).
constexpr int outcome = 6;
/// Of a setting: its match query, its insert and its outcome.
constexpr int settingAllocations = recordset + 2 * text + outcome;

const Bound bounds[] = {
    // The item, the warehouse, two accounts and the match; of those the item and the match run. 10 columns, 3 indexes.
    {bench::InventorySettings, 6, LookUpSteps(4) + LookUpSteps(3) + InsertSteps(10, 8, 3),
     4 * codeCheck + settingAllocations},
    // The item, the category, the department, two accounts and the match; item, category and match run. 30 columns, 1
    // index.
    {bench::OppositeSettings, 7, LookUpSteps(4) + LookUpSteps(1) + LookUpSteps(7) + InsertSteps(30, 7, 1),
     5 * codeCheck + settingAllocations},
    // The class, the category, the department, four accounts and the match; category and match run.
    {bench::StandardCostSettings, 9, LookUpSteps(2) + LookUpSteps(7) + InsertSteps(30, 7, 1),
     7 * codeCheck + settingAllocations},
    // The item four times, the warehouse twice, an option twice; those of the item run. 91 columns, 2 indexes. The
    // insert's columns and values are put together apart (2).
    {bench::OpeningBalances, 9,
     LookUpSteps(4, 2) + LookUpSteps(1, 10) + LookUpSteps(1) + LookUpSteps(1) + InsertSteps(91, 2, 2),
     8 * codeCheck + 2 + text + outcome},
};

class RowCost : public testing::TestWithParam<Bound> {};

struct Cost {
    std::int64_t statements = 0;
    std::int64_t steps = 0;
    std::int64_t searched = 0;
    std::int64_t sorts = 0;
    std::int64_t allocations = 0;
    /// What each of SQLite's statements took, for people.
    std::string detail;
};

Cost CostOf(const bench::Import& import, std::size_t rows) {
    Cost cost;
    const std::string request = import.request(rows);
    const std::vector<std::string> accountRows = import.account(rows);
    {
        std::vector<std::string> statements;
        bench::MemoryAccount account;
        account.Fill(accountRows);
        RunImport(import, request, bench::MemoryAccount::connectionString, account.RecordingOpener(statements));
        cost.statements = static_cast<std::int64_t>(statements.size());
    }
    bench::MemoryAccount account;
    account.Fill(accountRows);
    // Every kept translation has its statement, whose counts begin here.
    const auto sum = [&](int counter) {
        std::int64_t total = 0;
        for (sqlite3_stmt* statement = sqlite3_next_stmt(account.database().Handle(), nullptr); statement != nullptr;
             statement = sqlite3_next_stmt(account.database().Handle(), statement)) {
            const int count = sqlite3_stmt_status(statement, counter, 1);
            total += count;
            if (count != 0) {
                cost.detail += std::to_string(count) + " steps or searches: " + sqlite3_sql(statement) + "\n";
            }
        }
        return total;
    };
    sum(SQLITE_STMTSTATUS_VM_STEP);
    sum(SQLITE_STMTSTATUS_FULLSCAN_STEP);
    cost.detail.clear();
    const std::int64_t before = Allocations();
    RunImport(import, request, bench::MemoryAccount::connectionString, account.Opener());
    cost.allocations = Allocations() - before;
    cost.steps = sum(SQLITE_STMTSTATUS_VM_STEP);
    cost.searched = sum(SQLITE_STMTSTATUS_FULLSCAN_STEP);
    cost.sorts = sum(SQLITE_STMTSTATUS_SORT);
    return cost;
}

TEST_P(RowCost, StaysWithinItsBound) {
    constexpr std::int64_t rows = 100;
    const Bound& bound = GetParam();
    const bench::Import import = bound.import();
    const Cost few = CostOf(import, rows);
    const Cost many = CostOf(import, 2 * rows);
    const auto each = [](std::int64_t more, std::int64_t less) {
        return static_cast<double>(more - less) / static_cast<double>(rows);
    };
    EXPECT_EQ(many.statements - few.statements, bound.statements * rows);
    EXPECT_LE(each(many.steps, few.steps), bound.steps) << many.detail;
    EXPECT_LE(each(many.allocations, few.allocations), bound.allocations);
    // Every row is found by a key.
    EXPECT_EQ(many.searched, few.searched) << many.detail;
    EXPECT_EQ(many.sorts, few.sorts);
    std::printf("%s: %.1f steps (bound %d), %.1f allocations (bound %d) a row\n", import.name.c_str(),
                each(many.steps, few.steps), bound.steps, each(many.allocations, few.allocations), bound.allocations);
}

INSTANTIATE_TEST_SUITE_P(Imports, RowCost, testing::ValuesIn(bounds),
                         [](const auto& parameter) { return parameter.param.import().className; });

} // namespace
} // namespace test_cost
