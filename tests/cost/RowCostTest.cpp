// What one more row of an import costs, in counts that are the same on every machine: what 200 rows take beyond what
// 100 take, shared out. A count that grows with the rows before it, such as the steps of a search without an index,
// shows as well.

#include "bench/imports/MemoryAccount.h"
#include "bench/imports/RunImport.h"
#include "tests/cost/CountingNew.h"

#include <map>
#include <ostream>
#include <string>
#include <string_view>
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
    /// Instructions for each row before it that a row is looked for among; 0 where it is found by a key.
    int stepsOfEarlier = 0;
    /// How often the rows are gone through one after another besides.
    int searches = 0;
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
/// The look-ups of a row share a recordset (1), which holds an answer of 15 bytes; a longer one takes one more.
constexpr int recordset = 1;
constexpr int longAnswer = 1;
/// Every statement's text is made in one piece, and those of a row's look-ups in the same.
constexpr int text = 1;
constexpr int lookUps = recordset + text;
/// The row's key is put together (4 at the most), and the outcome has handles of its element and of the document's (2);
/// now and then a document takes a further piece of memory for its nodes (1).
constexpr int outcome = 7;
/// Of a setting: the look-ups of its check, its match query, its insert and its outcome.
constexpr int settingAllocations = lookUps + recordset + 2 * text + outcome;

// Worked out for nobody: what documents take besides their look-ups stands here as it was, so that it does not grow. Of
// a provision the two templates are copied, filled, saved and read; of a price voucher few statements save and post all
// entries, and its records are read and become a document.
constexpr int allocationsOfProvision = 168;
constexpr int allocationsOfSavedEntry = 118;
constexpr int stepsOfSavedEntry = 1010;

const Bound bounds[] = {
    // The item, the warehouse, two accounts and the match; of those the item and the match run. 10 columns, 3 indexes.
    {bench::InventorySettings, 6, LookUpSteps(4) + LookUpSteps(3) + InsertSteps(10, 8, 3), settingAllocations},
    // The item, the category, the department, two accounts and the match; item, category and match run. 30 columns, 1
    // index.
    {bench::OppositeSettings, 7, LookUpSteps(4) + LookUpSteps(1) + LookUpSteps(7) + InsertSteps(30, 7, 1),
     settingAllocations},
    // The class, the category, the department, four accounts and the match; category and match run.
    {bench::StandardCostSettings, 9, LookUpSteps(2) + LookUpSteps(7) + InsertSteps(30, 7, 1), settingAllocations},
    // The item four times, the warehouse twice, an option twice, each time with a recordset and a text of its own; the
    // look-ups of the item run. 91 columns, 2 indexes. The insert's values are put together apart (1). The ten free
    // items, the names of two methods and of two options are long.
    {bench::OpeningBalances, 9,
     LookUpSteps(4, 2) + LookUpSteps(1, 10) + LookUpSteps(1) + LookUpSteps(1) + InsertSteps(91, 2, 2),
     3 * lookUps + 5 * longAnswer + 1 + text + outcome},
    // A document of three entries: its code, two templates without rows, its type's template, the month, the beginning,
    // of each entry the stock and the budget, the next number, the head, the entries, the end. The code and the next
    // number run, which is the greatest with one added (8 more); the others that read repeat. 40 columns an entry and
    // 30 of the head, 1 index each. To begin, to take the right to write and to end takes 13.
    {bench::Provisions, 18,
     LookUpSteps(1) + 2 * LookUpSteps(0) + LookUpSteps(0) + 8 + InsertSteps(30, 1, 1) + 3 * InsertSteps(40, 1, 1) + 13,
     allocationsOfProvision},
    // An entry of a document that is saved and posted: the search among those staged, the period, its dates, the latest
    // date, the item, the option, the item's method, the option, the planned price, the closing, the standard-cost
    // option,
    // the insert. The search takes 6 for each that it passes: of its item Null is replaced, and it is compared twice.
    // Twice all entries are gone through to be saved.
    {bench::PriceVouchers, 12, stepsOfSavedEntry, allocationsOfSavedEntry, 6, 2},
};

class RowCost : public testing::TestWithParam<Bound> {};

