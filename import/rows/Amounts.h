#pragma once

#include "import/fields/Headings.h"
#include "import/rows/Sheet.h"

#include <cstddef>
#include <vector>

namespace importing {

/// The sum of a column over the rows that are taken, exact to the cent for amounts below a hundred million million.
double SumOf(const std::vector<Row>& rows, std::size_t column);

/// Warns when a row's quantity times its unit cost is not its amount, to the cent, and names the difference.
void WarnOfAmount(const Columns& columns, Row& row);

} // namespace importing
