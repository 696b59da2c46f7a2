#pragma once

#include "host/Error.h"
#include "tests/support/odbc-driver/Driver.h"

namespace odbc_driver {

/// What a SQL Server driver reports for an error of the account database.
Diagnostic Diagnose(const host::Error& error);

} // namespace odbc_driver