/// What SQLite did for statements.
struct Runs {
    std::int64_t steps = 0;
    /// Rows of tables that were gone through one after another.
    std::int64_t searched = 0;
    std::int64_t sorts = 0;
    /// The steps of each statement, for people.
    std::map<std::string, std::int64_t> stepsOf;
};

/// Adds up what each run of a statement took, while it lives.
class Watched {
public:
    explicit Watched(sqlite3* database) : database_(database) {
        sqlite3_trace_v2(database_, SQLITE_TRACE_PROFILE, &Watched::Ended, &runs);
    }
    ~Watched() { sqlite3_trace_v2(database_, 0, nullptr, nullptr); }
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;

    /// What a statement did since this was asked before.
    static Runs Take(sqlite3_stmt* statement) {
        const auto take = [&](int counter) { return sqlite3_stmt_status(statement, counter, 1); };
        return {
            take(SQLITE_STMTSTATUS_VM_STEP), take(SQLITE_STMTSTATUS_FULLSCAN_STEP), take(SQLITE_STMTSTATUS_SORT), {}};
    }

    Runs runs;

private:
    static int Ended(unsigned, void* context, void* statement, void*) {
        Runs& runs = *static_cast<Runs*>(context);
        auto* const ended = static_cast<sqlite3_stmt*>(statement);
        const Runs run = Take(ended);
        runs.steps += run.steps;
        runs.searched += run.searched;
        runs.sorts += run.sorts;
        runs.stepsOf[sqlite3_sql(ended)] += run.steps;
        return 0;
    }
    sqlite3* database_;
};

struct Cost {
    std::int64_t statements = 0;
    Runs runs;
    std::int64_t allocations = 0;
};

Cost CostOf(const bench::Import& import, std::size_t rows) {
    Cost cost;
    const std::string request = import.request(rows);
    const std::vector<std::string> accountRows = import.account(rows);
    {
        bench::MemoryAccount account;
        account.Fill(accountRows);
        RunImport(import, request, bench::MemoryAccount::connectionString,
                  account.RecordingOpener([&](std::string_view) { ++cost.statements; }));
    }
    bench::MemoryAccount account;
    account.Fill(accountRows);
    {
        // Statements that are kept begin their counts here.
        const Watched watched(account.database().Handle());
        for (sqlite3_stmt* statement = sqlite3_next_stmt(account.database().Handle(), nullptr); statement != nullptr;
             statement = sqlite3_next_stmt(account.database().Handle(), statement)) {
            Watched::Take(statement);
        }
        RunImport(import, request, bench::MemoryAccount::connectionString, account.Opener());
        cost.runs = watched.runs;
    }
    {
        bench::MemoryAccount other;
        other.Fill(accountRows);
        const std::int64_t before = Allocations();
        RunImport(import, request, bench::MemoryAccount::connectionString, other.Opener());
        cost.allocations = Allocations() - before;
    }
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
    // Those before each of the further rows.
    constexpr std::int64_t earlier = rows * (3 * rows - 1) / 2;
    const std::int64_t amongEarlier = bound.stepsOfEarlier * earlier;
    EXPECT_LE(each(many.runs.steps - amongEarlier, few.runs.steps), bound.steps)
        << testing::PrintToString(many.runs.stepsOf);
    EXPECT_LE(each(many.allocations, few.allocations), bound.allocations);
    // Every other row is found by a key.
    const std::int64_t searched = bound.searches * rows + (bound.stepsOfEarlier == 0 ? 0 : earlier);
    EXPECT_EQ(many.runs.searched - few.runs.searched, searched) << testing::PrintToString(many.runs.stepsOf);
    EXPECT_EQ(many.runs.sorts, few.runs.sorts);
    std::printf("%s: %.1f steps (bound %d), %.1f allocations (bound %d) a row\n", import.name.c_str(),
                each(many.runs.steps - amongEarlier, few.runs.steps), bound.steps,
                each(many.allocations, few.allocations), bound.allocations);
}

INSTANTIATE_TEST_SUITE_P(Imports, RowCost, testing::ValuesIn(bounds),
                         [](const auto& parameter) { return parameter.param.import().className; });

} // namespace
} // namespace test_cost
