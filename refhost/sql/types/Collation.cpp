#include "refhost/sql/types/Collation.h"

#include "ModPub/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace refhost::sql {
namespace {

constexpr char32_t strangeByte = 0x110000;

/// Capital letters whose small letters lie at a fixed distance (`step` 1), or alternate with them (`step` 2).
struct CaseRange {
    char32_t first;
    char32_t last;
    std::int32_t distance;
    int step;
};

constexpr std::array caseRanges{
    CaseRange{0x0041, 0x005A, 32, 1},   CaseRange{0x00C0, 0x00D6, 32, 1},   CaseRange{0x00D8, 0x00DE, 32, 1},
    CaseRange{0x0100, 0x012E, 1, 2},    CaseRange{0x0132, 0x0136, 1, 2},    CaseRange{0x0139, 0x0147, 1, 2},
    CaseRange{0x014A, 0x0176, 1, 2},    CaseRange{0x0178, 0x0178, -121, 1}, CaseRange{0x0179, 0x017D, 1, 2},
    CaseRange{0x01CD, 0x01DB, 1, 2},    CaseRange{0x01DE, 0x01EE, 1, 2},    CaseRange{0x01F8, 0x021E, 1, 2},
    CaseRange{0x0222, 0x0232, 1, 2},    CaseRange{0x0386, 0x0386, 38, 1},   CaseRange{0x0388, 0x038A, 37, 1},
    CaseRange{0x038C, 0x038C, 64, 1},   CaseRange{0x038E, 0x038F, 63, 1},   CaseRange{0x0391, 0x03A1, 32, 1},
    CaseRange{0x03A3, 0x03AB, 32, 1},   CaseRange{0x03D8, 0x03EE, 1, 2},    CaseRange{0x0400, 0x040F, 80, 1},
    CaseRange{0x0410, 0x042F, 32, 1},   CaseRange{0x0460, 0x0480, 1, 2},    CaseRange{0x048A, 0x04BE, 1, 2},
    CaseRange{0x04C1, 0x04CD, 1, 2},    CaseRange{0x04D0, 0x052E, 1, 2},    CaseRange{0x0531, 0x0556, 48, 1},
    CaseRange{0x1E00, 0x1E94, 1, 2},    CaseRange{0x1EA0, 0x1EFE, 1, 2},    CaseRange{0x1F08, 0x1F0F, -8, 1},
    CaseRange{0x2160, 0x216F, 16, 1},   CaseRange{0x24B6, 0x24CF, 26, 1},   CaseRange{0xFF21, 0xFF3A, 32, 1},
    CaseRange{0x10400, 0x10427, 40, 1},
};

constexpr std::array<unsigned char, 256> MakeAsciiLower() {
    std::array<unsigned char, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + 32 : i);
    }
    return table;
}

constexpr std::array<unsigned char, 256> asciiLower = MakeAsciiLower();

unsigned char ByteAt(std::string_view text, std::size_t index) { return static_cast<unsigned char>(text[index]); }

std::string_view WithoutTrailingBlanks(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// A plain decimal number taken apart.
struct Number {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
};

Number TakeApart(std::string_view text) {
    Number number;
    if (!text.empty() && text.front() == '-') {
        number.negative = true;
        text.remove_prefix(1);
    }
    const std::size_t point = text.find('.');
    number.whole = text.substr(0, point);
    if (point != std::string_view::npos) {
        number.fraction = text.substr(point + 1);
    }
    number.whole.remove_prefix(std::min(number.whole.find_first_not_of('0'), number.whole.size()));
    const std::size_t last = number.fraction.find_last_not_of('0');
    number.fraction = number.fraction.substr(0, last == std::string_view::npos ? 0 : last + 1);
    if (number.whole.empty() && number.fraction.empty()) {
        number.negative = false;
    }
    return number;
}

} // namespace

char32_t NextCodePoint(std::string_view text, std::size_t& position) {
    const ModPub::Utf8Character character = ModPub::ReadUtf8(text, position);
    const char32_t codePoint = character.valid ? character.codePoint : strangeByte + ByteAt(text, position);
    position += character.length;
    return codePoint;
}

void AppendCodePoint(std::string& text, char32_t codePoint) {
    if (codePoint < strangeByte) {
        ModPub::AppendUtf8(text, codePoint);
    } else {
        text += static_cast<char>(codePoint - strangeByte);
    }
}

char32_t ToLower(char32_t codePoint) {
    if (codePoint < 0x80) {
        return asciiLower[codePoint];
    }
    // Chinese lies between the ranges; answer it at once.
    if (codePoint >= 0x2500 && codePoint < 0xFF00) {
        return codePoint;
    }
    for (const CaseRange& range : caseRanges) {
        if (codePoint < range.first) {
            break;
        }
        if (codePoint <= range.last) {
            if ((codePoint - range.first) % static_cast<char32_t>(range.step) != 0) {
                return codePoint;
            }
            return static_cast<char32_t>(static_cast<std::int32_t>(codePoint) + range.distance);
        }
    }
    return codePoint;
}

char32_t ToUpper(char32_t codePoint) {
    for (const CaseRange& range : caseRanges) {
        const auto capital = static_cast<char32_t>(static_cast<std::int32_t>(codePoint) - range.distance);
        if (capital >= range.first && capital <= range.last &&
            (capital - range.first) % static_cast<char32_t>(range.step) == 0) {
            return capital;
        }
    }
    return codePoint;
}

int CompareText(std::string_view left, std::string_view right) {
    left = WithoutTrailingBlanks(left);
    right = WithoutTrailingBlanks(right);
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < left.size() && r < right.size()) {
        const unsigned char leftByte = ByteAt(left, l);
        const unsigned char rightByte = ByteAt(right, r);
        if (((leftByte | rightByte) & 0x80U) == 0) {
            if (leftByte != rightByte) {
                const int difference = int{asciiLower[leftByte]} - int{asciiLower[rightByte]};
                if (difference != 0) {
                    return difference;
                }
            }
            ++l;
            ++r;
            continue;
        }
        const char32_t leftPoint = ToLower(NextCodePoint(left, l));
        const char32_t rightPoint = ToLower(NextCodePoint(right, r));
        if (leftPoint != rightPoint) {
            return leftPoint < rightPoint ? -1 : 1;
        }
    }
    if (l < left.size()) {
        return 1;
    }
    return r < right.size() ? -1 : 0;
}

int CompareExact(std::string_view left, std::string_view right) {
    const Number l = TakeApart(left);
    const Number r = TakeApart(right);
    if (l.negative != r.negative) {
        return l.negative ? -1 : 1;
    }
    int order = 0;
    if (l.whole.size() != r.whole.size()) {
        order = l.whole.size() < r.whole.size() ? -1 : 1;
    } else {
        order = l.whole.compare(r.whole);
        if (order == 0) {
            order = l.fraction.compare(r.fraction);
        }
    }
    return l.negative ? -order : order;
}

std::string FoldText(std::string_view text) {
    text = WithoutTrailingBlanks(text);
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        AppendCodePoint(folded, ToLower(NextCodePoint(text, position)));
    }
    return folded;
}

} // namespace refhost::sql
