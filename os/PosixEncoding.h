#pragma once

#include <string>
#include <string_view>

namespace os {

/// A text in UTF-8 as bytes of the encoding `name`. What the encoding lacks becomes "?"; bytes that are no UTF-8, as in
/// names of files, stay as they are. The text itself when the system does not know the encoding.
std::string Encode(std::string_view text, const std::string& name);

} // namespace os
