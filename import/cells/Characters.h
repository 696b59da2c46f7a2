#pragma once

#include <string>
#include <string_view>

namespace importing {

/// `text` without white space at its ends: blanks, tabs, line breaks, the full-width blank and the one that does not
/// break.
std::string_view TrimBlanks(std::string_view text) noexcept;

/// `text` with full-width letters, digits and signs (U+FF01 to U+FF5E) and the full-width blank replaced by the ASCII
/// ones.
std::string ToHalfWidth(std::string_view text);

} // namespace importing
