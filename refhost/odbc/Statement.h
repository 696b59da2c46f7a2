#pragma once

#include "refhost/ado/Database.h"
#include "refhost/odbc/Handle.h"

#include <string_view>

namespace refhost::odbc {

/// A number in the place where ODBC's attributes have a pointer.
inline SQLPOINTER AttributeNumber(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr): ODBC's own convention
}

/// ADO's `CommandTimeout` as it is when nobody sets it, in seconds.
inline constexpr SQLULEN commandSeconds = 30;

/// Runs a batch and waits for its first answer. Throws the server's error; where `seconds` pass, the statement is
/// cancelled on the server.
/// @param seconds how long it may take; 0 for as long as it takes
StatementHandle RunStatement(const ConnectionHandle& connection, std::string_view sql, SQLULEN seconds);

/// The two steps of `RunStatement`; what comes of the second is the driver's return code.
StatementHandle AllocateStatement(const ConnectionHandle& connection, SQLULEN seconds);
SQLRETURN StartStatement(const StatementHandle& statement, std::string_view sql);

/// The rows of a statement's present answer; no fields when it has none. Throws the error that ends them.
ResultSet ReadRows(const StatementHandle& statement);

/// Whether the driver has found the connection gone.
bool IsDead(const ConnectionHandle& connection);

/// Goes on to the next answer of a batch; false when there is none. Throws the error that stands in its place.
bool NextAnswer(const StatementHandle& statement);

} // namespace refhost::odbc
