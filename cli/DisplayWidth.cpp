#include "cli/DisplayWidth.h"

#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace cli {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

/// The classes W and F of EastAsianWidth.txt, Unicode 15; a block's unassigned gaps go with it.
constexpr auto wide = std::to_array<Range>({
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},   {0x23F0, 0x23F0},
    {0x23F3, 0x23F3},   {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x267F, 0x267F},
    {0x2693, 0x2693},   {0x26A1, 0x26A1},   {0x26AA, 0x26AB},   {0x26BD, 0x26BE},   {0x26C4, 0x26C5},
    {0x26CE, 0x26CE},   {0x26D4, 0x26D4},   {0x26EA, 0x26EA},   {0x26F2, 0x26F3},   {0x26F5, 0x26F5},
    {0x26FA, 0x26FA},   {0x26FD, 0x26FD},   {0x2705, 0x2705},   {0x270A, 0x270B},   {0x2728, 0x2728},
    {0x274C, 0x274C},   {0x274E, 0x274E},   {0x2753, 0x2755},   {0x2757, 0x2757},   {0x2795, 0x2797},
    {0x27B0, 0x27B0},   {0x27BF, 0x27BF},   {0x2B1B, 0x2B1C},   {0x2B50, 0x2B50},   {0x2B55, 0x2B55},
    {0x2E80, 0x303E},   {0x3041, 0x3247},   {0x3250, 0x4DBF},   {0x4E00, 0xA4CF},   {0xA960, 0xA97F},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE10, 0xFE19},   {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},
    {0xFFE0, 0xFFE6},   {0x16FE0, 0x18D08}, {0x1AFF0, 0x1B2FB}, {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF},
    {0x1F18E, 0x1F18E}, {0x1F191, 0x1F19A}, {0x1F200, 0x1F320}, {0x1F32D, 0x1F335}, {0x1F337, 0x1F37C},
    {0x1F37E, 0x1F393}, {0x1F3A0, 0x1F3CA}, {0x1F3CF, 0x1F3D3}, {0x1F3E0, 0x1F3F0}, {0x1F3F4, 0x1F3F4},
    {0x1F3F8, 0x1F43E}, {0x1F440, 0x1F440}, {0x1F442, 0x1F4FC}, {0x1F4FF, 0x1F53D}, {0x1F54B, 0x1F54E},
    {0x1F550, 0x1F567}, {0x1F57A, 0x1F57A}, {0x1F595, 0x1F596}, {0x1F5A4, 0x1F5A4}, {0x1F5FB, 0x1F64F},
    {0x1F680, 0x1F6C5}, {0x1F6CC, 0x1F6CC}, {0x1F6D0, 0x1F6D2}, {0x1F6D5, 0x1F6DF}, {0x1F6EB, 0x1F6EC},
    {0x1F6F4, 0x1F6FC}, {0x1F7E0, 0x1F7F0}, {0x1F90C, 0x1F93A}, {0x1F93C, 0x1F945}, {0x1F947, 0x1F9FF},
    {0x1FA70, 0x1FAFF}, {0x20000, 0x3FFFD},
});

/// Combining marks of scripts in general use, and format characters (UnicodeData.txt: Mn, Me, Cf).
constexpr auto invisible = std::to_array<Range>({
    {0x0300, 0x036F},
    {0x0483, 0x0489},
    {0x0591, 0x05BD},
    {0x064B, 0x065F},
    {0x0E34, 0x0E3A},
    {0x0E47, 0x0E4E},
    {0x200B, 0x200F},
    {0x202A, 0x202E},
    {0x2060, 0x2064},
    {0x20D0, 0x20F0},
    {0x302A, 0x302D},
    {0x3099, 0x309A},
    {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F},
    {0xFEFF, 0xFEFF},
    {0x1F3FB, 0x1F3FF},
    {0xE0001, 0xE01EF},
});

bool Holds(const auto& ranges, char32_t codePoint) noexcept {
    const auto range = std::ranges::lower_bound(ranges, codePoint, {}, &Range::last);
    return range != ranges.end() && range->first <= codePoint;
}

/// Marks that close what stands before them, and so begin no line.
bool IsClosing(char32_t codePoint) noexcept {
    return std::u32string_view(U"、。〉》」』】〕）！，．：；？］｝").find(codePoint) != std::u32string_view::npos;
}

void AppendEscape(std::string& text, char32_t control) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text.append("\\x").push_back(digits[(control >> 4) & 0xF]);
    text.push_back(digits[control & 0xF]);
}

void AppendPrintable(std::string& text, char32_t codePoint) {
    if (codePoint == '\n') {
        text.append("\\n");
    } else if (codePoint == '\r') {
        text.append("\\r");
    } else if (codePoint == '\t') {
        text.append("\\t");
    } else if (codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0)) {
        AppendEscape(text, codePoint);
    } else {
        text::AppendUtf8(text, text::IsSurrogate(codePoint) ? U'\xFFFD' : codePoint);
    }
}

} // namespace

std::size_t DisplayWidth(char32_t codePoint) noexcept {
    if (codePoint < 0x300) {
        return 1;
    }
    if (Holds(invisible, codePoint)) {
        return 0;
    }
    return Holds(wide, codePoint) ? 2 : 1;
}

std::size_t DisplayWidth(std::string_view text) noexcept {
    std::size_t width = 0;
    for (std::size_t position = 0; position < text.size();) {
        const text::Utf8Character character = text::ReadUtf8(text, position);
        width += DisplayWidth(character.codePoint);
        position += character.length;
    }
    return width;
}

std::string_view TakeLine(std::string_view& rest, std::size_t width) noexcept {
    std::size_t end = 0;
    std::size_t lastBreak = 0;
    bool afterWide = false;
    for (std::size_t used = 0; end < rest.size();) {
        const text::Utf8Character character = text::ReadUtf8(rest, end);
        const std::size_t taken = DisplayWidth(character.codePoint);
        const bool wideCharacter = taken == 2;
        if (end > 0 &&
            (character.codePoint == ' ' || ((afterWide || wideCharacter) && !IsClosing(character.codePoint)))) {
            lastBreak = end;
        }
        used += taken;
        if (used > width && end > 0) {
            end = lastBreak > 0 ? lastBreak : end;
            break;
        }
        afterWide = wideCharacter;
        end += character.length;
    }
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end);
    rest.remove_prefix(rest.empty() || rest.front() != ' ' ? 0 : 1);
    return line;
}

std::string Printable(std::string_view text) {
    std::string printable;
    printable.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const text::Utf8Character character = text::ReadUtf8(text, position);
        AppendPrintable(printable, character.codePoint);
        position += character.length;
    }
    return printable;
}

} // namespace cli
