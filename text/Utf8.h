#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

/// A character read from UTF-8.
struct Utf8Character {
    /// The code point, or U+FFFD where the byte begins no character.
    char32_t codePoint = 0xFFFD;
    /// Bytes it takes, 1 for a byte that begins none.
    std::size_t length = 1;
    /// False for a byte that begins no character.
    bool valid = false;
};

constexpr bool IsSurrogate(char32_t codePoint) noexcept { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

/// Reads the character at `position`, which lies inside `text`. Characters are the sequences of the Unicode Standard,
/// table 3-7 (no overlong form, nothing above U+10FFFF), and surrogates in their three-byte form: texts here carry
/// whatever UTF-16 text came in.
Utf8Character ReadUtf8(std::string_view text, std::size_t position) noexcept;

/// Appends a code point up to U+10FFFF, a surrogate in its three-byte form.
void AppendUtf8(std::string& text, char32_t codePoint);

/// Whether a byte can only continue a character.
constexpr bool ContinuesUtf8(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// The beginning of `text`, at most `bytes` long, no character cut through.
std::string_view CutUtf8(std::string_view text, std::size_t bytes) noexcept;

/// Bytes of ASCII at the beginning of `text`.
std::size_t AsciiLength(std::string_view text) noexcept;

bool IsAscii(std::string_view text) noexcept;

/// Whether the whole text is well-formed UTF-8, without surrogates.
bool IsUtf8(std::string_view text) noexcept;

} // namespace text
