#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

/// Columns that a character takes on a terminal: 2 for the wide ones of East Asian scripts and for pictographs, 0 for
/// combining marks and invisible format characters, else 1. Wide are the classes W and F of Unicode Standard Annex
/// #11; ambiguous characters count 1, as terminals in UTF-8 show them.
std::size_t DisplayWidth(char32_t codePoint) noexcept;

/// Columns that a text (UTF-8) takes on a terminal. It holds no control characters: see `Printable`.
std::size_t DisplayWidth(std::string_view text) noexcept;

/// Takes from the front of `rest` the line that fits into `width` columns, at least one character. It ends at the last
/// blank that fits, which is dropped, or beside the last wide character that fits; where there is neither, it is as
/// much as fits. No line begins with a wide closing mark.
std::string_view TakeLine(std::string_view& rest, std::size_t width) noexcept;

/// The text as a terminal may be given it: control characters become visible escapes (line feed `\n`, carriage return
/// `\r`, tab `\t`, others `\x1B` and the like), so that a value can neither break a line nor steer the terminal. Bytes
/// that are no UTF-8 become U+FFFD.
std::string Printable(std::string_view text);

} // namespace cli
