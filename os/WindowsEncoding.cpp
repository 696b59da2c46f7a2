#include "os/Encoding.h"
#include "os/WindowsApi.h"
#include "text/SameName.h"
#include "text/Utf16.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <climits>
#include <stdexcept>

namespace os {
namespace {

constexpr UINT unknown = 0;
constexpr UINT gb18030 = 54936;
constexpr UINT chinese = 936;

struct Named {
    std::string_view name;
    UINT codePage;
};

/// Names that files have for encodings, and Windows' numbers of them. Source: Windows' list of code page identifiers.
constexpr std::array codePages = {
    Named{"GB2312", chinese},    Named{"GBK", chinese},  Named{"GB18030", gb18030},  Named{"BIG5", 950},
    Named{"SHIFT_JIS", 932},     Named{"EUC-KR", 949},   Named{"US-ASCII", 20127},   Named{"ASCII", 20127},
    Named{"ISO-8859-1", 28591},  Named{"LATIN1", 28591}, Named{"ISO-8859-2", 28592}, Named{"ISO-8859-5", 28595},
    Named{"ISO-8859-15", 28605}, Named{"KOI8-R", 20866},
};

bool IsKnown(UINT codePage) {
    CPINFO info{};
    return GetCPInfo(codePage, &info) != FALSE;
}

/// The code page of "CP1252", "windows-1252" and the like.
UINT NumberedCodePage(std::string_view name) {
    for (const std::string_view prefix : {"CP", "WINDOWS-"}) {
        const std::string_view number = name.substr(std::min(prefix.size(), name.size()));
        if (text::SameName(name.substr(0, prefix.size()), prefix) && !number.empty() && number.size() <= 5 &&
            std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; })) {
            UINT codePage = 0;
            for (const char c : number) {
                codePage = codePage * 10 + static_cast<UINT>(c - '0');
            }
            return codePage;
        }
    }
    return unknown;
}

UINT CodePageOf(std::string_view name) {
    const auto* const found =
        std::ranges::find_if(codePages, [&](const Named& named) { return text::SameName(named.name, name); });
    UINT codePage = found == codePages.end() ? NumberedCodePage(name) : found->codePage;
    // A system without GB18030 reads at least its characters of up to two bytes.
    if (codePage == gb18030 && !IsKnown(gb18030)) {
        codePage = chinese;
    }
    return codePage != unknown && IsKnown(codePage) ? codePage : unknown;
}

/// Reads all of `bytes`, or nothing.
bool ReadWhole(std::string_view bytes, UINT codePage, std::wstring& wide) {
    wide.resize(bytes.size());
    const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                                           wide.data(), static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(std::max(length, 0)));
    return length > 0;
}

Decoded ReadCodePage(std::string_view bytes, UINT codePage) {
    std::wstring wide;
    if (bytes.empty()) {
        return {};
    }
    if (bytes.size() > INT_MAX) {
        throw std::length_error("a text of more than 2 GB");
    }
    if (ReadWhole(bytes, codePage, wide)) {
        return {text::FromUtf16<wchar_t>(wide), bytes.size()};
    }
    // Somewhere is something else: character by character up to there.
    constexpr std::size_t longest = 4;
    Decoded decoded;
    bool found = true;
    while (found) {
        const std::string_view rest = bytes.substr(decoded.read);
        found = false;
        for (std::size_t length = 1; !found && length <= std::min(longest, rest.size()); ++length) {
            if (ReadWhole(rest.substr(0, length), codePage, wide)) {
                decoded.text.append(text::FromUtf16<wchar_t>(wide));
                decoded.read += length;
                found = true;
            }
        }
    }
    return decoded;
}

Decoded ReadUtf8(std::string_view bytes) {
    std::size_t read = 0;
    while (read < bytes.size()) {
        const text::Utf8Character character = text::ReadUtf8(bytes, read);
        if (!character.valid || text::IsSurrogate(character.codePoint)) {
            break;
        }
        read += character.length;
    }
    return {std::string(bytes.substr(0, read)), read};
}

Decoded ReadUtf16(std::string_view bytes, bool lowFirst) {
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t position = 0; position + 1 < bytes.size(); position += 2) {
        const auto first = static_cast<unsigned char>(bytes[position]);
        const auto second = static_cast<unsigned char>(bytes[position + 1]);
        units.push_back(static_cast<char16_t>(lowFirst ? second << 8 | first : first << 8 | second));
    }
    // Up to the first surrogate that has no partner.
    Decoded decoded = ReadUtf8(text::FromUtf16<char16_t>(units));
    decoded.read = text::Utf16Length(decoded.text) * 2;
    return decoded;
}

} // namespace

std::optional<Decoded> Decode(std::string_view bytes, const std::string& name) {
    if (text::SameName(name, "UTF-8") || text::SameName(name, "UTF8")) {
        return ReadUtf8(bytes);
    }
    if (text::SameName(name, "UTF-16LE") || text::SameName(name, "UTF-16BE")) {
        return ReadUtf16(bytes, text::SameName(name, "UTF-16LE"));
    }
    const UINT codePage = CodePageOf(name);
    return codePage == unknown ? std::nullopt : std::optional(ReadCodePage(bytes, codePage));
}

} // namespace os
