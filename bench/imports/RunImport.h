#pragma once

#include "bench/imports/Import.h"
#include "refhost/ado/Database.h"

#include <string>

namespace bench {

/// The login of these imports, on the database that the connection string names.
std::string LoginXml(const std::string& connectionString);

/// Runs a request of the import on an account. Throws std::runtime_error unless every row was accepted.
/// @param connectionString what the login names, which the opener gets
void RunImport(const Import& import, const std::string& request, const std::string& connectionString,
               const refhost::DatabaseOpener& opener);

} // namespace bench
