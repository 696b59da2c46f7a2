#include "import/cells/Characters.h"

#include "text/Utf8.h"

#include <array>

namespace importing {
namespace {

constexpr std::array<std::string_view, 6> blanks = {" ", "\t", "\r", "\n", "\u3000", "\u00A0"};

} // namespace

std::string_view TrimBlanks(std::string_view text) noexcept {
    for (bool found = true; found;) {
        found = false;
        for (const std::string_view blank : blanks) {
            if (text.starts_with(blank)) {
                text.remove_prefix(blank.size());
                found = true;
            }
            if (text.ends_with(blank)) {
                text.remove_suffix(blank.size());
                found = true;
            }
        }
    }
    return text;
}

std::string ToHalfWidth(std::string_view text) {
    constexpr char32_t firstWide = 0xFF01;
    constexpr char32_t lastWide = 0xFF5E;
    constexpr char32_t wideBlank = 0x3000;
    constexpr char32_t distance = firstWide - U'!';
    std::string half;
    half.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const text::Utf8Character character = text::ReadUtf8(text, at);
        if (character.codePoint >= firstWide && character.codePoint <= lastWide) {
            half.push_back(static_cast<char>(character.codePoint - distance));
        } else if (character.codePoint == wideBlank) {
            half.push_back(' ');
        } else {
            half.append(text.substr(at, character.length));
        }
        at += character.length;
    }
    return half;
}

} // namespace importing
