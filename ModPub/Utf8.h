#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ModPub {

/// A character read from UTF-8.
struct Utf8Character {
    /// The code point, or U+FFFD where the byte begins no well-formed sequence.
    char32_t codePoint = 0xFFFD;
    /// Bytes it takes, 1 for a byte that begins none.
    std::size_t length = 1;
    bool wellFormed = false;
};

/// Reads the character at `position`, which lies inside `text`. Well-formed are the sequences of the Unicode Standard,
/// table 3-7: no overlong form, no surrogate, nothing above U+10FFFF.
Utf8Character ReadUtf8(std::string_view text, std::size_t position) noexcept;

/// Appends a code point; one that UTF-8 cannot hold is written as U+FFFD.
void AppendUtf8(std::string& text, char32_t codePoint);

} // namespace ModPub
