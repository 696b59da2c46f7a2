#pragma once

#include "host/Value.h"

#include <cstdint>
#include <string>

/// The run-time's conversions of a Variant.
namespace ModPub {

/// A Variant as argument. It keeps a text from turning into a Variant where a function takes either.
class Variant {
public:
    Variant(const host::Value& value) noexcept : value_(value) {}
    const host::Value& value() const noexcept { return value_; }

private:
    const host::Value& value_;
};

/// The value as text (`CStr`): the empty text for Empty, "True" or "False", a number's or date's text, a decimal
/// without trailing zeros. Throws error 94 for Null, 13 for bytes.
std::string ToText(Variant value);

/// The value as a number. Empty is 0, true is -1, a date its day number. Throws error 94 for Null, 13 for bytes and for
/// a text that is no number, 6 outside the range.
double ToDouble(Variant value);
std::int16_t ToInt16(Variant value);
std::int32_t ToInt32(Variant value);

/// The value as a Boolean: a number is true when it is not 0, Empty is false. Throws error 94 for Null, 13 for bytes
/// and for a text that is neither a Boolean nor a number.
bool ToBoolean(Variant value);

/// The value as a date. Throws error 94 for Null, 13 for bytes and for a text that is no date, 6 for a number outside
/// the years 100 to 9999.
host::Date ToDate(Variant value);

/// `Format(value, "YYYY-MM-DD")`. Null and Empty give the empty text; a number is taken as a day number, or comes back
/// as its text when no date has it; text as `FormatDate(text)`. Throws error 13 for bytes.
std::string FormatDate(Variant value);

} // namespace ModPub
