#include "refhost/sql/types/CharacterOrder.h"

#include "CollationOrder.h"
#include "refhost/sql/types/Collation.h"

#include <vector>

namespace refhost::sql {
namespace {

constexpr char32_t firstHan = 0x4E00;
constexpr char32_t lastHan = 0x9FFF;
/// Behind Chinese by pinyin stand other Chinese characters and what lies beyond the basic plane, by code point.
constexpr std::uint32_t han = 0x100000;
constexpr std::uint32_t beyondHan = 0x200000;
/// Before it stand scripts that the order does not list, by code point.
constexpr std::uint32_t unlisted = 0x4000;

/// What the half-width forms U+FF61 to U+FF9F stand for.
constexpr std::u32string_view halfWidth =
    U"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモ"
    U"ヤユヨラリルレロワン゛゜";
/// What the full-width signs U+FFE0 to U+FFE6 stand for.
constexpr std::u32string_view wideSigns = U"¢£¬¯¦¥₩";

char32_t FoldWidth(char32_t codePoint) {
    if (codePoint >= 0xFF01 && codePoint <= 0xFF5E) {
        return ToLower(codePoint - 0xFF01 + U'!');
    }
    if (codePoint >= 0xFF61 && codePoint <= 0xFF9F) {
        return halfWidth[codePoint - 0xFF61];
    }
    return codePoint >= 0xFFE0 && codePoint <= 0xFFE6 ? wideSigns[codePoint - 0xFFE0] : codePoint;
}

/// Raised and lowered digits differ from plain ones in width.
char32_t FoldDigit(char32_t codePoint) {
    if (codePoint == 0xB2 || codePoint == 0xB3) {
        return codePoint - 0xB2 + U'2';
    }
    if (codePoint == 0xB9) {
        return U'1';
    }
    const bool raised = codePoint == 0x2070 || (codePoint >= 0x2074 && codePoint <= 0x2079);
    const bool lowered = codePoint >= 0x2080 && codePoint <= 0x2089;
    return raised || lowered ? (codePoint & 0xFU) + U'0' : codePoint;
}

/// The weights of the basic plane's characters that the order lists, read from its text.
class CollationTable {
public:
    static constexpr std::size_t size = 0x10000;

    CollationTable() : primary_(size), secondary_(size) {
        std::size_t position = 0;
        ReadGroups(position, character_order::signs);
        ReadGroups(position, character_order::numbers);
        std::uint32_t rank = 0;
        while (position < refhost_sql::CollationOrder.size()) {
            const char32_t codePoint = NextCodePoint(refhost_sql::CollationOrder, position);
            if (codePoint != U'\n') {
                primary_[codePoint] = static_cast<std::uint16_t>(++rank);
            }
        }
    }

    Weight Of(char32_t codePoint) const { return {primary_[codePoint], secondary_[codePoint]}; }

private:
    /// Reads groups of characters up to an empty line. ASCII's own keep their places.
    void ReadGroups(std::size_t& position, std::uint32_t primary) {
        std::uint8_t secondary = 0;
        char32_t previous = 0;
        while (position < refhost_sql::CollationOrder.size()) {
            const char32_t codePoint = NextCodePoint(refhost_sql::CollationOrder, position);
            const bool parts = codePoint == U' ' || codePoint == U'\n';
            if (parts) {
                if (previous == U'\n' && codePoint == U'\n') {
                    return;
                }
                ++primary;
                secondary = 0;
            } else {
                if (codePoint < character_order::asciiCount) {
                    primary = character_order::ascii.at(codePoint);
                }
                primary_[codePoint] = static_cast<std::uint16_t>(primary);
                secondary_[codePoint] = secondary++;
            }
            previous = codePoint;
        }
    }

    std::vector<std::uint16_t> primary_;
    std::vector<std::uint8_t> secondary_;
};

bool IsOtherHan(char32_t codePoint) {
    return (codePoint >= 0x3400 && codePoint < firstHan) || (codePoint >= 0xF900 && codePoint < 0xFB00);
}

} // namespace

char32_t FoldCharacter(char32_t codePoint) {
    if (codePoint < character_order::asciiCount || (codePoint >= firstHan && codePoint <= lastHan)) {
        return ToLower(codePoint);
    }
    if (codePoint < 0x3000) {
        return FoldDigit(ToLower(codePoint));
    }
    if (codePoint == 0x3000) {
        return U' ';
    }
    const bool hiragana = (codePoint >= 0x3041 && codePoint <= 0x3096) || codePoint == 0x309D || codePoint == 0x309E;
    if (hiragana) {
        return codePoint + 0x60;
    }
    return codePoint < 0xFF00 || codePoint > 0xFFEE ? ToLower(codePoint) : FoldWidth(codePoint);
}

Weight WeightOf(char32_t folded) {
    if (folded < character_order::asciiCount) {
        return {character_order::ascii.at(folded), 0};
    }
    if (folded >= CollationTable::size) {
        return {beyondHan + folded, 0};
    }
    static const CollationTable order;
    Weight weight = order.Of(folded);
    if (folded >= firstHan && folded <= lastHan) {
        weight.primary += han;
    } else if (weight.primary == 0) {
        weight.primary = (IsOtherHan(folded) ? beyondHan : unlisted) + folded;
    }
    return weight;
}

} // namespace refhost::sql
