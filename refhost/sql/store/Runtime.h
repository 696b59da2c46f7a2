#pragma once

#include "host/Error.h"
#include "refhost/sql/store/Sqlite.h"
#include "refhost/sql/syntax/Variables.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace refhost::sql {

/// The databases of a connection: the account and the system database.
enum class Schema : std::uint8_t {
    account = 0,
    system = 1,
    temporary = 2, ///< tables whose names begin with #, which live and end with the session
};
inline constexpr std::size_t schemaCount = 3;
/// The schema's name in SQLite.
std::string_view SqliteName(Schema schema);

/// What a connection's session knows while statements run, and the counters of its databases. One per connection,
/// living as long as it.
class Runtime {
public:
    explicit Runtime(sqlite3* db) : db_(db) {}

    /// The error that a function raised since the last call; SQLite itself carries its text only.
    std::optional<host::Error> TakeError();
    void SetError(host::Error error) { error_ = std::move(error); }

    /// The next row version of a database: eight bytes, highest first. Counts in the database itself, inside the
    /// transaction of the statement that asks, so that it never goes back and holds across processes.
    std::string NextRowVersion(Schema schema);
    /// The next number of an identity column that counts from `seed` by `step`. Counts in `sqlite_sequence`, like
    /// SQLite's own that count by 1, inside the transaction of the statement that asks.
    std::int64_t NextIdentity(Schema schema, std::string_view table, std::int64_t seed, std::int64_t step);
    /// See `sql::BeginWriting`.
    void BeginWriting(Schema schema);
    /// Commits the open transaction. Throws like `Run`.
    void Commit();
    /// Lets go of every statement kept.
    void Forget();

    /// Whether an application's statement is being stepped (then SQLite must not quietly compile it anew).
    bool stepping = false;
    /// The last identity value made, as @@identity gives it; nothing before the first.
    std::optional<std::int64_t> identity;
    /// What @@rowcount, @@error and @@trancount give.
    std::int64_t rowCount = 0;
    std::int64_t lastError = 0;
    std::int64_t tranCount = 0;
    /// Variables of the batch at hand, nullptr where it has none.
    Variables* variables = nullptr;
    /// What is known of the row at hand while its OUTPUT is told, nullptr otherwise.
    const std::vector<Cell>* toldRow = nullptr;
    /// The error of the CATCH block at hand.
    std::optional<host::Error> caught;

private:
    sqlite3* db_;
    std::optional<host::Error> error_;
    std::array<StatementHandle, schemaCount> counters_;
    std::array<StatementHandle, schemaCount> locks_;
    StatementHandle begin_;
    StatementHandle commit_;
};

} // namespace refhost::sql
