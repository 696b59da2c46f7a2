#pragma once

#include "refhost/ado/Database.h"

#include <memory>
#include <string>

namespace refhost::odbc {

/// Opens a SQL Server account database through ODBC. The text goes to the driver manager as it stands.
/// Connecting may take 15 seconds and a statement 30, as with ADO's defaults.
/// Throws what the driver reports; no password of the text stands in a message.
std::unique_ptr<Database> OpenOdbc(const std::string& connectionString);

} // namespace refhost::odbc
