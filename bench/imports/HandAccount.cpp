#include "bench/imports/HandAccount.h"

#include <regex>
#include <string>

namespace bench {
namespace {

using refhost::sql::Command;
using refhost::sql::Prepare;
using refhost::sql::Quoted;
using refhost::sql::Run;

std::string ByHand(std::string definition) {
    definition = std::regex_replace(definition, std::regex("KOVRA_TEXT"), "NOCASE");
    definition = std::regex_replace(definition, std::regex(" COLLATE KOVRA_EXACT"), "");
    definition = std::regex_replace(definition, std::regex("ifnull\\((\"[^\"]*\"), ''\\)"), "$1");
    return std::regex_replace(definition, std::regex(" CONSTRAINT \"[^\"]*\" CHECK \\([^)]*\\)"), "");
}

void CopyRows(sqlite3* from, sqlite3* to, const std::string& table) {
    const auto rows = Prepare(from, "SELECT * FROM " + Quoted(table));
    const int columns = sqlite3_column_count(rows.get());
    std::string places = "?";
    for (int column = 1; column < columns; ++column) {
        places += ", ?";
    }
    const auto insert = Prepare(to, "INSERT INTO " + Quoted(table) + " VALUES (" + places + ")");
    while (sqlite3_step(rows.get()) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            sqlite3_bind_value(insert.get(), column + 1, sqlite3_column_value(rows.get(), column));
        }
        sqlite3_step(insert.get());
        sqlite3_reset(insert.get());
    }
}

} // namespace

HandAccount::HandAccount(sqlite3* account) {
    sqlite3* raw = nullptr;
    // Without SQLite's own mutexes, as the account is.
    sqlite3_open_v2(":memory:", &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    db_.reset(raw);
    Run(raw, "BEGIN");
    Command objects(account, "SELECT type, name, sql FROM sqlite_schema WHERE type IN ('table', 'index') AND "
                             "name NOT LIKE 'sqlite_%' AND name NOT LIKE 'sys:%' AND tbl_name NOT LIKE 'sys:%' AND "
                             "sql IS NOT NULL ORDER BY type DESC");
    while (objects.Step()) {
        Run(raw, ByHand(objects.Text(2)));
        if (objects.Text(0) == "table") {
            CopyRows(account, raw, objects.Text(1));
        }
    }
    Run(raw, "COMMIT");
}

} // namespace bench
