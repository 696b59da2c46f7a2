#pragma once

#include "host/Error.h"
#include "refhost/ado/ServerErrors.h"

#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace refhost::sql {

/// SQL Server's own number of an error (sys.messages). One that `serverErrors` does not list does not compile.
struct Native {
    int native;
    host::ErrorNumber number;

    consteval Native(int listed) // NOLINT(google-explicit-constructor): a number is what it is
        : native(listed), number(AdoNumber(listed).value()) {}
};

/// SQL Server's error `native` with its message: `ErrorOf(208, …)`.
template <class... Args> host::Error ErrorOf(Native native, fmt::format_string<Args...> message, Args&&... args) {
    return {native.number, fmt::format(message, std::forward<Args>(args)...), native.native};
}

/// Throws SQL Server's error `native` with its message.
template <class... Args> [[noreturn]] void Fail(Native native, fmt::format_string<Args...> message, Args&&... args) {
    throw ErrorOf(native, message, std::forward<Args>(args)...);
}

/// Throws an error that is the provider's or this database's own: SQL Server has no number for it.
template <class... Args>
[[noreturn]] void FailOwn(host::ErrorNumber number, fmt::format_string<Args...> message, Args&&... args) {
    throw host::Error(number, fmt::format(message, std::forward<Args>(args)...));
}

} // namespace refhost::sql
