#pragma once

#include <charconv>
#include <cstddef>
#include <string_view>

namespace importing {

/// The whole number that an attribute of the file format holds; 0 for anything else.
inline std::size_t WholeNumber(std::string_view text) noexcept {
    std::size_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace importing
