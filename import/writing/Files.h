#pragma once

#include <string>
#include <string_view>

namespace importing {

/// The path of a file that belongs to `input`: "期初.拒绝.xlsx" for "期初.xlsx", "拒绝" and ".xlsx", in the same
/// folder. Paths are in UTF-8.
std::string PathBeside(const std::string& input, std::string_view what, std::string_view ending);

/// Writes a file as a whole. Throws std::runtime_error, which names it, when that fails.
void WriteFile(const std::string& path, std::string_view bytes);

} // namespace importing
