#pragma once

#include <algorithm>
#include <string_view>

namespace text {

/// Whether two names are the same but for the case of ASCII letters.
inline bool SameName(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

} // namespace text
