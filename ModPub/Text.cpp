#include "ModPub/Text.h"

#include "text/Utf8.h"

namespace ModPub {

namespace {

constexpr bool IsIn(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

/// Ranges in which upper and lower case alternate, beginning with an upper-case letter.
constexpr bool IsInPairs(char32_t c) {
    return IsIn(c, 0x100, 0x12F) || IsIn(c, 0x132, 0x137) || IsIn(c, 0x139, 0x148) || IsIn(c, 0x14A, 0x177) ||
           IsIn(c, 0x179, 0x17E) || IsIn(c, 0x460, 0x481) || IsIn(c, 0x48A, 0x4BF) || IsIn(c, 0x4C1, 0x4CE) ||
           IsIn(c, 0x4D0, 0x52F);
}

/// Whether the upper-case letters of the pairs around `c` have odd numbers.
constexpr bool IsUpperOdd(char32_t c) {
    return IsIn(c, 0x139, 0x148) || IsIn(c, 0x179, 0x17E) || IsIn(c, 0x4C1, 0x4CE);
}

constexpr char32_t Upper(char32_t c) {
    if (IsIn(c, 'a', 'z') || (IsIn(c, 0xE0, 0xFE) && c != 0xF7) || (IsIn(c, 0x3B1, 0x3CB) && c != 0x3C2) ||
        IsIn(c, 0x430, 0x44F) || IsIn(c, 0xFF41, 0xFF5A))
        return c - 0x20;
    if (IsInPairs(c))
        return (c % 2 == 1) == IsUpperOdd(c) ? c : c - 1;
    if (IsIn(c, 0x450, 0x45F))
        return c - 0x50;
    switch (c) {
    case 0xFF:
        return 0x178;
    case 0x3AC:
        return 0x386;
    case 0x3AD:
    case 0x3AE:
    case 0x3AF:
        return c - 37;
    case 0x3C2:
        return 0x3A3;
    case 0x3CC:
        return 0x38C;
    case 0x3CD:
    case 0x3CE:
        return c - 63;
    case 0x4CF:
        return 0x4C0;
    default:
        return c;
    }
}

constexpr char32_t Lower(char32_t c) {
    if (IsIn(c, 'A', 'Z') || (IsIn(c, 0xC0, 0xDE) && c != 0xD7) || (IsIn(c, 0x391, 0x3AB) && c != 0x3A2) ||
        IsIn(c, 0x410, 0x42F) || IsIn(c, 0xFF21, 0xFF3A))
        return c + 0x20;
    if (IsInPairs(c))
        return (c % 2 == 1) == IsUpperOdd(c) ? c + 1 : c;
    if (IsIn(c, 0x400, 0x40F))
        return c + 0x50;
    switch (c) {
    case 0x178:
        return 0xFF;
    case 0x386:
        return 0x3AC;
    case 0x388:
    case 0x389:
    case 0x38A:
        return c + 37;
    case 0x38C:
        return 0x3CC;
    case 0x38E:
    case 0x38F:
        return c + 63;
    case 0x4C0:
        return 0x4CF;
    default:
        return c;
    }
}

/// `text` with every letter mapped; bytes that begin no character stand as they are.
template <char32_t (*map)(char32_t)> std::string MapLetters(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        if (const auto byte = static_cast<unsigned char>(text[position]); byte < 0x80) {
            result.push_back(static_cast<char>(map(byte)));
            ++position;
            continue;
        }
        const text::Utf8Character character = text::ReadUtf8(text, position);
        if (character.valid) {
            text::AppendUtf8(result, map(character.codePoint));
        } else {
            result.push_back(text[position]);
        }
        position += character.length;
    }
    return result;
}

} // namespace

std::string_view Trim(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string UpperCase(std::string_view text) { return MapLetters<Upper>(text); }
std::string LowerCase(std::string_view text) { return MapLetters<Lower>(text); }

} // namespace ModPub
