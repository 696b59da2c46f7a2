#include "text/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace text {
namespace {

struct Lead {
    /// Bytes of the whole sequence; 0 for a byte that begins none.
    std::size_t length;
    /// Bounds of the second byte.
    unsigned low;
    unsigned high;
};

Lead LeadOf(unsigned byte) noexcept {
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {2, 0x80, 0xBF};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {3, byte == 0xE0 ? 0xA0U : 0x80U, 0xBF};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {4, byte == 0xF0 ? 0x90U : 0x80U, byte == 0xF4 ? 0x8FU : 0xBFU};
    }
    return {0, 0, 0};
}

/// Bytes of ASCII at the beginning of `text`, in steps of eight: most text is ASCII.
std::size_t AsciiBlocks(std::string_view text) noexcept {
    std::size_t length = 0;
    std::uint64_t eight = 0;
    for (; text.size() - length >= sizeof eight; length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        if ((eight & 0x8080808080808080U) != 0) {
            break;
        }
    }
    return length;
}

} // namespace

Utf8Character ReadUtf8(std::string_view text, std::size_t position) noexcept {
    const auto byte = [&](std::size_t offset) -> unsigned {
        return position + offset < text.size() ? static_cast<unsigned char>(text[position + offset]) : 0U;
    };
    const unsigned first = byte(0);
    if (first < 0x80) {
        return {static_cast<char32_t>(first), 1, true};
    }
    const Lead lead = LeadOf(first);
    if (lead.length == 0 || byte(1) < lead.low || byte(1) > lead.high) {
        return {};
    }
    char32_t codePoint = first & (0x7FU >> lead.length);
    for (std::size_t offset = 1; offset < lead.length; ++offset) {
        if ((byte(offset) & 0xC0U) != 0x80U) {
            return {};
        }
        codePoint = codePoint << 6 | (byte(offset) & 0x3FU);
    }
    return {codePoint, lead.length, true};
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | codePoint >> 6);
        append(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        append(0xE0 | codePoint >> 12);
        append(0x80 | (codePoint >> 6 & 0x3F));
        append(0x80 | (codePoint & 0x3F));
    } else {
        append(0xF0 | codePoint >> 18);
        append(0x80 | (codePoint >> 12 & 0x3F));
        append(0x80 | (codePoint >> 6 & 0x3F));
        append(0x80 | (codePoint & 0x3F));
    }
}

std::string_view CutUtf8(std::string_view text, std::size_t bytes) noexcept {
    std::size_t end = std::min(bytes, text.size());
    while (end > 0 && end < text.size() && ContinuesUtf8(text[end])) {
        --end;
    }
    return text.substr(0, end);
}

std::size_t AsciiLength(std::string_view text) noexcept {
    std::size_t length = AsciiBlocks(text);
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) {
        ++length;
    }
    return length;
}

bool IsAscii(std::string_view text) noexcept { return AsciiLength(text) == text.size(); }

bool IsUtf8(std::string_view text) noexcept {
    for (std::size_t position = 0; position < text.size();) {
        if (const std::size_t ascii = AsciiBlocks(text.substr(position)); ascii > 0) {
            position += ascii;
            continue;
        }
        const Utf8Character character = ReadUtf8(text, position);
        if (!character.valid || IsSurrogate(character.codePoint)) {
            return false;
        }
        position += character.length;
    }
    return true;
}

} // namespace text
