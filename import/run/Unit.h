#pragma once

#include "import/outcome/Outcome.h"

#include <vector>

namespace importing {

/// What the class takes or refuses as one: a row that stands alone, or the rows of a document. Never empty.
struct Unit {
    std::vector<RowOutcome*> rows;
};

/// The units of the rows that the class is to be asked about (state `notReached`, no refusals), in the file's order;
/// a document stands where its first row does. They point into `outcome`.
std::vector<Unit> UnitsOf(Outcome& outcome);

} // namespace importing
