#pragma once

#include "import/rows/Sheet.h"

#include <span>

namespace importing {

/// A document is taken as a whole or not at all: refuses the rows of each document that has a refused row. Does nothing
/// where each row stands alone.
void RefuseWithTheirDocuments(const ClassFields& classFields, const Columns& columns, std::span<Row* const> rows);

} // namespace importing
