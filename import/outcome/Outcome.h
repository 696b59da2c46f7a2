#pragma once

#include "import/fields/Headings.h"
#include "import/messages/Note.h"
#include "import/rows/Sheet.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace importing {

/// The file that was read, so that it can be told from every other.
struct FileFacts {
    /// Its path as it was given, in UTF-8.
    std::string path;
    /// In bytes.
    std::uint64_t size = 0;
    /// SHA-256 of its bytes, 64 hexadecimal digits.
    std::string hash;
};

/// Who imports into what.
struct LoginFacts {
    /// The operator's name.
    std::string operatorName;
    std::string account;
    /// The accounting year.
    std::string year;
};

/// What became of a row.
enum class RowState {
    /// The checks have passed it; the class was not asked, since the import ended before it.
    notReached,
    /// The class would take it: the result of a test run.
    ready,
    refusedByChecks,
    refusedByClass,
    imported,
    /// The import was cut off in this row, and the ledger does not tell whether it is in.
    inDoubt,
    /// An earlier run of the same import wrote it.
    alreadyIn,
};

/// One row of the file with what became of it.
struct RowOutcome {
    /// Line, cells as they stand, values, corrections, refusals and warnings.
    Row row;
    RowState state = RowState::notReached;
    /// The class's name of the row; empty as long as it was not asked.
    std::string key;
    /// What the class said of it, in order.
    std::vector<std::string> messages;
    /// The ledger account that the item's stock stands on, by the account's settings; empty where none is set.
    std::string account;
};

/// The class's refusal of everything.
struct RequestRefusal {
    std::string code;
    std::string message;
};

/// Everything that one run of the import tells: of its file, of each row, and of its end.
struct Outcome {
    FileFacts file;
    LoginFacts login;
    const ClassFields* classFields = nullptr;
    Columns columns;
    /// The line of the headings.
    std::size_t headerLine = 0;
    /// Hidden rows that were left out or taken.
    std::size_t hiddenRows = 0;
    /// Why nothing of the file may be imported.
    std::vector<Note> faults;
    /// What people should know of the run as a whole: a file or a ledger that has changed since the test run, say.
    std::vector<Note> remarks;
    std::vector<RowOutcome> rows;
    /// Imported in earnest; a test run otherwise.
    bool committed = false;
    /// When the run began, "YYYY-MM-DD hh:mm:ss" by the local clock.
    std::string time;
    /// Its number in the import log; 0 as long as it has none.
    std::int64_t number = 0;
    /// Why the class takes nothing at all; nothing when it was asked row by row.
    std::optional<RequestRefusal> refused;
    /// Stopped by the user.
    bool interrupted = false;
    /// Names of the warehouses and ledger accounts by code, as far as they are known.
    std::map<std::string, std::string, std::less<>> warehouseNames;
    std::map<std::string, std::string, std::less<>> accountNames;
};

/// Whether the row is in the ledger, or would be after a run in earnest.
constexpr bool IsTaken(RowState state) {
    return state == RowState::ready || state == RowState::imported || state == RowState::alreadyIn;
}

/// Whether the checks or the class refuse the row.
constexpr bool IsRefused(RowState state) {
    return state == RowState::refusedByChecks || state == RowState::refusedByClass;
}

/// How many rows are in `state`.
std::size_t CountOf(const Outcome& outcome, RowState state);

/// The value of a row in the column of `element`; empty where the file has no such column.
const std::string& ValueOf(const Outcome& outcome, const Row& row, std::string_view element);

} // namespace importing
