#include "refhost/eai/FieldText.h"

#include "ModPub/Conversions.h"

#include <fmt/format.h>

namespace refhost {
namespace {

std::string DateText(host::Date date) {
    const std::optional<ModPub::DateParts> parts = ModPub::SplitDate(date);
    std::string text = ModPub::FormatDate(date);
    if (parts && (parts->hour != 0 || parts->minute != 0 || parts->second != 0)) {
        text += fmt::format(" {:02}:{:02}:{:02}", parts->hour, parts->minute, parts->second);
    }
    return text;
}

std::string HexText(const host::Bytes& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes.data) {
        text += fmt::format("{:02X}", byte);
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
        return DateText(*date);
    }
    if (const host::Bytes* bytes = value.As<host::Bytes>()) {
        return HexText(*bytes);
    }
    return ModPub::ToText(value);
}

} // namespace refhost
