#pragma once

#include "host/Error.h"
#include "refhost/sql/types/Convert.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <sqlite3.h>

namespace refhost::sql {

struct CloseDatabase {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// Prepares SQLite's own SQL. Throws `SqliteError` when that fails.
StatementHandle Prepare(sqlite3* db, std::string_view text);
/// Runs SQLite's own SQL without reading an answer. Throws likewise.
void Run(sqlite3* db, const std::string& text);
/// Runs a prepared statement that has no answer, and resets it. Throws likewise.
void Run(sqlite3* db, sqlite3_stmt* statement);
/// The server's number for a file that is damaged.
inline constexpr int damagedFile = 824;
/// What SQLite's latest error is to SQL Server, or, for what SQL Server does not know, to this database; never a text
/// of SQLite's own. Throws std::bad_alloc where memory did not suffice.
host::Error SqliteError(sqlite3* db);
/// Throws it.
[[noreturn]] void FailSqlite(sqlite3* db);

/// SQLite's SQL of a statement that writes nothing to a database, but takes the right to write to it.
std::string LockText(std::string_view schemaName);
/// Opens a transaction by `begin` and takes the right to write to the database of `lock`, a statement of `LockText`: a
/// transaction that found out later that another writes could not go on. Another database is locked when a statement
/// writes to it, so that accounts which share a system database do not wait for each other. Throws like `Run`.
void BeginWriting(sqlite3* db, sqlite3_stmt* begin, sqlite3_stmt* lock);

/// A small statement of the engine's own, used once: bind in order, step, read.
class Command {
public:
    Command(sqlite3* db, std::string_view text) : db_(db), statement_(Prepare(db, text)) {}

    Command& Bind(std::string_view text);
    Command& Bind(std::int64_t value);
    /// Whether there is a (further) row.
    bool Step();
    std::int64_t Integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
    bool IsNull(int column) const { return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL; }
    std::string Text(int column) const;

private:
    sqlite3* db_;
    StatementHandle statement_;
    int bound_ = 0;
};

/// The current row's value in a column; its bytes live until the next step.
Cell ReadCell(sqlite3_stmt* statement, int column);
/// A name as SQLite's SQL quotes it.
std::string Quoted(std::string_view name);
/// A value as SQLite's SQL spells it.
std::string Spelled(const Cell& cell);

} // namespace refhost::sql
