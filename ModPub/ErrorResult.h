#pragma once

#include "host/Environment.h"

#include <string>

namespace ModPub {

/// The result text of a call that an error ended: to be called inside `catch (...)`. It is the helper's error result
/// of the error's number and description; where the helper itself fails, the same layout written here; where memory
/// does not suffice for that, the empty text.
std::string ErrorResult(host::Environment& environment) noexcept;

} // namespace ModPub
