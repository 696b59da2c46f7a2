#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// The name of `names` that `name` was most likely meant to be: the same in another letter case, else one that differs
/// in at most two letters; empty when there is none.
std::string Nearest(std::string_view name, const std::vector<std::string>& names);

} // namespace cli
