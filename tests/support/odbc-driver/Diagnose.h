#pragma once

#include "host/Error.h"
#include "tests/support/odbc-driver/Driver.h"

namespace odbc_driver {

/// What a SQL Server driver reports for an error of the account database.
Diagnostic Diagnose(const host::Error& error);

/// What it reports for a text that the server says.
Diagnostic Diagnose(const refhost::ServerMessage& message);

} // namespace odbc_driver
