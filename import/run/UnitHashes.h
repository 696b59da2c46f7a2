#pragma once

#include "import/run/Unit.h"

#include <string>
#include <vector>

namespace importing {

/// What tells a unit from every other, whichever file it comes in: the hash of its values by their fields. Equal units
/// of one file are numbered, so that each has its own.
std::vector<std::string> UnitHashes(const Outcome& outcome, const std::vector<Unit>& units);

} // namespace importing
