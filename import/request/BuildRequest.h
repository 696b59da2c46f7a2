#pragma once

#include "import/rows/Sheet.h"

#include <span>
#include <string>
#include <string_view>

namespace importing {

/// The request of rows, in UTF-8: rows named "row", or documents named "document" with a header and entries, of the
/// rows with the same number. A quote in a text is doubled, as the statement that it becomes part of takes it. Empty
/// values are left out.
/// @param docid the request's name
/// @param proc "ADD" or "EDIT"
std::string BuildRequest(const ClassFields& classFields, const Columns& columns, std::span<const Row* const> rows,
                         std::string_view docid, std::string_view proc);

/// The request of the rows of a sheet that are taken.
std::string BuildRequest(const Sheet& sheet, std::string_view docid, std::string_view proc);

} // namespace importing
