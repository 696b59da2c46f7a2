#pragma once

#include "cli/Console.h"
#include "refhost/ado/Connection.h"

#include <string>

namespace cli {

/// Creates on a server what an account needs to stand in and is missing: the database `name` (unless it is empty),
/// which the connection then works in, and `QxSystem`. Says what was created and what was there. Throws `host::Error`,
/// and std::runtime_error before anything is created where the connection works in the server's own database `master`.
void MakeServerDatabases(refhost::Connection& connection, const std::string& name, Console& console);

/// Says what became of the calendar, and what to do next for a database that was named.
void TellWhatIsThere(bool calendarMade, const std::string& name, Console& console);

} // namespace cli
