#pragma once

#include "import/log/Sqlite.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace importing {

/// Another import is at work with the log.
class LogBusy : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What one import says of itself in the log.
struct LoggedImport {
    enum class State {
        /// Rows are being written, or were when the program was killed.
        running,
        ended,
        undone,
    };

    std::int64_t number = 0;
    /// "YYYY-MM-DD hh:mm:ss".
    std::string time;
    std::string className;
    /// `Account::Identity`.
    std::string account;
    std::string file;
    std::string hash;
    std::string operatorName;
    bool testRun = false;
    /// The hash of what was read of the account before.
    std::string fingerprint;
    /// The highest identity number in the ledger's table before.
    std::int64_t baseline = 0;
    State state = State::running;
    /// Rows in at the end, their sums, and rows refused; by the latest run.
    std::int64_t taken = 0;
    std::int64_t refused = 0;
    double quantity = 0;
    double amount = 0;
};

/// What the log knows of a unit (a row, or a document) of an import.
struct LoggedUnit {
    enum class State {
        /// Handed to the class; what came of it was not noted.
        begun,
        imported,
        /// Refused, or found not to be in.
        notIn,
    };

    /// Its first line in the file.
    std::int64_t line = 0;
    /// The hash of its values, apart from equal units of the file.
    std::string hash;
    /// By which its record is found in the ledger, see `Ledger`.
    std::string match;
    State state = State::begun;
    /// The identity number of its record; nothing as long as it is not known.
    std::optional<std::int64_t> id = {};
    /// The hash of its record as it was written.
    std::string content = {};
};

/// The import log of a login, a file of its own: what was imported, from which file, by whom, and which records it
/// wrote. Units are noted before they are handed to the class, durably, and after; so an import that was killed can
/// be continued. While it is open, no other import can open it.
/// Every member throws sqlite::Error.
class ImportLog {
public:
    /// Opens `path` (UTF-8), and creates it unless it is there. Throws LogBusy too.
    explicit ImportLog(const std::string& path);

    /// Notes an import and gives it its number.
    std::int64_t Add(const LoggedImport& import);
    /// Goes on with one that is not at its end, or was.
    void Resume(std::int64_t number);
    /// Notes the end, with the counts and sums of `import`.
    void End(const LoggedImport& import);

    /// Notes units before they are handed to the class, and waits until that is on disk.
    void NoteBegun(std::int64_t number, const std::vector<LoggedUnit>& units);
    /// Notes what came of one.
    void NoteState(std::int64_t number, const std::string& hash, LoggedUnit::State state);
    /// Notes the records of units that are in.
    void NoteRecords(std::int64_t number, const std::vector<LoggedUnit>& units);
    void NoteUndone(std::int64_t number);

    /// All imports, the latest first.
    std::vector<LoggedImport> Imports();
    std::optional<LoggedImport> Find(std::int64_t number);
    /// Imports into the account that were cut off, in order.
    std::vector<LoggedImport> Unfinished(const std::string& account, const std::string& className);
    /// The latest test run of the file at `file` (by its path).
    std::optional<LoggedImport> LatestTestRun(const std::string& account, const std::string& className,
                                              const std::string& file);
    /// The latest import of a file with this hash that was not undone.
    std::optional<LoggedImport> LatestOf(const std::string& account, const std::string& className,
                                         const std::string& hash);
    /// The units of an import, in order of their lines.
    std::vector<LoggedUnit> Units(std::int64_t number);

    struct KnownUnit {
        std::int64_t import = 0;
        /// The hash of the file it came in.
        std::string file;
        std::int64_t id = 0;
    };
    /// What was imported into the account and not undone, by the hashes of the units; those whose record is known.
    std::multimap<std::string, KnownUnit, std::less<>> Known(const std::string& account, const std::string& className);

private:
    std::vector<LoggedImport> Select(const std::string& condition, const std::vector<std::string>& values);

    sqlite::Database database_;
    std::optional<sqlite::Statement> noteState_;
};

} // namespace importing
