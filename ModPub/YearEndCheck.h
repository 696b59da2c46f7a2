#pragma once

#include "ModPub/TransactFrame.h"

#include <optional>
#include <string>

namespace ModPub {

/// The settings classes' pre-check: refuses the request under `code` when the December closing of the login's year
/// is recorded. Throws 13 or 6 for a login year that is no 16-bit number, and the database's error.
std::optional<RequestError> YearEndCheck(ImportState& state, std::string code);

} // namespace ModPub
