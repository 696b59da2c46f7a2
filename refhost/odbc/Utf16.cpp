#include "refhost/odbc/Utf16.h"

#include "ModPub/Utf8.h"

namespace refhost::odbc {
namespace {

constexpr bool IsHigh(SQLWCHAR unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsLow(SQLWCHAR unit) { return (unit & 0xFC00) == 0xDC00; }

} // namespace

std::string ToUtf8(Utf16View text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char32_t unit = text[position];
        if (IsHigh(text[position]) && position + 1 < text.size() && IsLow(text[position + 1])) {
            ++position;
            ModPub::AppendUtf8(utf8, 0x10000 + ((unit & 0x3FF) << 10) + (text[position] & 0x3FFU));
        } else {
            ModPub::AppendUtf8(utf8, unit);
        }
    }
    return utf8;
}

Utf16Text ToUtf16(std::string_view text) {
    Utf16Text utf16;
    utf16.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const auto [codePoint, length, wellFormed] = ModPub::ReadUtf8(text, position);
        if (codePoint < 0x10000) {
            utf16.push_back(static_cast<SQLWCHAR>(codePoint));
        } else {
            utf16.push_back(static_cast<SQLWCHAR>(0xD800 + ((codePoint - 0x10000) >> 10)));
            utf16.push_back(static_cast<SQLWCHAR>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
        }
        position += length;
    }
    return utf16;
}

} // namespace refhost::odbc
