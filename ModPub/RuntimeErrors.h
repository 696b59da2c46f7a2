#pragma once

#include "host/Error.h"

#include <string_view>

namespace ModPub {

/// The description that a Chinese system gives a run-time error; a general one for a number that is not the run-time's.
std::string_view RuntimeErrorDescription(host::ErrorNumber number) noexcept;

/// Throws `host::Error` with `number` and its description.
[[noreturn]] void RaiseRuntimeError(host::ErrorNumber number);

} // namespace ModPub
