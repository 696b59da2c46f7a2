#pragma once

#include "import/messages/Language.h"
#include "import/rows/Sheet.h"

#include <cstddef>
#include <optional>
#include <string>

namespace importing {

/// Where something stands, for people: a cell with its heading, "C5（数量）" and "C5 (Quantity)", or a whole row, "第 5
/// 行" and "line 5".
std::string PlaceOf(const Columns& columns, std::size_t line, std::optional<std::size_t> column, Language language);

} // namespace importing
