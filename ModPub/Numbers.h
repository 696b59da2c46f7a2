#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers and their texts as OLE Automation converts them under the Chinese (PRC) locale: the point is the decimal
/// separator, the comma groups thousands. No member looks at the process's locale.
namespace ModPub {

/// The number that `text` begins with (the run-time's `Val`). Blanks, tabs and line feeds are ignored wherever they
/// stand; reading stops at the first other character that cannot belong to the number; 0 when there is none.
/// An exponent is written with E or D. "&H" and "&O" introduce hexadecimal and octal digits, which are a signed 16-bit
/// number when they fit into 16 bits and no "&" follows them, else a signed 32-bit one.
/// Throws error 6 for a number that is too large.
double Val(std::string_view text);

/// `number` as text (`CStr`): up to 15 significant digits, no grouping, no trailing zeros. It takes the exponent form
/// ("1E+15", "3.33333333333333E-02") when it has more than 15 digits before the point, or would need more than 15
/// behind it.
std::string NumberText(double number);

/// A Single as text (`CStr`): as `NumberText`, with 7 digits in place of 15 ("0.1", "1.677722E+07").
std::string SingleText(float number);

/// The number that the whole of `text` writes, or nothing when it is none: blanks around, one sign before or behind,
/// parentheses for a negative number, the yuan sign, grouping commas, an exponent (E or D), or "&H"/"&O" digits.
/// Throws error 6 for a number that is too large.
std::optional<double> ParseNumber(std::string_view text);

/// The number that a numeric `text` writes; nothing where it is not numeric (`IsNumeric`).
std::optional<double> NumericValue(std::string_view text);

/// Whether `ToDouble(text)` succeeds.
bool IsNumeric(std::string_view text);

/// `text` as a number (`CDbl`). Throws error 13 when it is none, 6 when it is too large.
double ToDouble(std::string_view text);

/// `number` as a whole number, a half rounded to the even neighbour (`CInt`, `CLng`). Throws error 6 outside the range.
std::int16_t ToInt16(double number);
std::int32_t ToInt32(double number);
std::int16_t ToInt16(bool) = delete;
std::int32_t ToInt32(bool) = delete;

/// `text` as a whole number. Throws error 13 when it is no number, 6 outside the range. "&H" and "&O" digits that fill
/// the whole width give the negative number with these bits.
std::int16_t ToInt16(std::string_view text);
std::int32_t ToInt32(std::string_view text);

/// `text` as a Boolean (`CBool`): "True" and "False" in any letter case, "#TRUE#", "#FALSE#", or a number, which is
/// true when it is not 0. Throws error 13 for every other text.
bool ToBoolean(std::string_view text);

/// `number` formatted with "###0.00" and read back: rounded to two places, a half away from zero, from the 15
/// significant digits that the number has as text.
double TwoPlaces(double number);

} // namespace ModPub
