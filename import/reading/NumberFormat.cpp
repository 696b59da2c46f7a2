#include "import/reading/NumberFormat.h"

#include <algorithm>

namespace importing {
namespace {

constexpr bool IsOneOf(char c, std::string_view letters) noexcept { return letters.find(c) != std::string_view::npos; }

/// The end of what begins at `position` and means nothing for the kind of a number: a quoted text, an escaped
/// character, a filled or padded one, or a bracket that counts no time. `position` itself when nothing of it begins.
std::size_t EndOfLiteral(std::string_view code, std::size_t position) noexcept {
    const auto behind = [&](char end) {
        const std::size_t found = code.find(end, position + 1);
        return found == std::string_view::npos ? code.size() : found + 1;
    };
    switch (code[position]) {
    case '"':
        return behind('"');
    case '\\':
    case '_':
    case '*':
        return std::min(position + 2, code.size());
    case '[': {
        const bool countsTime = position + 1 < code.size() && IsOneOf(code[position + 1], "hHmMsS");
        return countsTime ? position : behind(']');
    }
    default:
        return position;
    }
}

} // namespace

bool IsDateFormat(unsigned id) noexcept {
    return (id >= 14 && id <= 22) || (id >= 27 && id <= 36) || (id >= 45 && id <= 47) || (id >= 50 && id <= 58);
}

bool IsDateFormat(std::string_view code) noexcept {
    // The first section is the one for positive numbers.
    for (std::size_t position = 0; position < code.size() && code[position] != ';';) {
        if (const std::size_t end = EndOfLiteral(code, position); end != position) {
            position = end;
            continue;
        }
        // "General" is the only name among the codes; its letters mean nothing.
        if (IsOneOf(code[position], "yYmMdDhHsS")) {
            return true;
        }
        ++position;
    }
    return false;
}

} // namespace importing
