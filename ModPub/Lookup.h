#pragma once

#include "host/Environment.h"

#include <memory>
#include <string_view>

namespace ModPub {

/// Opens a closed recordset on a look-up: static cursor, read-only, a text command. Throws the database's error.
void OpenLookup(host::Recordset& recordset, host::Connection& connection, std::string_view sql);

/// The same with a new recordset.
std::unique_ptr<host::Recordset> OpenLookup(host::Environment& environment, host::Connection& connection,
                                            std::string_view sql);

/// Whether the look-up `sql` finds a row. Throws the database's error.
bool LookupFinds(host::Environment& environment, host::Connection& connection, std::string_view sql);

} // namespace ModPub
