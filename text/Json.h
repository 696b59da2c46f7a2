#pragma once

#include <string>
#include <string_view>

namespace text {

/// Appends `text` as a JSON string, quotes included. Bytes that are no UTF-8 become U+FFFD.
void AppendJsonString(std::string& json, std::string_view text);

} // namespace text
