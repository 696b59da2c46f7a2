#pragma once

#include "import/cells/Reading.h"
#include "import/reading/Cell.h"

#include <optional>

namespace importing {

/// The refusal of a cell that holds neither a text nor a number: an error, a formula without a value, a date's format
/// without a day, TRUE or FALSE, a date. Nothing for the others, the empty one included.
std::optional<Reading> RefuseUnlessTextOrNumber(const Cell& cell);

} // namespace importing
