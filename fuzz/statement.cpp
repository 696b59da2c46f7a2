// Any text as a statement of the embedded account database.
#include "fuzz/Account.h"
#include "fuzz/Require.h"
#include "host/Error.h"
#include "refhost/sql/syntax/Parser.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include <sqlite3.h>

namespace {

enum class Kind { query, write, other };

/// What a text is that the database took. Conditions and BEGIN … END hold several statements, and a text without one
/// may have one behind it: they are `other`.
Kind KindOf(std::string_view sql) {
    const auto statement = refhost::sql::Parser(sql, {.deleteStar = true}).ParseBatch();
    if (!statement) {
        return Kind::other;
    }
    if (const refhost::sql::Select* select = statement->Query()) {
        return select->into ? Kind::write : Kind::query;
    }
    const bool writes = statement->As<refhost::sql::Insert>() != nullptr ||
                        statement->As<refhost::sql::Update>() != nullptr ||
                        statement->As<refhost::sql::Delete>() != nullptr;
    return writes ? Kind::write : Kind::other;
}

/// Runs a text in a transaction that is taken back; whether the database took it.
bool Run(fuzz::Account& account, std::string_view sql) {
    account.Begin();
    account.database().BeginTrans();
    bool taken = false;
    try {
        const refhost::ResultSet answer = account.database().Query(sql);
        const std::size_t columns = answer.fields ? answer.fields->size() : 0;
        fuzz::Require(answer.cells.size() == columns * answer.rowCount, "an answer lacks cells", sql);
        taken = true;
    } catch (const host::Error& error) {
        fuzz::Require(error.number() != 0, "an error without number", sql);
        fuzz::Require(!error.description().empty(), "an error without description", sql);
    }
    try {
        account.database().RollbackTrans();
    } catch (const host::Error&) {
        // The text ended the transaction itself.
    }
    fuzz::Require(sqlite3_get_autocommit(account.database().Handle()) != 0, "a transaction is left open", sql);
    return taken;
}

/// However a statement ends, what is put behind it never runs.
void CheckSmuggling(fuzz::Account& account, std::string_view sql) {
    // With a condition: SQLite tells nobody of the rows when it empties a whole table.
    constexpr std::string_view second = "DELETE FROM code WHERE bend = 1";
    for (const std::string_view between : {"\n; ", "\n ", "\n'; ", "\n]; ", "\n*/ "}) {
        const std::string both = std::string(sql).append(between).append(second).append(" --");
        Run(account, both);
        fuzz::Require(!account.changes().contains("DELETE code"), "a second statement ran", both);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::Account account;
    const std::string_view sql(reinterpret_cast<const char*>(data), size);
    if (!Run(account, sql)) {
        fuzz::Require(account.changes().size() <= 1, "two statements ran", sql);
        return 0;
    }
    const std::set<std::string> changes = account.changes();
    // One batch is one statement: it writes to one table in one way.
    fuzz::Require(changes.size() <= 1, "two statements ran", sql);
    const Kind kind = KindOf(sql);
    fuzz::Require(kind != Kind::query || changes.empty(), "a query wrote", sql);
    if (kind != Kind::other && !changes.contains("DELETE code")) {
        CheckSmuggling(account, sql);
    }
    return 0;
}
