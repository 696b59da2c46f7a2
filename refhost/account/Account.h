#pragma once

#include "refhost/ado/Connection.h"

#include <string_view>

namespace refhost {

/// Makes every host table and view in the open account database `connection`, and the calendar table in `QxSystem`
/// unless it is there already. All of it happens in one transaction: after an error the database is as it was.
/// @param accountId whose calendar the demonstration company replaces in `QxSystem`
/// @param demo whether the demonstration company is added
/// @param onServer whether `QxSystem` is a database of a server, whose tables are made from within it
/// Returns whether the calendar table was made.
/// Throws `host::Error` when the database holds an account already, and whatever the database reports.
bool CreateAccount(Connection& connection, std::string_view accountId, bool demo, bool onServer = false);

} // namespace refhost
