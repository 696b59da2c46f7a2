#pragma once

#include "host/Error.h"
#include "refhost/odbc/Odbc.h"

#include <string>
#include <string_view>
#include <vector>

namespace refhost::odbc {

/// One diagnostic record of a driver.
struct Diagnostic {
    /// Five characters, see the ODBC reference, appendix A.
    std::string state;
    /// The server's own error number (sys.messages); the driver's own number when the error is the driver's.
    int native = 0;
    /// The message, in UTF-8, as the driver gives it.
    std::string message;
};

/// The error that ADO over SQL Server reports for a diagnostic: its number by the server's (`serverErrors`) or else by
/// the SQLSTATE, the message without the driver's bracketed prefixes, and the server's number.
host::Error ErrorOf(const Diagnostic& diagnostic);

/// Throws the first error of the handle's last call.
[[noreturn]] void RaiseDiagnostic(SQLSMALLINT handleType, SQLHANDLE handle);

/// What the server told beside the handle's last answer (PRINT's texts, warnings), without the driver's prefixes. That
/// it uses another database or language is not told.
std::vector<std::string> MessagesOf(SQLSMALLINT handleType, SQLHANDLE handle);

/// Throws when `result` is a failure; success with information is success.
void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle);

} // namespace refhost::odbc
