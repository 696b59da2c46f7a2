#include "refhost/odbc/Diagnostics.h"

#include "refhost/odbc/Utf16.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

#include <sqlext.h>
#include <sqlucode.h>

namespace refhost::odbc {
namespace {

namespace number = host::error_number;

/// SQL Server's error numbers (sys.messages) and what the OLE DB provider makes of them.
struct NativeNumber {
    int native;
    host::ErrorNumber number;
};

constexpr std::array nativeNumbers = {
    NativeNumber{18456, number::unspecified},       // Login failed for user
    NativeNumber{208, number::noTable},             // Invalid object name
    NativeNumber{3701, number::noTable},            // Cannot drop …, because it does not exist
    NativeNumber{4902, number::noTable},            // Cannot find the object
    NativeNumber{241, number::conversionFailed},    // Conversion failed when converting date and/or time
    NativeNumber{242, number::conversionFailed},    // … resulted in an out-of-range value
    NativeNumber{245, number::conversionFailed},    // Conversion failed when converting the … value
    NativeNumber{8114, number::conversionFailed},   // Error converting data type
    NativeNumber{8152, number::dataTruncated},      // String or binary data would be truncated.
    NativeNumber{2628, number::dataTruncated},      // … in table …, column …
    NativeNumber{515, number::integrityViolation},  // Cannot insert the value NULL
    NativeNumber{547, number::integrityViolation},  // conflicted with the … constraint
    NativeNumber{2601, number::integrityViolation}, // Cannot insert duplicate key row
    NativeNumber{2627, number::integrityViolation}, // Violation of … constraint
};

/// The same from the SQLSTATE, for errors without a server's number.
struct StateNumber {
    std::string_view prefix;
    host::ErrorNumber number;
};

constexpr std::array stateNumbers = {
    StateNumber{"42S02", number::noTable},          StateNumber{"42", number::syntaxError},
    StateNumber{"37", number::syntaxError},         StateNumber{"22001", number::dataTruncated},
    StateNumber{"22007", number::conversionFailed}, StateNumber{"22018", number::conversionFailed},
    StateNumber{"23", number::integrityViolation},
};

host::ErrorNumber NumberOf(const Diagnostic& diagnostic) {
    const auto native = std::ranges::find(nativeNumbers, diagnostic.native, &NativeNumber::native);
    if (diagnostic.native != 0 && native != nativeNumbers.end()) {
        return native->number;
    }
    for (const StateNumber& state : stateNumbers) {
        if (diagnostic.state.starts_with(state.prefix)) {
            return state.number;
        }
    }
    return number::unspecified;
}

/// "[Vendor][Driver][Server]message" without what stands in brackets in front.
std::string_view WithoutPrefixes(std::string_view message) {
    while (message.starts_with('[')) {
        const std::size_t end = message.find(']');
        if (end == std::string_view::npos) {
            break;
        }
        message.remove_prefix(end + 1);
    }
    message.remove_prefix(std::min(message.find_first_not_of(' '), message.size()));
    return message;
}

bool ReadDiagnostic(SQLSMALLINT handleType, SQLHANDLE handle, SQLSMALLINT record, Diagnostic& diagnostic) {
    std::array<SQLWCHAR, 6> state{};
    SQLINTEGER native = 0;
    std::vector<SQLWCHAR> text(512);
    SQLSMALLINT length = 0;
    SQLRETURN result = SQLGetDiagRecW(handleType, handle, record, state.data(), &native, text.data(),
                                      static_cast<SQLSMALLINT>(text.size()), &length);
    if (result == SQL_SUCCESS_WITH_INFO && static_cast<std::size_t>(length) >= text.size()) {
        text.resize(static_cast<std::size_t>(length) + 1);
        result = SQLGetDiagRecW(handleType, handle, record, state.data(), &native, text.data(),
                                static_cast<SQLSMALLINT>(text.size()), &length);
    }
    if (!SQL_SUCCEEDED(result)) {
        return false;
    }
    diagnostic.state = ToUtf8({state.data(), 5});
    diagnostic.native = static_cast<int>(native);
    diagnostic.message = ToUtf8({text.data(), std::min(static_cast<std::size_t>(length), text.size() - 1)});
    return true;
}

} // namespace

host::Error ErrorOf(const Diagnostic& diagnostic) {
    return {NumberOf(diagnostic), std::string(WithoutPrefixes(diagnostic.message))};
}

void RaiseDiagnostic(SQLSMALLINT handleType, SQLHANDLE handle) {
    Diagnostic first;
    if (!ReadDiagnostic(handleType, handle, 1, first)) {
        throw host::Error(number::unspecified, "Unspecified error");
    }
    Diagnostic diagnostic = first;
    for (SQLSMALLINT record = 2; diagnostic.state.starts_with("01"); ++record) {
        // Class 01 only informs (a changed database, say); it stands for the error where nothing else does.
        if (!ReadDiagnostic(handleType, handle, record, diagnostic)) {
            throw ErrorOf(first);
        }
    }
    throw ErrorOf(diagnostic);
}

void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle) {
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
        RaiseDiagnostic(handleType, handle);
    }
}

} // namespace refhost::odbc
