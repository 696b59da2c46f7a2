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
// Steps. A look-up by a key opens a table and its index (4), seeks (3), fetches and compares what its condition names
// beside the key (2 each, at most three), gives its row (3), begins and ends (4). An insert loads each of the table's
// columns (1), makes each index's key (2 a column of it, 4 an index), and beside that takes an identity number out of
// its table, keeps it within its type, makes the record and puts it in (25).
//
// Allocations. A statement has its text (3: the buffer begins with the first piece and doubles, to eight times that at
// the most), a recordset (1) and the cells of its row (1). A field has none: its text is short and comes without a
// handle of its node. An outcome has the row's key (3) and the handles of its element (3); now and then a document
// takes a further piece of memory for its nodes (1). A row whose children are gone through has a handle for each, and
// their list doubles to 16 (5).
constexpr int lookUpSteps = 20;
constexpr int statementAllocations = 5;
constexpr int outcomeAllocations = 7;
constexpr int listAllocations = 5;

constexpr int AllocationsOf(int statements) { return statements * statementAllocations + outcomeAllocations; }
/// @param columns of the table
constexpr int InsertSteps(int columns, int indexColumns, int indexes) {
    return columns + 2 * indexColumns + 4 * indexes + 25;
}

const Bound bounds[] = {
    // The item, the warehouse, two accounts and the setting; 10 columns, 3 indexes.
    {bench::InventorySettings, 6, 5 * lookUpSteps + InsertSteps(10, 8, 3), AllocationsOf(6)},
    // The item, the category, the department, two accounts and the setting; 30 columns, 1 index.
    {bench::OppositeSettings, 7, 6 * lookUpSteps + InsertSteps(30, 7, 1), AllocationsOf(7)},
    // The class, the category, the department, four accounts and the setting.
    {bench::StandardCostSettings, 9, 8 * lookUpSteps + InsertSteps(30, 7, 1), AllocationsOf(9)},
    // The item four times, the warehouse twice, an option twice; 91 columns, 2 indexes; nine children are gone through.
    {bench::OpeningBalances, 9, 8 * lookUpSteps + InsertSteps(91, 2, 2), AllocationsOf(9) + 9 + listAllocations},
};

class RowCost : public testing::TestWithParam<Bound> {};

struct Cost {
    std::int64_t statements = 0;
    std::int64_t steps = 0;
    std::int64_t searched = 0;
    std::int64_t sorts = 0;
    std::int64_t allocations = 0;
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
            total += sqlite3_stmt_status(statement, counter, 1);
        }
        return total;
    };
    sum(SQLITE_STMTSTATUS_VM_STEP);
    sum(SQLITE_STMTSTATUS_FULLSCAN_STEP);
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
    EXPECT_LE(each(many.steps, few.steps), bound.steps);
    EXPECT_LE(each(many.allocations, few.allocations), bound.allocations);
    // Every row is found by a key.
    EXPECT_EQ(many.searched, few.searched);
    EXPECT_EQ(many.sorts, few.sorts);
    std::printf("%s: %.1f steps (bound %d), %.1f allocations (bound %d) a row\n", import.name.c_str(),
                each(many.steps, few.steps), bound.steps, each(many.allocations, few.allocations), bound.allocations);
}

INSTANTIATE_TEST_SUITE_P(Imports, RowCost, testing::ValuesIn(bounds),
                         [](const auto& parameter) { return parameter.param.import().className; });

} // namespace
} // namespace test_cost
