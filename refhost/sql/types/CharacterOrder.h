#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace refhost::sql {

/// The character that stands for `codePoint` where letter case, width and kind of kana do not count: a small letter for
/// a capital one, ASCII for full-width forms and raised or lowered digits, katakana for hiragana and for half-width
/// katakana.
char32_t FoldCharacter(char32_t codePoint);

/// The two letters that a folded letter stands for, in comparisons and searches; empty for all others. Windows'
/// collations expand so: N'ß' = 'ss' and N'œ' = N'oe' as dba.stackexchange.com 335859 and stackoverflow.com 50181535
/// show of SQL Server, thorn as "th" by Michael Kaplan, who kept Windows' tables ("Not every table has its THORN",
/// 2007); æ goes with œ.
constexpr std::u32string_view Expansion(char32_t folded) {
    switch (folded) {
    case U'ß':
        return U"ss";
    case U'æ':
        return U"ae";
    case U'þ':
        return U"th";
    case U'œ':
        return U"oe";
    default:
        return {};
    }
}

/// Where a folded character stands in the order of texts. Characters that differ in an accent alone share `primary`; no
/// two characters share both.
struct Weight {
    std::uint32_t primary = 0;
    std::uint32_t secondary = 0;

    bool operator==(const Weight&) const = default;
    std::strong_ordering operator<=>(const Weight& other) const {
        return primary == other.primary ? secondary <=> other.secondary : primary <=> other.primary;
    }
};

/// The weight of a folded character; of a hyphen or apostrophe the lowest, which counts only between texts that are
/// alike without them.
Weight WeightOf(char32_t folded);

/// Whether a folded character is a hyphen or apostrophe.
constexpr bool IsMinimal(char32_t folded) { return folded == U'-' || folded == U'\''; }

namespace character_order {

inline constexpr std::size_t asciiCount = 128;
/// Where the parts of the order begin. Between two of ASCII's digits or letters others find room.
inline constexpr std::uint32_t asciiSigns = 0x40;
inline constexpr std::uint32_t signs = 0x80;
inline constexpr std::uint32_t asciiOperators = 0xE00;
inline constexpr std::uint32_t numbers = 0xE10;
inline constexpr std::uint32_t digitZero = 0x1100;
inline constexpr std::uint32_t letterA = 0x1600;
inline constexpr std::uint32_t step = 0x80;

/// ASCII in the order of Windows' word sort: signs, operators, digits, letters. 0 for hyphen and apostrophe.
constexpr std::array<std::uint16_t, asciiCount> MakeAscii() {
    std::array<std::uint16_t, asciiCount> weights{};
    for (std::size_t control = 0; control < 0x20; ++control) {
        weights[control] = static_cast<std::uint16_t>(control + 1);
    }
    weights[0x7F] = 0x21;
    std::uint32_t next = asciiSigns;
    for (const char sign : std::string_view(" !\"#$%&()*,./:;?@[\\]^_`{|}~")) {
        weights[static_cast<unsigned char>(sign)] = static_cast<std::uint16_t>(next++);
    }
    next = asciiOperators;
    for (const char sign : std::string_view("+<=>")) {
        weights[static_cast<unsigned char>(sign)] = static_cast<std::uint16_t>(next++);
    }
    for (std::uint32_t digit = 0; digit < 10; ++digit) {
        weights['0' + digit] = static_cast<std::uint16_t>(digitZero + step * digit);
    }
    for (std::uint32_t letter = 0; letter < 26; ++letter) {
        weights['a' + letter] = weights['A' + letter] = static_cast<std::uint16_t>(letterA + step * letter);
    }
    return weights;
}

/// The primary weights of ASCII, letter case folded.
inline constexpr std::array<std::uint16_t, asciiCount> ascii = MakeAscii();

} // namespace character_order

} // namespace refhost::sql
