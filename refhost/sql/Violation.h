#pragma once

#include "refhost/sql/Plan.h"

#include "host/Error.h"

namespace refhost::sql {

/// SQL Server's error for what SQLite reports after a failed step of `plan`.
host::Error TranslateStepError(const Plan& plan, Catalog& catalog, sqlite3* db);
/// The same after a failed definition; an error that is SQL Server's already stays as it is.
host::Error TranslateDefinitionError(const host::Error& error, sqlite3* db);

} // namespace refhost::sql
