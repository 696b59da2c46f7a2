#pragma once

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

/// Prepares SQLite's own SQL. Throws `host::Error` "unspecified" with SQLite's text when that fails.
StatementHandle Prepare(sqlite3* db, std::string_view text);
/// Runs SQLite's own SQL without reading an answer. Throws likewise.
void Run(sqlite3* db, const std::string& text);
/// Throws `host::Error` "unspecified" with SQLite's latest message; std::bad_alloc where memory did not suffice.
[[noreturn]] void FailSqlite(sqlite3* db);

/// A small statement of the engine's own, used once: bind in order, step, read.
class Command {
public:
    Command(sqlite3* db, std::string_view text) : db_(db), statement_(Prepare(db, text)) {}

    Command& Bind(std::string_view text);
    Command& Bind(std::int64_t value);
    /// Whether there is a (further) row.
    bool Step();
    std::int64_t Integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
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
