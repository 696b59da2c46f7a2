#pragma once

#include "refhost/OpenDatabase.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"

#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace fuzz {

/// The demonstration company in memory, one for all runs of a process, watched for what is written to it. It is made
/// anew now and then, so that runs do not drown in what earlier ones wrote.
class Account {
public:
    Account();

    /// Opens this account, whatever the connection string names.
    refhost::DatabaseOpener Opener();
    /// Begins a run: forgets what was written and makes the account anew when enough was.
    void Begin();
    refhost::sql::EmbeddedDatabase& database() { return *database_; }
    /// "INSERT table", "UPDATE table" and "DELETE table" for the rows written since `Begin`.
    const std::set<std::string>& changes() const { return changes_; }
    /// The names of all tables and views.
    std::set<std::string> Tables();

private:
    void Make();
    static void NoteChange(void* self, int operation, const char* database, const char* table, sqlite3_int64 row);

    std::unique_ptr<refhost::sql::EmbeddedDatabase> database_;
    std::set<std::string> changes_;
    std::size_t written_ = 0;
};

/// The login of account 001 in January 2024, its XML text.
extern const std::string_view loginXml;

} // namespace fuzz
