#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace refhost::sql {

/// The names in a piece of T-SQL, quoted ones included, in their order.
std::vector<std::string> WordsOf(std::string_view text);
/// Whether a name is among them, letter case ignored.
bool Mentions(std::string_view text, std::string_view name);

} // namespace refhost::sql
