#include "refhost/eai/FieldText.h"

#include "ModPub/Conversions.h"

#include <string_view>

namespace refhost {
namespace {

/// Appends `separator` and two digits.
void AppendTwoDigits(std::string& text, char separator, int number) {
    text.append({separator, static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)});
}

std::string FieldDateText(host::Date date) {
    const std::optional<ModPub::DateParts> parts = ModPub::SplitDate(date);
    std::string text = ModPub::FormatDate(date);
    if (parts && (parts->hour != 0 || parts->minute != 0 || parts->second != 0)) {
        AppendTwoDigits(text, ' ', parts->hour);
        AppendTwoDigits(text, ':', parts->minute);
        AppendTwoDigits(text, ':', parts->second);
    }
    return text;
}

std::string HexText(const host::Bytes& bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes.data) {
        text.append({digits[byte >> 4], digits[byte & 0xF]});
    }
    return text;
}

} // namespace

std::optional<std::string> FieldText(const host::Value& value) {
    if (value.IsNull() || value.IsEmpty()) {
        return std::nullopt;
    }
    if (const bool* bit = value.As<bool>()) {
        return *bit ? "1" : "0";
    }
    if (const host::Date* date = value.As<host::Date>()) {
        return FieldDateText(*date);
    }
    if (const host::Bytes* bytes = value.As<host::Bytes>()) {
        return HexText(*bytes);
    }
    return ModPub::ToText(value);
}

} // namespace refhost
