#include "ModPub/Numbers.h"

#include "ModPub/RuntimeErrors.h"
#include "ModPub/Text.h"
#include "text/Digit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace ModPub {

namespace {

namespace en = host::error_number;

constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
/// The ASCII letter in lower case; other characters may change into anything that is no letter.
constexpr char Lower(char c) { return static_cast<char>(c | 0x20); }

/// Moves `at` over the digits that start there. @return how many there were
std::size_t SkipDigits(std::string_view text, std::size_t& at) {
    const std::size_t start = at;
    while (at < text.size() && text::IsDigit(text[at]))
        ++at;
    return at - start;
}

/// Length of the exponent ("E3", "d-05") at `at`, 0 when there is none.
std::size_t ExponentLength(std::string_view text, std::size_t at) {
    if (at >= text.size() || (Lower(text[at]) != 'e' && Lower(text[at]) != 'd'))
        return 0;
    std::size_t end = at + 1;
    if (end < text.size() && (text[end] == '+' || text[end] == '-'))
        ++end;
    return SkipDigits(text, end) > 0 ? end - at : 0;
}

/// Whether a decimal number that a double cannot hold is too large rather than too small.
bool IsTooLarge(std::string_view number) {
    const std::size_t mantissaEnd = std::min(number.find('e'), number.size());
    const std::string_view mantissa = number.substr(0, mantissaEnd);
    const bool negative = number.substr(mantissaEnd).starts_with("e-");
    const std::size_t exponentStart = number.find_first_of("123456789", mantissaEnd);
    long long exponent = 0;
    if (exponentStart != number.npos) {
        const auto [end, error] =
            std::from_chars(number.data() + exponentStart, number.data() + number.size(), exponent);
        if (error != std::errc{})
            return !negative;
    }
    const auto point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<long long>(mantissa.find_first_not_of("0."));
    return (negative ? -exponent : exponent) + point - first > 0;
}

/// The value of digits with at most one point and an exponent, without sign. Throws error 6 when it is too large.
double DecimalValue(std::string_view number) {
    double value = 0;
    const auto read = [&] { return std::from_chars(number.data(), number.data() + number.size(), value); };
    if (const auto [end, error] = read(); error == std::errc() && end == number.data() + number.size())
        return value;
    std::string withE(number);
    if (const std::size_t letter = number.find_first_of("EdD"); letter != number.npos)
        withE[letter] = 'e';
    number = withE;
    if (read().ec == std::errc::result_out_of_range) {
        if (IsTooLarge(number))
            RaiseRuntimeError(en::overflow);
        return 0;
    }
    return value;
}

/// Digits of another base behind "&H" or "&O".
struct RadixDigits {
    std::uint64_t bits = 0;
    /// Length of the prefix and the digits; 0 when there are none.
    std::size_t length = 0;
    bool tooLarge = false;
};

RadixDigits ReadRadixDigits(std::string_view text) {
    if (text.size() < 3 || text[0] != '&' || (Lower(text[1]) != 'h' && Lower(text[1]) != 'o'))
        return {};
    RadixDigits digits;
    const char* first = text.data() + 2;
    const auto [end, error] =
        std::from_chars(first, text.data() + text.size(), digits.bits, Lower(text[1]) == 'h' ? 16 : 8);
    if (end != first)
        digits.length = static_cast<std::size_t>(end - text.data());
    digits.tooLarge = error == std::errc::result_out_of_range;
    return digits;
}

/// A text read as a whole number or decimal: its value, and its bits where it was written as bits.
struct ParsedNumber {
    double value = 0;
    std::optional<std::uint64_t> bits;
};

/// Reads what may stand around the digits of a number, from either side.
class NumberFrame {
public:
    explicit NumberFrame(std::string_view text) : rest_(text) {}

    std::string_view rest() const { return rest_; }
    bool negative() const { return minus_ || parenthesis_; }
    bool plain() const { return !minus_ && !plus_ && !parenthesis_ && !currency_; }

    void ReadFront() {
        for (;;) {
            if (rest_.empty())
                return;
            if (IsBlank(rest_.front()) || Take("+", plus_) || Take("-", minus_) || Take("(", parenthesis_)) {
                rest_.remove_prefix(1);
            } else if (const std::size_t length = currency_ ? 0 : CurrencyLength()) {
                currency_ = true;
                rest_.remove_prefix(length);
            } else {
                return;
            }
        }
    }

