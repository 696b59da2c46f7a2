// Any text in UTF-8 and UTF-16, as JSON and as connection string.
#include "fuzz/Require.h"
#include "text/ConnectionString.h"
#include "text/Json.h"
#include "text/Utf16.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace {

using fuzz::Require;

void CheckUtf(std::string_view text) {
    const std::u16string units = text::ToUtf16<char16_t>(text);
    Require(units.size() == text::Utf16Length(text), "Utf16Length counts otherwise", text);
    const std::string again = text::FromUtf16(std::u16string_view(units));
    Require(text::ToUtf16<char16_t>(again) == units, "UTF-16 does not come back", text);
    if (text::IsUtf8(text)) {
        Require(again == text, "UTF-8 does not come back", text);
    }
}

/// The bytes as UTF-16 units, whatever they are: they come back as they were.
void CheckUnits(std::string_view bytes) {
    std::u16string units(bytes.size() / sizeof(char16_t), u'\0');
    std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
    const std::string text = text::FromUtf16(std::u16string_view(units));
    Require(text::ToUtf16<char16_t>(text) == units, "UTF-16 does not come back from UTF-8", bytes);
}

void CheckConnectionString(std::string_view text) {
    const auto provider = text::ConnectionStringValue(text, "Provider");
    Require(provider == text::ConnectionStringValue(text, "pROVIDER"), "letter case of a key matters", text);
    const std::string masked = text::MaskPasswords(text);
    for (const char* const key : {"Pwd", "Password"}) {
        const auto shown = text::ConnectionStringValue(masked, key);
        Require(!shown || *shown == "***", "a password shows", masked);
        Require(shown.has_value() == text::ConnectionStringValue(text, key).has_value(), "a key is lost", masked);
    }
}

void CheckJson(std::string_view text) {
    std::string json;
    text::AppendJsonString(json, text);
    Require(text::IsUtf8(json), "JSON that is no UTF-8", json);
    for (const char c : json) {
        Require(static_cast<unsigned char>(c) >= 0x20, "a control character in JSON", json);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    CheckUtf(text);
    CheckUnits(text);
    CheckConnectionString(text);
    CheckJson(text);
    return 0;
}
