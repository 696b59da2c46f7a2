#include "refhost/sql/types/ExactNumber.h"

#include "text/Digit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include <fmt/format.h>

namespace refhost::sql {
namespace {

/// The most digits an operand may have.
constexpr int maxDigits = 80;

using Word = std::uint64_t;
constexpr int digitsOfAWord = std::numeric_limits<Word>::digits10;

constexpr std::array<Word, digitsOfAWord + 1> powersOfTen = [] {
    std::array<Word, digitsOfAWord + 1> powers{};
    Word power = 1;
    for (Word& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

/// Multiplies by ten `times` times.
template <class Digits> void ScaleUp(Digits& digits, int times) {
    for (; times > 0; times -= digitsOfAWord) {
        digits *= powersOfTen[static_cast<std::size_t>(std::min(times, digitsOfAWord))];
    }
}

/// Divides by ten `times` times, cutting off.
template <class Digits> void ScaleDown(Digits& digits, int times) {
    for (; times > 0; times -= digitsOfAWord) {
        digits /= powersOfTen[static_cast<std::size_t>(std::min(times, digitsOfAWord))];
    }
}

} // namespace

std::optional<ExactNumber> ExactNumber::Parse(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    ExactNumber number;
    bool anyDigit = false;
    bool point = false;
    int digits = 0;
    // Digits that are not in the number yet.
    Word word = 0;
    int inWord = 0;
    const auto take = [&] {
        ScaleUp(number.digits_, inWord);
        number.digits_ += word;
        word = 0;
        inWord = 0;
    };
    for (const char c : text) {
        if (c == '.' && !point) {
            point = true;
            continue;
        }
        if (!text::IsDigit(c)) {
            return std::nullopt;
        }
        anyDigit = true;
        digits += digits > 0 || c != '0' ? 1 : 0;
        number.scale_ += point ? 1 : 0;
        if (digits > maxDigits || number.scale_ > maxDigits) {
            return std::nullopt;
        }
        word = word * 10 + static_cast<Word>(c - '0');
        if (++inWord == digitsOfAWord) {
            take();
        }
    }
    if (!anyDigit) {
        return std::nullopt;
    }
    take();
    if (negative) {
        number.digits_ = -number.digits_;
    }
    return number;
}

std::optional<ExactNumber> ExactNumber::FromDouble(double value) {
    if (!std::isfinite(value) || std::fabs(value) >= 1e60) {
        return std::nullopt;
    }
    // fmt's default digits are the shortest that read back as the same double.
    const std::string digits = fmt::format("{}", value);
    const std::size_t exponentAt = digits.find('e');
    if (exponentAt == std::string::npos) {
        return Parse(digits);
    }
    int exponent = 0;
    const char* first = digits.c_str() + exponentAt + 1;
    first += *first == '+' ? 1 : 0;
    std::from_chars(first, digits.data() + digits.size(), exponent);
    std::optional<ExactNumber> number = Parse(std::string_view(digits).substr(0, exponentAt));
    if (!number) {
        return std::nullopt;
    }
    const int pointless = std::max(0, exponent - number->scale_);
    ScaleUp(number->digits_, pointless);
    exponent -= pointless;
    if (number->scale_ - exponent > maxDigits) {
        return ExactNumber();
    }
    number->scale_ -= exponent;
    return number;
}

std::string ExactNumber::ToText() const {
    std::string digits = Digits(abs(digits_)).str();
    const auto scale = static_cast<std::size_t>(scale_);
    if (digits.size() <= scale) {
        digits.insert(0, scale + 1 - digits.size(), '0');
    }
    if (scale > 0) {
        digits.insert(digits.size() - scale, 1, '.');
    }
    if (IsNegative()) {
        digits.insert(0, 1, '-');
    }
    return digits;
}

double ExactNumber::ToDouble() const {
    const std::string text = ToText();
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::optional<std::int64_t> ExactNumber::ToInteger() const {
    const std::string text = Truncated(0).ToText();
    std::int64_t value = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (code != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

int ExactNumber::WholeDigits() const {
    const ExactNumber whole = Truncated(0);
    return whole.IsZero() ? 0 : static_cast<int>(Digits(abs(whole.digits_)).str().size());
}

ExactNumber ExactNumber::Truncated(int scale) const {
    ExactNumber number(digits_, scale);
    ScaleUp(number.digits_, scale - scale_);
    ScaleDown(number.digits_, scale_ - scale);
    return number;
}

ExactNumber ExactNumber::Rescaled(int scale) const {
    if (scale >= scale_) {
        return Truncated(scale);
    }
    ExactNumber number = Truncated(scale + 1);
    const Digits last = number.digits_ % 10;
    number.digits_ /= 10;
    number.scale_ = scale;
    if (last >= 5) {
        ++number.digits_;
    } else if (last <= -5) {
        --number.digits_;
    }
    return number;
}

ExactNumber operator+(const ExactNumber& left, const ExactNumber& right) {
    const int scale = std::max(left.scale_, right.scale_);
    return {left.Truncated(scale).digits_ + right.Truncated(scale).digits_, scale};
}

ExactNumber operator-(const ExactNumber& left, const ExactNumber& right) { return left + right.Negated(); }

ExactNumber operator*(const ExactNumber& left, const ExactNumber& right) {
    return {left.digits_ * right.digits_, left.scale_ + right.scale_};
}

ExactNumber Divide(const ExactNumber& left, const ExactNumber& right, int scale) {
    const ExactNumber dividend = left.Truncated(std::max(left.scale_, scale + right.scale_));
    const ExactNumber quotient(dividend.digits_ / right.digits_, dividend.scale_ - right.scale_);
    return quotient.Truncated(scale);
}

ExactNumber Modulo(const ExactNumber& left, const ExactNumber& right) {
    const int scale = std::max(left.scale_, right.scale_);
    return {left.Truncated(scale).digits_ % right.Truncated(scale).digits_, scale};
}

} // namespace refhost::sql
