#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace importing {

/// The path of a file that belongs to `input`: "期初.拒绝.xlsx" for "期初.xlsx", "拒绝" and ".xlsx", in the same
/// folder. Paths are in UTF-8.
std::string PathBeside(const std::string& input, std::string_view what, std::string_view ending);

/// Has `write` write the file `path`, unless another one is there: then "期初.拒绝-2.xlsx" instead of "期初.拒绝.xlsx",
/// and so on, so that what somebody is correcting stays. One with the same bytes is no other. Gives the path that was
/// written. Throws what `write` throws, and std::runtime_error.
std::string WriteKeepingOthers(const std::string& path, const std::function<void(const std::string& path)>& write);

/// Writes a file as a whole. Throws std::runtime_error, which names it, when that fails.
void WriteFile(const std::string& path, std::string_view bytes);

} // namespace importing
