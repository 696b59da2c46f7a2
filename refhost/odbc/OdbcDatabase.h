#pragma once

#include "refhost/ado/Database.h"

#include <chrono>
#include <memory>
#include <string>

namespace refhost::odbc {

/// How long things may take, as ADO has it when nobody sets `ConnectionTimeout` and `CommandTimeout`.
struct TimeLimits {
    std::chrono::seconds connect{15};
    /// A statement's; where it passes, the statement is cancelled on the server.
    std::chrono::seconds statement{30};
};

/// Opens a SQL Server account database through ODBC. The text goes to the driver manager as it stands.
/// Throws what the driver reports; no password of the text stands in a message.
std::unique_ptr<Database> OpenOdbc(const std::string& connectionString, TimeLimits limits = {});

} // namespace refhost::odbc
