#pragma once

#include <string>

namespace refhost::sql {

/// Copies the embedded account of a connection string, and its system database where there is one, into a folder, as
/// they are at one moment each, while others may write to them (SQLite's online backup). The files keep their names.
/// Returns the connection string of the copy.
/// Throws `host::Error` when it cannot, an account in memory included: it lives with its connection.
std::string CopyAccount(const std::string& connectionString, const std::string& folder);

} // namespace refhost::sql
