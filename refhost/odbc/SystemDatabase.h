#pragma once

#include "host/Database.h"

namespace refhost::odbc {

/// Creates the system database `QxSystem` on the server of an open connection unless it is there.
/// Throws `host::Error`; where the login lacks the right, the message says so.
void EnsureSystemDatabase(host::Connection& connection);

} // namespace refhost::odbc
