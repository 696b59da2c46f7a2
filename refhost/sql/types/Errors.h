#pragma once

#include "host/Error.h"

#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace refhost::sql {

/// Throws a `host::Error` with SQL Server's message.
template <class... Args>
[[noreturn]] void Fail(host::ErrorNumber number, fmt::format_string<Args...> message, Args&&... args) {
    throw host::Error(number, fmt::format(message, std::forward<Args>(args)...));
}

// OLE DB's numbers that only the SQL Server provider uses.
inline constexpr host::ErrorNumber transactionOpen = -2147168237; // XACT_E_XTIONEXISTS 0x8004D013
inline constexpr host::ErrorNumber noTransaction = -2147168242;   // XACT_E_NOTRANSACTION 0x8004D00E

/// A value that does not fit its type's range or length (the same number as truncated text).
inline constexpr host::ErrorNumber dataOverflow = host::error_number::dataTruncated;

} // namespace refhost::sql