    /// @return whether nothing is left that does not belong to the number
    bool ReadBack() {
        const bool signBehindAllowed = !plus_ && !negative();
        bool closed = !parenthesis_;
        bool signBehind = false;
        while (!rest_.empty()) {
            const char c = rest_.front();
            if (IsBlank(c)) {
                rest_.remove_prefix(1);
            } else if ((c == '+' || c == '-') && signBehindAllowed && !signBehind) {
                signBehind = true;
                minus_ = c == '-';
                rest_.remove_prefix(1);
            } else if (c == ')' && !closed) {
                closed = true;
                rest_.remove_prefix(1);
            } else if (const std::size_t length = currency_ ? 0 : CurrencyLength()) {
                currency_ = true;
                rest_.remove_prefix(length);
            } else {
                return false;
            }
        }
        return closed;
    }

    void Skip(std::size_t length) { rest_.remove_prefix(length); }

private:
    /// Whether `mark` stands in front for the first time.
    bool Take(std::string_view mark, bool& seen) const {
        if (seen || !rest_.starts_with(mark))
            return false;
        seen = true;
        return true;
    }

    std::size_t CurrencyLength() const {
        for (const std::string_view yuan : {"¥", "￥"}) {
            if (rest_.starts_with(yuan))
                return yuan.size();
        }
        return 0;
    }

    std::string_view rest_;
    bool plus_ = false;
    bool minus_ = false;
    bool parenthesis_ = false;
    bool currency_ = false;
};

std::optional<ParsedNumber> Parse(std::string_view text) {
    NumberFrame frame(text);
    frame.ReadFront();
    const std::string_view rest = frame.rest();
    if (const RadixDigits digits = ReadRadixDigits(rest); digits.length > 0 && frame.plain()) {
        frame.Skip(digits.length);
        if (!frame.ReadBack() || !frame.plain())
            return std::nullopt;
        if (digits.tooLarge)
            RaiseRuntimeError(en::overflow);
        return ParsedNumber{static_cast<double>(digits.bits), digits.bits};
    }

    std::size_t at = 0;
    bool anyDigit = false;
    bool point = false;
    bool comma = false;
    for (; at < rest.size(); ++at) {
        if (text::IsDigit(rest[at])) {
            anyDigit = true;
        } else if (rest[at] == ',' && anyDigit) {
            comma = true;
        } else if (rest[at] == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (!anyDigit)
        return std::nullopt;
    const std::size_t length = at + ExponentLength(rest, at);
    frame.Skip(length);
    if (!frame.ReadBack())
        return std::nullopt;

    double value = 0;
    if (comma) {
        std::string ungrouped(rest.substr(0, length));
        std::erase(ungrouped, ',');
        value = DecimalValue(ungrouped);
    } else {
        value = DecimalValue(rest.substr(0, length));
    }
    return ParsedNumber{frame.negative() && value != 0 ? -value : value, std::nullopt};
}

ParsedNumber ParseOrRaise(std::string_view text) {
    const std::optional<ParsedNumber> parsed = Parse(text);
    if (!parsed)
        RaiseRuntimeError(en::typeMismatch);
    return *parsed;
}

/// `number` rounded to the nearest whole number, a half to the even one, whatever rounding the processor is set to.
double RoundHalfEven(double number) {
    const double floor = std::floor(number);
    const double fraction = number - floor;
    if (fraction < 0.5)
        return floor;
    if (fraction > 0.5)
        return floor + 1;
    return std::fmod(floor, 2) == 0 ? floor : floor + 1;
}

template <class Int> Int ToWhole(double number) {
    const double rounded = RoundHalfEven(number);
    // Written so that NaN is outside.
    if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()))
        RaiseRuntimeError(en::overflow);
    return static_cast<Int>(rounded);
}

template <class Int> Int ToWhole(std::string_view text) {
    const ParsedNumber parsed = ParseOrRaise(text);
    using Bits = std::make_unsigned_t<Int>;
    if (parsed.bits && *parsed.bits <= std::numeric_limits<Bits>::max())
        return static_cast<Int>(static_cast<Bits>(*parsed.bits));
    return ToWhole<Int>(parsed.value);
}

/// Significant digits that a number has as text.
constexpr int doubleDigits = 15;
constexpr int singleDigits = 7;

/// A number's significant decimal digits: 0.d1d2d3... × 10^pointPosition.
struct DecimalDigits {
    std::array<char, doubleDigits> digits{};
    /// Digits without trailing zeros; 0 for the number 0.
    int count = 0;
    int pointPosition = 0;
};

/// Writes `count` significant digits of `magnitude` into `digits`. @return the power of ten of the first one
int WriteDigits(double magnitude, int count, char* digits) {
    // d.ddd…E±xxx
    std::array<char, 48> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                            std::chars_format::scientific, count - 1);
    digits[0] = buffer[0];
    std::copy_n(buffer.begin() + 2, count - 1, digits + 1);
    const char* power = buffer.data() + count + 2;
    int exponent = 0;
    std::from_chars(*power == '+' ? power + 1 : power, end, exponent);
    return exponent;
}

