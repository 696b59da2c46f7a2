// Any text, and any double, through the run-time's conversions.
#include "ModPub/Conversions.h"

#include "fuzz/Require.h"
#include "host/Error.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace {

using fuzz::Require;

/// What `convert` gives, or nothing when it raises an error; the error is one of the run-time's.
template <class Convert> auto Try(const Convert& convert) -> std::optional<decltype(convert())> {
    try {
        return convert();
    } catch (const host::Error& error) {
        Require(error.number() == host::error_number::overflow || error.number() == host::error_number::typeMismatch ||
                    error.number() == host::error_number::invalidCall,
                "an error that is not the run-time's");
        return std::nullopt;
    }
}

void CheckNumber(double number) {
    if (!std::isfinite(number)) {
        return;
    }
    const std::string text = ModPub::NumberText(number);
    Require(text.size() <= 24, "a number's text is long", text);
    const std::optional<double> back = Try([&] { return ModPub::ToDouble(std::string_view(text)); });
    // The largest doubles round up beyond the range.
    if (!back) {
        Require(std::fabs(number) > 1.7976931348623e308, "a number's text is no number", text);
        return;
    }
    Require(std::fabs(*back - number) <= std::fabs(number) * 1e-14 + std::numeric_limits<double>::denorm_min() * 1e15,
            "a number's text is another number", text);
    Require(ModPub::NumberText(*back) == text, "a number's text is not stable", text);
    if (const auto whole = Try([&] { return ModPub::ToInt32(number); })) {
        Require(std::fabs(*whole - number) <= 0.5, "a whole number is not the nearest", text);
    } else {
        Require(number < -2147483648.0 || number > 2147483647.0, "a whole number in range is refused", text);
    }
    if (const auto whole = Try([&] { return ModPub::ToInt16(number); })) {
        Require(std::fabs(*whole - number) <= 0.5, "a short number is not the nearest", text);
    } else {
        Require(number < -32768.0 || number > 32767.0, "a short number in range is refused", text);
    }
    if (std::fabs(number) < 1e12) {
        const double rounded = ModPub::TwoPlaces(number);
        Require(std::fabs(rounded - number) <= 0.005 + std::fabs(number) * 1e-14, "two places are far off", text);
        Require(ModPub::TwoPlaces(rounded) == rounded, "two places are not stable", text);
    }
}

void CheckDate(host::Date date) {
    const std::optional<ModPub::DateParts> parts = ModPub::SplitDate(date);
    if (!parts) {
        Require(!Try([&] { return ModPub::DateText(date); }), "a date outside the calendar has a text");
        return;
    }
    const std::string text = ModPub::DateText(date);
    const std::optional<host::Date> back = ModPub::ParseDate(text);
    // The years 100 to 9999 are written in full, so nothing is guessed.
    Require(back.has_value(), "a date's text is no date", text);
    Require(ModPub::SplitDate(*back) == parts, "a date's text is another date", text);
    const std::string day = ModPub::FormatDate(date);
    Require(day.size() == 10 && day[4] == '-' && day[7] == '-', "a formatted date has another shape", day);
}

void CheckText(std::string_view text) {
    // Raising errors is slow, so that it is left to the tests where nothing depends on it.
    const auto parsed = Try([&] { return ModPub::ParseNumber(text); });
    const std::optional<double> number = parsed.value_or(std::nullopt);
    Require(ModPub::IsNumeric(text) == number.has_value(), "IsNumeric and ParseNumber differ", text);
    if (const auto value = Try([&] { return ModPub::Val(text); })) {
        Require(std::isfinite(*value), "Val is no number", text);
    }
    if (number) {
        Require(std::isfinite(*number) && ModPub::ToDouble(text) == *number, "ToDouble reads another number", text);
        Require(ModPub::ToBoolean(text) == (*number != 0), "ToBoolean reads another number", text);
        CheckNumber(*number);
    }

    const std::optional<host::Date> date = ModPub::ParseDate(text);
    Require(ModPub::IsDate(text) == date.has_value(), "IsDate and ParseDate differ", text);
    const std::string formatted = ModPub::FormatDate(text);
    if (date) {
        CheckDate(*date);
        Require(formatted == ModPub::FormatDate(*date), "a date's text is formatted as another", text);
    } else if (!number) {
        Require(formatted == text, "Format changes a text that is neither date nor number", text);
    }

    const std::string upper = ModPub::UpperCase(text);
    const std::string lower = ModPub::LowerCase(text);
    Require(ModPub::UpperCase(upper) == upper && ModPub::LowerCase(lower) == lower, "letter case is not stable", text);
    Require(upper.size() == text.size() && lower.size() == text.size(), "letter case changes the length", text);
    const std::string_view trimmed = ModPub::Trim(text);
    Require(trimmed.empty() || (trimmed.front() != ' ' && trimmed.back() != ' '), "Trim leaves blanks", text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size >= sizeof(double)) {
        double number = 0;
        std::memcpy(&number, data, sizeof number);
        CheckNumber(number);
        CheckDate({number});
    }
    CheckText({reinterpret_cast<const char*>(data), size});
    return 0;
}
