#pragma once

#include "text/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace text {

/// The text in UTF-16, in units of whatever type the platform has for them. A surrogate in its three-byte form becomes
/// that surrogate, so that every UTF-16 text comes back as it was; a byte that begins no character becomes U+FFFD.
template <class Unit> std::basic_string<Unit> ToUtf16(std::string_view text) {
    static_assert(sizeof(Unit) == 2);
    // No character takes more units than bytes.
    std::basic_string<Unit> units(text.size(), Unit());
    Unit* end = units.data();
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t ascii = AsciiLength(text.substr(position));
        end = std::copy_n(text.data() + position, ascii, end);
        position += ascii;
        if (position == text.size()) {
            break;
        }
        const Utf8Character character = ReadUtf8(text, position);
        position += character.length;
        if (character.codePoint < 0x10000) {
            *end++ = static_cast<Unit>(character.codePoint);
        } else {
            *end++ = static_cast<Unit>(0xD800 + ((character.codePoint - 0x10000) >> 10));
            *end++ = static_cast<Unit>(0xDC00 + ((character.codePoint - 0x10000) & 0x3FF));
        }
    }
    units.resize(static_cast<std::size_t>(end - units.data()));
    return units;
}

/// UTF-16 in UTF-8. A lone surrogate takes its three-byte form.
template <class Unit> std::string FromUtf16(std::basic_string_view<Unit> units) {
    static_assert(sizeof(Unit) == 2);
    std::string text;
    text.reserve(units.size());
    for (std::size_t position = 0; position < units.size(); ++position) {
        const char32_t unit = static_cast<char16_t>(units[position]);
        const char32_t next = position + 1 < units.size() ? static_cast<char16_t>(units[position + 1]) : U'\0';
        if ((unit & 0xFC00) == 0xD800 && (next & 0xFC00) == 0xDC00) {
            ++position;
            AppendUtf8(text, 0x10000 + ((unit & 0x3FF) << 10) + (next & 0x3FF));
        } else {
            AppendUtf8(text, unit);
        }
    }
    return text;
}

/// Length of `text` (UTF-8) in UTF-16 units, the characters of the run-time; an invalid byte counts as one.
std::size_t Utf16Length(std::string_view text) noexcept;

} // namespace text