/// Whether the digits behind the `significant` ones round these up: a half rounds away from zero.
bool RoundsUp(double magnitude, int significant, std::string_view further) {
    if (further != "50")
        return further > "50";
    // Rounded themselves, they may hide a number just below the half.
    constexpr int enough = 2 * doubleDigits;
    std::array<char, enough> digits{};
    WriteDigits(magnitude, enough, digits.data());
    return digits[static_cast<std::size_t>(significant)] >= '5';
}

DecimalDigits SplitDecimal(double magnitude, int significant) {
    DecimalDigits result;
    if (magnitude == 0)
        return result;
    std::array<char, doubleDigits + 2> digits{};
    result.pointPosition = WriteDigits(magnitude, significant + 2, digits.data()) + 1;
    result.count = significant;
    if (RoundsUp(magnitude, significant, {digits.data() + significant, 2})) {
        while (result.count > 0 && digits[static_cast<std::size_t>(result.count) - 1] == '9')
            --result.count;
        if (result.count == 0) {
            result.count = 1;
            digits[0] = '0';
            ++result.pointPosition;
        }
        ++digits[static_cast<std::size_t>(result.count) - 1];
    }
    while (digits[static_cast<std::size_t>(result.count) - 1] == '0')
        --result.count;
    std::copy_n(digits.begin(), result.count, result.digits.begin());
    return result;
}

std::string NotFiniteText(double number) {
    if (std::isnan(number))
        return std::signbit(number) ? "-1.#IND" : "1.#QNAN";
    return number < 0 ? "-1.#INF" : "1.#INF";
}

/// The text of a number that was written with four decimals at the most, its magnitude times `shift` being `shifted`.
std::string ShortDecimalText(bool negative, std::int64_t shifted, std::int64_t shift) {
    std::string text = negative ? "-" : "";
    text.append(std::to_string(shifted / shift)).append(1, '.');
    for (std::int64_t rest = shifted % shift; rest != 0; rest = rest * 10 % shift)
        text += static_cast<char>('0' + rest * 10 / shift);
    return text;
}

/// `number` with so many significant digits; a magnitude from `below` on has more before the point.
std::string TextOf(double number, int significant, double below) {
    if (!std::isfinite(number))
        return NotFiniteText(number);
    // Most amounts are whole; their digits need no rounding.
    if (std::fabs(number) < below && std::trunc(number) == number)
        return std::to_string(static_cast<std::int64_t>(number));
    // Most others have few decimals: digits that outlive the way to a double and back.
    constexpr std::int64_t shift = 10000;
    const double shifted = std::fabs(number) * shift;
    if (shifted < below && std::trunc(shifted) == shifted && shifted / shift == std::fabs(number))
        return ShortDecimalText(number < 0, static_cast<std::int64_t>(shifted), shift);
    const DecimalDigits decimal = SplitDecimal(std::fabs(number), significant);
    const auto count = static_cast<std::size_t>(decimal.count);
    const std::string_view digits(decimal.digits.data(), count);
    const int point = decimal.pointPosition;
    std::string text;
    if (number < 0)
        text += '-';
    if (point > significant || decimal.count - point > significant) {
        text += digits[0];
        if (count > 1)
            text.append(1, '.').append(digits.substr(1));
        const int exponent = point - 1;
        text += exponent < 0 ? "E-" : "E+";
        const int magnitude = std::abs(exponent);
        if (magnitude < 10)
            text += '0';
        text += std::to_string(magnitude);
    } else if (point <= 0) {
        text.append("0.").append(static_cast<std::size_t>(-point), '0').append(digits);
    } else if (decimal.count <= point) {
        text.append(digits).append(static_cast<std::size_t>(point - decimal.count), '0');
    } else {
        const auto whole = static_cast<std::size_t>(point);
        text.append(digits.substr(0, whole)).append(1, '.').append(digits.substr(whole));
    }
    return text;
}

} // namespace

