#pragma once

#include <algorithm>
#include <string_view>

namespace refhost::xml {

/// White space as XML has it.
inline constexpr std::string_view blanks = " \t\r\n";

inline bool IsBlank(std::string_view text) noexcept {
    return std::ranges::all_of(text, [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
}

} // namespace refhost::xml
