#include "import/log/ImportLog.h"

namespace importing {
namespace {

using sqlite::Statement;
using sqlite::Transaction;

// The states' numbers stand in files; they stay.
constexpr const char* logTables = "CREATE TABLE IF NOT EXISTS imports (number INTEGER PRIMARY KEY AUTOINCREMENT, "
                                  "time TEXT NOT NULL, class TEXT NOT NULL, account TEXT NOT NULL, file TEXT NOT NULL, "
                                  "hash TEXT NOT NULL, operator TEXT NOT NULL, test_run INTEGER NOT NULL, "
                                  "fingerprint TEXT NOT NULL, baseline INTEGER NOT NULL, state INTEGER NOT NULL, "
                                  "taken INTEGER NOT NULL, refused INTEGER NOT NULL, quantity REAL NOT NULL, "
                                  "amount REAL NOT NULL);"
                                  "CREATE TABLE IF NOT EXISTS units (import INTEGER NOT NULL REFERENCES imports, "
                                  "line INTEGER NOT NULL, hash TEXT NOT NULL, match TEXT NOT NULL, "
                                  "state INTEGER NOT NULL, id INTEGER, content TEXT NOT NULL DEFAULT '', "
                                  "PRIMARY KEY (import, hash)) WITHOUT ROWID;";

constexpr const char* importColumns = "SELECT number, time, class, account, file, hash, operator, test_run, "
                                      "fingerprint, baseline, state, taken, refused, quantity, amount FROM imports ";

std::int64_t Number(LoggedImport::State state) { return static_cast<std::int64_t>(state); }
std::int64_t Number(LoggedUnit::State state) { return static_cast<std::int64_t>(state); }

LoggedImport ReadImport(const Statement& row) {
    return {.number = row.Integer(0),
            .time = row.Text(1),
            .className = row.Text(2),
            .account = row.Text(3),
            .file = row.Text(4),
            .hash = row.Text(5),
            .operatorName = row.Text(6),
            .testRun = row.Integer(7) != 0,
            .fingerprint = row.Text(8),
            .baseline = row.Integer(9),
            .state = static_cast<LoggedImport::State>(row.Integer(10)),
            .taken = row.Integer(11),
            .refused = row.Integer(12),
            .quantity = row.Real(13),
            .amount = row.Real(14)};
}

} // namespace

ImportLog::ImportLog(const std::string& path) : database_(path) {
    try {
        // Held from the first access on; a killed process lets go of it.
        database_.Run("PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
        Transaction transaction(database_);
        database_.Run(logTables);
        transaction.Commit();
    } catch (const sqlite::Error& error) {
        if (error.code() == SQLITE_BUSY || error.code() == SQLITE_LOCKED) {
            throw LogBusy(path);
        }
        throw;
    }
}

std::int64_t ImportLog::Add(const LoggedImport& import) {
    Statement(database_, "INSERT INTO imports (time, class, account, file, hash, operator, test_run, fingerprint, "
                         "baseline, state, taken, refused, quantity, amount) VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?)")
        .Bind(import.time)
        .Bind(import.className)
        .Bind(import.account)
        .Bind(import.file)
        .Bind(import.hash)
        .Bind(import.operatorName)
        .Bind(std::int64_t{import.testRun})
        .Bind(import.fingerprint)
        .Bind(import.baseline)
        .Bind(Number(import.state))
        .Bind(import.taken)
        .Bind(import.refused)
        .Bind(import.quantity)
        .Bind(import.amount)
        .Run();
    return sqlite3_last_insert_rowid(database_.get());
}

void ImportLog::Resume(std::int64_t number) {
    Statement(database_, "UPDATE imports SET state = ? WHERE number = ?")
        .Bind(Number(LoggedImport::State::running))
        .Bind(number)
        .Run();
}

void ImportLog::End(const LoggedImport& import) {
    Statement(database_, "UPDATE imports SET state = ?, taken = ?, refused = ?, quantity = ?, amount = ? "
                         "WHERE number = ?")
        .Bind(Number(import.state))
        .Bind(import.taken)
        .Bind(import.refused)
        .Bind(import.quantity)
        .Bind(import.amount)
        .Bind(import.number)
        .Run();
}

void ImportLog::NoteBegun(std::int64_t number, const std::vector<LoggedUnit>& units) {
    // What the ledger gets must not outlive a power failure that the note does not.
    database_.Run("PRAGMA synchronous = FULL");
    Transaction transaction(database_);
    Statement insert(database_, "INSERT OR REPLACE INTO units (import, line, hash, match, state) VALUES (?,?,?,?,?)");
    for (const LoggedUnit& unit : units) {
        insert.Bind(number)
            .Bind(unit.line)
            .Bind(unit.hash)
            .Bind(unit.match)
            .Bind(Number(LoggedUnit::State::begun))
            .Run();
    }
    transaction.Commit();
    database_.Run("PRAGMA synchronous = NORMAL");
}

void ImportLog::NoteState(std::int64_t number, const std::string& hash, LoggedUnit::State state) {
    if (!noteState_) {
        noteState_.emplace(database_, "UPDATE units SET state = ? WHERE import = ? AND hash = ?");
    }
    noteState_->Bind(Number(state)).Bind(number).Bind(hash).Run();
}

void ImportLog::NoteRecords(std::int64_t number, const std::vector<LoggedUnit>& units) {
    Transaction transaction(database_);
    Statement update(database_, "UPDATE units SET state = ?, id = ?, content = ? WHERE import = ? AND hash = ?");
    for (const LoggedUnit& unit : units) {
        update.Bind(Number(unit.state));
        unit.id ? update.Bind(*unit.id) : update.BindNull();
        update.Bind(unit.content).Bind(number).Bind(unit.hash).Run();
    }
    transaction.Commit();
}

void ImportLog::NoteUndone(std::int64_t number) {
    Statement(database_, "UPDATE imports SET state = ? WHERE number = ?")
        .Bind(Number(LoggedImport::State::undone))
        .Bind(number)
        .Run();
}

std::vector<LoggedImport> ImportLog::Imports() { return Select("ORDER BY number DESC", {}); }

std::optional<LoggedImport> ImportLog::Find(std::int64_t number) {
    const std::vector<LoggedImport> found = Select("WHERE number = CAST(? AS INTEGER)", {std::to_string(number)});
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::vector<LoggedImport> ImportLog::Unfinished(const std::string& account, const std::string& className) {
    return Select("WHERE account = ? AND class = ? AND state = 0 AND NOT test_run ORDER BY number",
                  {account, className});
}

std::optional<LoggedImport> ImportLog::LatestTestRun(const std::string& account, const std::string& className,
                                                     const std::string& file) {
    const std::vector<LoggedImport> found =
        Select("WHERE account = ? AND class = ? AND file = ? ORDER BY number DESC LIMIT 1", {account, className, file});
    return found.empty() || !found.front().testRun ? std::nullopt : std::optional(found.front());
}

std::optional<LoggedImport> ImportLog::LatestOf(const std::string& account, const std::string& className,
                                                const std::string& hash) {
    const std::vector<LoggedImport> found = Select("WHERE account = ? AND class = ? AND hash = ? AND state <> 2 AND "
                                                   "NOT test_run ORDER BY number DESC LIMIT 1",
                                                   {account, className, hash});
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::vector<LoggedUnit> ImportLog::Units(std::int64_t number) {
    Statement select(database_,
                     "SELECT line, hash, match, state, id, content FROM units WHERE import = ? ORDER BY line, hash");
    select.Bind(number);
    std::vector<LoggedUnit> units;
    while (select.Step()) {
        units.push_back({.line = select.Integer(0),
                         .hash = select.Text(1),
                         .match = select.Text(2),
                         .state = static_cast<LoggedUnit::State>(select.Integer(3)),
                         .id = select.IsNull(4) ? std::nullopt : std::optional(select.Integer(4)),
                         .content = select.Text(5)});
    }
    return units;
}

std::multimap<std::string, ImportLog::KnownUnit, std::less<>> ImportLog::Known(const std::string& account,
                                                                               const std::string& className) {
    Statement select(database_, "SELECT u.hash, u.import, i.hash, u.id FROM units u JOIN imports i ON i.number = "
                                "u.import WHERE i.account = ? AND i.class = ? AND i.state <> 2 AND u.state = 1 AND "
                                "u.id IS NOT NULL");
    select.Bind(account).Bind(className);
    std::multimap<std::string, KnownUnit, std::less<>> known;
    while (select.Step()) {
        known.emplace(select.Text(0), KnownUnit{select.Integer(1), select.Text(2), select.Integer(3)});
    }
    return known;
}

std::vector<LoggedImport> ImportLog::Select(const std::string& condition, const std::vector<std::string>& values) {
    Statement select(database_, importColumns + condition);
    for (const std::string& value : values) {
        select.Bind(value);
    }
    std::vector<LoggedImport> imports;
    while (select.Step()) {
        imports.push_back(ReadImport(select));
    }
    return imports;
}

} // namespace importing
