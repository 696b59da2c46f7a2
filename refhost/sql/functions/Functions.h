#pragma once

#include "refhost/sql/store/Runtime.h"

namespace refhost::sql {

/// Teaches a SQLite connection what T-SQL needs: collations, conversions, arithmetic and functions with SQL Server's
/// meaning. `runtime` lives as long as the connection; it keeps the error that a function raises.
void RegisterFunctions(sqlite3* db, Runtime& runtime);

} // namespace refhost::sql
