#pragma once

#include "refhost/sql/engine/EmbeddedDatabase.h"

namespace bench {

/// A copy of an account's tables, indexes and rows in a plain SQLite database in memory, as one would make it by hand:
/// texts are NOCASE, and indexes are over columns.
class HandAccount {
public:
    explicit HandAccount(sqlite3* account);

    sqlite3* Handle() const { return db_.get(); }

private:
    refhost::sql::DatabaseHandle db_;
};

} // namespace bench
