#include "refhost/sql/types/Collation.h"

#include <array>
#include <cstdint>

namespace refhost::sql {
namespace {

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

} // namespace

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

} // namespace refhost::sql
