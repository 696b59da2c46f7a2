#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace text {

/// The members of a JSON object that holds no other object or array: texts as they are, numbers and words as they are
/// written. Nothing for a text that is no such object.
std::optional<std::map<std::string, std::string, std::less<>>> ReadJsonObject(std::string_view json);

} // namespace text
