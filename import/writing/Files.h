#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace importing {

/// The path of a file that belongs to `input`: "期初.拒绝.xlsx" for "期初.xlsx", "拒绝" and ".xlsx", in the same
/// folder. Paths are in UTF-8.
std::string PathBeside(const std::string& input, std::string_view what, std::string_view ending);

/// Has `write` write the file `path`, unless another one is there: then "期初.拒绝-2.xlsx" instead of "期初.拒绝.xlsx",
/// and so on, so that what somebody is correcting stays. One with the same bytes is no other, and is left as it is.
/// Gives the path of the file. Throws what `write` throws, and text::Fault.
std::string WriteKeepingOthers(const std::string& path, const std::function<void(const std::string& path)>& write);

/// Writes a file as a whole: it is as it was until all of it is written. Throws text::Fault, which names it.
void WriteFile(const std::string& path, std::string_view bytes);

} // namespace importing
