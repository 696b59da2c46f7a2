#pragma once

#include "refhost/ado/Connection.h"

#include <string_view>

namespace refhost::odbc {

/// Creates the database `name` on the server of an open connection unless it is there. Returns whether it was created.
/// Throws `host::Error`; where the login lacks the right, the message says so.
bool EnsureDatabase(Connection& connection, std::string_view name);

} // namespace refhost::odbc
