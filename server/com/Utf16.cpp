#include "server/com/Utf16.h"

namespace server {

static_assert(sizeof(wchar_t) == 2, "wide text is UTF-16");

namespace {

constexpr char32_t replacement = 0xFFFD;

struct Decoded {
    char32_t character = replacement;
    std::size_t length = 1;
};

Decoded Decode(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(text[i])); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80                   ? 1
                               : lead >= 0xC2 && lead < 0xE0 ? 2
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xF0 && lead < 0xF5 ? 4
                                                             : 0;
    if (length == 1)
        return {lead, 1};
    if (length == 0 || length > text.size())
        return {};
    char32_t character = lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return {};
        character = (character << 6) | (byte(i) & 0x3F);
    }
    const bool overlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    return overlong || character > 0x10FFFF ? Decoded{} : Decoded{character, length};
}

constexpr bool IsHighSurrogate(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsLowSurrogate(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

} // namespace

std::wstring ToUtf16(std::string_view text) {
    std::wstring result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Decoded decoded = Decode(text);
        text.remove_prefix(decoded.length);
        if (decoded.character < 0x10000) {
            result += static_cast<wchar_t>(decoded.character);
        } else {
            result += static_cast<wchar_t>(0xD800 + ((decoded.character - 0x10000) >> 10));
            result += static_cast<wchar_t>(0xDC00 + ((decoded.character - 0x10000) & 0x3FF));
        }
    }
    return result;
}

std::string ToUtf8(std::wstring_view text) {
    std::string result;
    result.reserve(text.size() * 3 / 2);
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            character = 0x10000 + ((character - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        }
        if (character < 0x80) {
            result += static_cast<char>(character);
        } else if (character < 0x800) {
            result += static_cast<char>(0xC0 | (character >> 6));
            result += static_cast<char>(0x80 | (character & 0x3F));
        } else if (character < 0x10000) {
            result += static_cast<char>(0xE0 | (character >> 12));
            result += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
            result += static_cast<char>(0x80 | (character & 0x3F));
        } else {
            result += static_cast<char>(0xF0 | (character >> 18));
            result += static_cast<char>(0x80 | ((character >> 12) & 0x3F));
            result += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
            result += static_cast<char>(0x80 | (character & 0x3F));
        }
    }
    return result;
}

} // namespace server
