#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace refhost {

/// The batches of a T-SQL script: the pieces between lines that hold `GO` alone, in any letter case, with blanks around
/// it or not. Pieces of white space alone are left out.
std::vector<std::string> SplitBatches(std::string_view script);

} // namespace refhost