double Val(std::string_view text) {
    constexpr std::string_view ignored = " \t\n";
    std::string compact;
    if (text.find_first_of(ignored) != text.npos) {
        compact.reserve(text.size());
        for (const char c : text) {
            if (ignored.find(c) == ignored.npos)
                compact += c;
        }
        text = compact;
    }

    if (const RadixDigits digits = ReadRadixDigits(text); digits.length > 0) {
        if (digits.tooLarge || digits.bits > std::numeric_limits<std::uint32_t>::max())
            RaiseRuntimeError(en::overflow);
        const bool isLong = digits.length < text.size() && text[digits.length] == '&';
        if (!isLong && digits.bits <= std::numeric_limits<std::uint16_t>::max())
            return static_cast<std::int16_t>(static_cast<std::uint16_t>(digits.bits));
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(digits.bits));
    }

    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    std::size_t length = 0;
    std::size_t digits = SkipDigits(text, length);
    if (length < text.size() && text[length] == '.')
        digits += SkipDigits(text, ++length);
    if (digits == 0)
        return 0;
    length += ExponentLength(text, length);
    const double value = DecimalValue(text.substr(0, length));
    return negative && value != 0 ? -value : value;
}

std::string NumberText(double number) { return TextOf(number, doubleDigits, 1e15); }

std::string SingleText(float number) { return TextOf(double{number}, singleDigits, 1e7); }

std::optional<double> ParseNumber(std::string_view text) {
    const std::optional<ParsedNumber> parsed = Parse(text);
    return parsed ? std::optional(parsed->value) : std::nullopt;
}

std::optional<double> NumericValue(std::string_view text) {
    try {
        return ParseNumber(text);
    } catch (const host::Error&) {
        return std::nullopt;
    }
}

bool IsNumeric(std::string_view text) { return NumericValue(text).has_value(); }

double ToDouble(std::string_view text) { return ParseOrRaise(text).value; }

std::int16_t ToInt16(double number) { return ToWhole<std::int16_t>(number); }
std::int32_t ToInt32(double number) { return ToWhole<std::int32_t>(number); }
std::int16_t ToInt16(std::string_view text) { return ToWhole<std::int16_t>(text); }
std::int32_t ToInt32(std::string_view text) { return ToWhole<std::int32_t>(text); }

bool ToBoolean(std::string_view text) {
    const std::string upper = UpperCase(text);
    if (upper == "TRUE" || text == "#TRUE#")
        return true;
    if (upper == "FALSE" || text == "#FALSE#")
        return false;
    return ToDouble(text) != 0;
}

double TwoPlaces(double number) {
    if (!std::isfinite(number))
        RaiseRuntimeError(en::overflow);
    const DecimalDigits decimal = SplitDecimal(std::fabs(number), doubleDigits);
    // The hundredths are the digits before position `point + 2`; the digit there decides the rounding.
    const int kept = decimal.pointPosition + 2;
    if (kept < 0 || decimal.count == 0)
        return 0;

    std::int64_t mantissa = 0;
    int exponent = -2;
    if (kept >= decimal.count) {
        for (int i = 0; i < decimal.count; ++i)
            mantissa = mantissa * 10 + (decimal.digits[static_cast<std::size_t>(i)] - '0');
        exponent = decimal.pointPosition - decimal.count;
    } else {
        for (int i = 0; i < kept; ++i)
            mantissa = mantissa * 10 + (decimal.digits[static_cast<std::size_t>(i)] - '0');
        if (decimal.digits[static_cast<std::size_t>(kept)] >= '5')
            ++mantissa;
    }

    const std::string text = std::to_string(mantissa) + 'e' + std::to_string(exponent);
    double rounded = 0;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    return number < 0 && rounded != 0 ? -rounded : rounded;
}

} // namespace ModPub
