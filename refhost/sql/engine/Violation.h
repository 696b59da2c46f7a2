#pragma once

#include "host/Error.h"
#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/store/Plan.h"

namespace refhost::sql {

/// A duplicate key: the error so far, and what is needed to tell the value.
struct DuplicateKey {
    host::Error error;
    std::shared_ptr<const Table> table;
    std::vector<std::string> columns;
};

/// Throws SQL Server's error for a violated constraint that SQLite reported for `plan` with its extended `code` and
/// `message`, or `DuplicateKey`; for every other code `SqliteError`.
[[noreturn]] void ThrowStepError(const Plan& plan, int code, const std::string& message, Catalog& catalog, sqlite3* db);

/// The error with the key's value, unless that is empty.
host::Error WithKey(const DuplicateKey& duplicate, const std::string& key);

/// A key's values as messages show them: "(a, <NULL>)".
std::string KeyText(std::vector<std::pair<Cell, Type>>&& key);
/// A duplicate key as messages show it: "(a, <NULL>)"; empty when no query finds it.
std::string KeyText(const DuplicateQueries& queries, sqlite3* db);

} // namespace refhost::sql
