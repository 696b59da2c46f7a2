#include "ModPub/ValueConversions.h"

#include "ModPub/Dates.h"
#include "ModPub/Numbers.h"
#include "ModPub/RuntimeErrors.h"

#include <charconv>
#include <string_view>

namespace ModPub {

namespace {

namespace en = host::error_number;

template <class... F> struct Overloaded : F... { using F::operator()...; };
template <class... F> Overloaded(F...) -> Overloaded<F...>;

/// The decimal's number; its text is plain digits, always well-formed.
double DecimalNumber(const host::Decimal& decimal) {
    double number = 0;
    std::from_chars(decimal.text.data(), decimal.text.data() + decimal.text.size(), number);
    return number;
}

std::string DecimalText(const host::Decimal& decimal) {
    std::string_view text = decimal.text;
    if (text.find('.') != text.npos) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        if (text.ends_with('.'))
            text.remove_suffix(1);
    }
    return std::string(text == "-0" ? "0" : text);
}

/// The value of a conversion to a whole number: text is converted by itself, everything else by way of a double.
template <class Int, Int (*fromText)(std::string_view), Int (*fromNumber)(double)>
Int ToWhole(const host::Value& value) {
    if (const auto* text = value.As<std::string>())
        return fromText(*text);
    return fromNumber(ToDouble(value));
}

} // namespace

std::string ToText(Variant value) {
    return std::visit(Overloaded{
                          [](host::Empty) { return std::string(); },
                          [](host::Null) -> std::string { RaiseRuntimeError(en::invalidUseOfNull); },
                          [](bool truth) { return std::string(truth ? "True" : "False"); },
                          [](std::int64_t number) { return std::to_string(number); },
                          [](float number) { return SingleText(number); },
                          [](double number) { return NumberText(number); },
                          [](const host::Decimal& decimal) { return DecimalText(decimal); },
                          [](const std::string& text) { return text; },
                          [](host::Date date) { return DateText(date); },
                          [](const host::Bytes&) -> std::string { RaiseRuntimeError(en::typeMismatch); },
                      },
                      value.value().storage());
}

double ToDouble(Variant value) {
    return std::visit(Overloaded{
                          [](host::Empty) { return 0.0; },
                          [](host::Null) -> double { RaiseRuntimeError(en::invalidUseOfNull); },
                          [](bool truth) { return truth ? -1.0 : 0.0; },
                          [](std::int64_t number) { return static_cast<double>(number); },
                          [](float number) { return double{number}; },
                          [](double number) { return number; },
                          [](const host::Decimal& decimal) { return DecimalNumber(decimal); },
                          [](const std::string& text) { return ToDouble(std::string_view(text)); },
                          [](host::Date date) { return date.days; },
                          [](const host::Bytes&) -> double { RaiseRuntimeError(en::typeMismatch); },
                      },
                      value.value().storage());
}

std::int16_t ToInt16(Variant value) { return ToWhole<std::int16_t, ToInt16, ToInt16>(value.value()); }
std::int32_t ToInt32(Variant value) { return ToWhole<std::int32_t, ToInt32, ToInt32>(value.value()); }

bool ToBoolean(Variant value) {
    if (const auto* text = value.value().As<std::string>())
        return ToBoolean(std::string_view(*text));
    return ToDouble(value) != 0;
}

host::Date ToDate(Variant value) {
    if (const auto* text = value.value().As<std::string>())
        return ToDate(std::string_view(*text));
    const host::Date date{ToDouble(value)};
    if (!SplitDate(date))
        RaiseRuntimeError(en::overflow);
    return date;
}

std::string FormatDate(Variant value) {
    if (value.value().IsNull() || value.value().IsEmpty())
        return {};
    if (const auto* text = value.value().As<std::string>())
        return FormatDate(std::string_view(*text));
    const host::Date date{ToDouble(value)};
    return SplitDate(date) ? FormatDate(date) : ToText(value);
}

} // namespace ModPub
