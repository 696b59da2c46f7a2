#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace refhost::sql {

/// Where the first character stands that the account's code page (936, simplified Chinese) lacks; npos without any.
std::size_t FirstOutsideCodePage(std::string_view text);

/// The text as a char, varchar or text value holds it: "?" for each UTF-16 unit of what the code page lacks.
std::string ThroughCodePage(std::string_view text);

} // namespace refhost::sql
