#include "refhost/odbc/Diagnostics.h"

#include "refhost/ado/ServerErrors.h"
#include "refhost/odbc/Odbc.h"
#include "refhost/odbc/Utf16.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace refhost::odbc {
namespace {

namespace number = host::error_number;

/// What the OLE DB provider makes of a SQLSTATE, for errors that `serverErrors` does not list.
struct StateNumber {
    std::string_view prefix;
    host::ErrorNumber number;
};

constexpr std::array stateNumbers = {
    StateNumber{"42S02", number::noTable},
    StateNumber{"42", number::syntaxError},
    StateNumber{"37", number::syntaxError},
    StateNumber{"22001", number::dataTruncated},
    StateNumber{"22007", number::conversionFailed},
    StateNumber{"22018", number::conversionFailed},
    StateNumber{"22003", dataOverflow},
    StateNumber{"22008", dataOverflow},
    StateNumber{"21", number::syntaxError},
    StateNumber{"23", number::integrityViolation},
    StateNumber{"28", loginRefused},
    StateNumber{"HYT00", timeExpired},
};

host::ErrorNumber NumberOfState(const Diagnostic& diagnostic) {
    for (const StateNumber& state : stateNumbers) {
        if (diagnostic.state.starts_with(state.prefix)) {
            return state.number;
        }
    }
    return number::unspecified;
}

/// Whether an error is the driver's own: the connection's (class 08), its calls' (HY) or its set-up's (IM). Drivers
/// number these as they like.
bool IsOfDriver(const Diagnostic& diagnostic) {
    return std::ranges::any_of(std::array{"08", "HY", "IM"},
                               [&](std::string_view prefix) { return diagnostic.state.starts_with(prefix); });
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
    std::string message(WithoutPrefixes(diagnostic.message));
    if (const std::optional<host::ErrorNumber> listed = AdoNumber(diagnostic.native)) {
        return {*listed, std::move(message), diagnostic.native};
    }
    return {NumberOfState(diagnostic), std::move(message), IsOfDriver(diagnostic) ? 0 : diagnostic.native};
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

std::vector<std::string> MessagesOf(SQLSMALLINT handleType, SQLHANDLE handle) {
    constexpr std::array silent = {5701, 5703}; // Changed database context …; Changed language setting …
    std::vector<std::string> messages;
    Diagnostic diagnostic;
    for (SQLSMALLINT record = 1; ReadDiagnostic(handleType, handle, record, diagnostic); ++record) {
        if (diagnostic.state.starts_with("01") && std::ranges::find(silent, diagnostic.native) == silent.end()) {
            messages.emplace_back(WithoutPrefixes(diagnostic.message));
        }
    }
    return messages;
}

void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle) {
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
        RaiseDiagnostic(handleType, handle);
    }
}

} // namespace refhost::odbc
