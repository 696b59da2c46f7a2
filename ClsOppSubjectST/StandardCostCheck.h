#pragma once

#include "ModPub/TransactFrame.h"

#include <optional>

namespace kovra {

/// Refuses the request under "102" unless the host's cost accounting has its start date and values at standard cost.
/// Throws the database's error.
std::optional<ModPub::RequestError> StandardCostCheck(ModPub::ImportState& state);

} // namespace kovra
