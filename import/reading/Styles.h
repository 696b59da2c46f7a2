#pragma once

#include "import/reading/Archive.h"

#include <string>
#include <vector>

namespace importing {

/// Of the cell formats of a workbook (`cellXfs` of the part `xl/styles.xml`), in order, whether each shows a number as
/// a date. Throws UnreadableFile.
std::vector<bool> ReadDateStyles(Archive& archive, const std::string& part);

} // namespace importing
