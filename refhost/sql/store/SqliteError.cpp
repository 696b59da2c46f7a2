// What SQLite reports, in SQL Server's words: nobody who reads a result shall have to know what the database stands on.
#include "refhost/sql/store/Sqlite.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>
#include <new>

namespace refhost::sql {
namespace {

using host::error_number::unspecified;

/// A statement that SQLite does not compile, and what the server says of it or this database of itself.
struct Refusal {
    /// What SQLite's message holds.
    std::string_view sign;
    host::Error (*error)();
};

constexpr std::array refusals{
    Refusal{"integer overflow",
            [] { return ErrorOf(8115, "Arithmetic overflow error converting expression to data type int."); }},
    Refusal{"parser stack overflow",
            [] {
                return ErrorOf(191,
                               "Some part of your SQL statement is nested too deeply. Rewrite the query or break it "
                               "up into smaller queries.");
            }},
    Refusal{"maximum depth",
            [] {
                return ErrorOf(191,
                               "Some part of your SQL statement is nested too deeply. Rewrite the query or break it "
                               "up into smaller queries.");
            }},
    Refusal{"misuse of aggregate",
            [] {
                return ErrorOf(147,
                               "An aggregate may not appear in the WHERE clause unless it is in a subquery contained "
                               "in a HAVING clause or a select list, and the column being aggregated is an outer "
                               "reference.");
            }},
    Refusal{"misuse of window function",
            [] { return ErrorOf(4108, "Windowed functions can only appear in the SELECT or ORDER BY clauses."); }},
    Refusal{"too many terms in compound SELECT",
            [] {
                return host::Error(
                    unspecified, "The embedded account database joins at most 500 queries by UNION, and takes at most "
                                 "500 rows of a VALUES clause. Split the statement.");
            }},
    Refusal{
        "tables in a join",
        [] { return host::Error(unspecified, "The embedded account database joins at most 64 tables in one query."); }},
    Refusal{"too many SQL variables",
            [] {
                return host::Error(
                    unspecified,
                    "The embedded account database takes at most 32766 values in one statement. Split it.");
            }},
    Refusal{"too many columns",
            [] {
                return host::Error(unspecified,
                                   "The embedded account database takes at most 2000 columns in one table or query.");
            }},
    Refusal{"non-deterministic",
            [] {
                return host::Error(unspecified,
                                   "The embedded account database takes nothing of the session in computed columns and "
                                   "checks.");
            }},
    Refusal{"too many arguments on function",
            [] {
                return host::Error(unspecified,
                                   "The embedded account database takes at most 127 arguments of a function.");
            }},
};

host::Error RefusalOf(std::string_view message) {
    constexpr std::string_view missing = "no such table: ";
    if (message.starts_with(missing)) {
        // A view whose table is gone.
        std::string_view name = message.substr(missing.size());
        name.remove_prefix(name.starts_with("main.") ? std::string_view("main.").size() : 0);
        return ErrorOf(208, "Invalid object name '{}'.", name);
    }
    const auto refusal = std::ranges::find_if(
        refusals, [&](const Refusal& each) { return message.find(each.sign) != std::string_view::npos; });
    if (refusal != refusals.end()) {
        return refusal->error();
    }
    return {unspecified, "The embedded account database does not take this statement."};
}

} // namespace

host::Error SqliteError(sqlite3* db) {
    const int code = sqlite3_extended_errcode(db);
    switch (code & 0xff) {
    case SQLITE_NOMEM:
        throw std::bad_alloc();
    case SQLITE_INTERRUPT:
        return {timeExpired, "Query timeout expired"};
    case SQLITE_BUSY:
        if (code == SQLITE_BUSY_SNAPSHOT) {
            // What the transaction has read of a database was changed before it wrote there.
            return ErrorOf(1205, "Transaction (Process ID 0) was deadlocked on lock resources with another process and "
                                 "has been chosen as the deadlock victim. Rerun the transaction.");
        }
        return ErrorOf(1222, "Lock request time out period exceeded.");
    case SQLITE_LOCKED:
        return ErrorOf(1222, "Lock request time out period exceeded.");
    case SQLITE_FULL:
        return ErrorOf(1105, "Could not allocate space for the account database because the disk is full.");
    case SQLITE_READONLY:
        return ErrorOf(3906, "Failed to update the account database because the database is read-only.");
    case SQLITE_IOERR:
        return {unspecified, "The operating system reported an error while the account database was read or written."};
    case SQLITE_CORRUPT:
        return ErrorOf(damagedFile, "The file of the account database is damaged. Restore it from a backup.");
    case SQLITE_NOTADB:
        return {unspecified, "The file is not an account database."};
    case SQLITE_CANTOPEN:
        return {unspecified, "The file of the account database cannot be opened."};
    case SQLITE_TOOBIG:
        return {unspecified, "A value is too long for the database."};
    default:
        return RefusalOf(sqlite3_errmsg(db));
    }
}

void FailSqlite(sqlite3* db) { throw host::Error(SqliteError(db)); }

} // namespace refhost::sql
