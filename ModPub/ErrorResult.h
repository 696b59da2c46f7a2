#pragma once

#include "ModPub/ImportObserver.h"
#include "host/Environment.h"

#include <string>

namespace ModPub {

/// The result text of a call that an error ended: to be called inside `catch (...)`. It is the helper's error result
/// of the error's number and description; where the helper itself fails, the same layout written here; where memory
/// does not suffice for that, the empty text.
/// @param observer hears of it; nobody where it is nullptr
std::string ErrorResult(host::Environment& environment, ImportObserver* observer = nullptr) noexcept;

} // namespace ModPub
