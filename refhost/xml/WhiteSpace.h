#pragma once

#include <string_view>

namespace refhost::xml {

/// White space as XML has it.
inline constexpr std::string_view blanks = " \t\r\n";

} // namespace refhost::xml
