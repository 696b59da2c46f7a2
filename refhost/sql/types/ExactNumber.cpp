#include "refhost/sql/types/ExactNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include <fmt/format.h>

namespace refhost::sql {
namespace {

constexpr std::uint32_t limbBase = 1'000'000'000;
constexpr int digitsPerLimb = 9;
/// The most digits an operand may have, so that products of two 38-digit numbers and their carries fit.
constexpr int maxDigits = 80;

} // namespace

ExactNumber::ExactNumber(std::int64_t value) : negative_(value < 0) {
    auto rest = negative_ ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
    for (std::size_t i = 0; rest != 0; ++i) {
        limbs_.at(i) = static_cast<std::uint32_t>(rest % limbBase);
        rest /= limbBase;
    }
}

int ExactNumber::Compare(const Limbs& left, const Limbs& right) {
    for (std::size_t i = limbCount; i-- > 0;) {
        if (left[i] != right[i]) {
            return left[i] < right[i] ? -1 : 1;
        }
    }
    return 0;
}

void ExactNumber::AddTo(Limbs& left, const Limbs& right) {
    std::uint32_t carry = 0;
    for (std::size_t i = 0; i < limbCount; ++i) {
        const std::uint32_t sum = left[i] + right[i] + carry;
        carry = sum >= limbBase ? 1 : 0;
        left[i] = sum - carry * limbBase;
    }
}

void ExactNumber::SubtractFrom(Limbs& left, const Limbs& right) {
    std::uint32_t borrow = 0;
    for (std::size_t i = 0; i < limbCount; ++i) {
        const std::uint32_t taken = right[i] + borrow;
        borrow = left[i] < taken ? 1 : 0;
        left[i] = left[i] + borrow * limbBase - taken;
    }
}

std::uint32_t ExactNumber::MultiplyAdd(Limbs& limbs, std::uint32_t factor, std::uint32_t addend) {
    std::uint64_t carry = addend;
    for (std::uint32_t& limb : limbs) {
        const std::uint64_t value = std::uint64_t{limb} * factor + carry;
        limb = static_cast<std::uint32_t>(value % limbBase);
        carry = value / limbBase;
    }
    return static_cast<std::uint32_t>(carry);
}

std::uint32_t ExactNumber::DivideSmall(Limbs& limbs, std::uint32_t divisor) {
    std::uint64_t rest = 0;
    for (std::size_t i = limbCount; i-- > 0;) {
        const std::uint64_t value = rest * limbBase + limbs[i];
        limbs[i] = static_cast<std::uint32_t>(value / divisor);
        rest = value % divisor;
    }
    return static_cast<std::uint32_t>(rest);
}

int ExactNumber::DigitsOf(const Limbs& limbs) {
    for (std::size_t i = limbCount; i-- > 0;) {
        if (limbs[i] != 0) {
            int digits = static_cast<int>(i) * digitsPerLimb;
            for (std::uint32_t rest = limbs[i]; rest != 0; rest /= 10) {
                ++digits;
            }
            return digits;
        }
    }
    return 0;
}

ExactNumber::Limbs ExactNumber::Quotient(const Limbs& left, const Limbs& right, Limbs& rest) {
    Limbs quotient{};
    rest = Limbs{};
    for (std::size_t i = limbCount; i-- > 0;) {
        std::uint32_t unit = limbBase / 10;
        for (int digit = 0; digit < digitsPerLimb; ++digit, unit /= 10) {
            MultiplyAdd(rest, 10, left[i] / unit % 10);
            std::uint32_t times = 0;
            while (Compare(rest, right) >= 0) {
                SubtractFrom(rest, right);
                ++times;
            }
            MultiplyAdd(quotient, 10, times);
        }
    }
    return quotient;
}

void ExactNumber::Normalize() {
    if (IsZero()) {
        negative_ = false;
    }
}

std::optional<ExactNumber> ExactNumber::Parse(std::string_view text) {
    ExactNumber number;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        number.negative_ = text.front() == '-';
        text.remove_prefix(1);
    }
    bool anyDigit = false;
    bool point = false;
    int digits = 0;
    for (const char c : text) {
        if (c == '.' && !point) {
            point = true;
            continue;
        }
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        anyDigit = true;
        digits += digits > 0 || c != '0' ? 1 : 0;
        number.scale_ += point ? 1 : 0;
        if (digits > maxDigits || number.scale_ > maxDigits) {
            return std::nullopt;
        }
        MultiplyAdd(number.limbs_, 10, static_cast<std::uint32_t>(c - '0'));
    }
    if (!anyDigit) {
        return std::nullopt;
    }
    number.Normalize();
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
    for (; exponent > 0; --exponent) {
        if (number->scale_ > 0) {
            --number->scale_;
        } else {
            MultiplyAdd(number->limbs_, 10, 0);
        }
    }
    if (number->scale_ - exponent > maxDigits) {
        return ExactNumber();
    }
    number->scale_ -= exponent;
    return number;
}

std::string ExactNumber::ToText() const {
    std::string digits;
    for (std::size_t i = limbCount; i-- > 0;) {
        if (!digits.empty()) {
            digits += fmt::format("{:09}", limbs_[i]);
        } else if (limbs_[i] != 0) {
            digits = std::to_string(limbs_[i]);
        }
    }
    const auto scale = static_cast<std::size_t>(scale_);
    if (digits.size() <= scale) {
        digits.insert(0, scale + 1 - digits.size(), '0');
    }
    if (scale > 0) {
        digits.insert(digits.size() - scale, 1, '.');
    }
    if (negative_) {
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

bool ExactNumber::IsZero() const {
    return std::all_of(limbs_.begin(), limbs_.end(), [](std::uint32_t limb) { return limb == 0; });
}

int ExactNumber::WholeDigits() const { return std::max(0, DigitsOf(limbs_) - scale_); }

ExactNumber ExactNumber::Truncated(int scale) const {
    ExactNumber number = *this;
    for (; number.scale_ < scale; ++number.scale_) {
        MultiplyAdd(number.limbs_, 10, 0);
    }
    for (; number.scale_ > scale; --number.scale_) {
        DivideSmall(number.limbs_, 10);
    }
    number.Normalize();
    return number;
}

ExactNumber ExactNumber::Rescaled(int scale) const {
    if (scale >= scale_) {
        return Truncated(scale);
    }
    ExactNumber number = Truncated(scale + 1);
    const std::uint32_t dropped = DivideSmall(number.limbs_, 10);
    number.scale_ = scale;
    if (dropped >= 5) {
        Limbs one{};
        one[0] = 1;
        AddTo(number.limbs_, one);
    }
    number.negative_ = negative_;
    number.Normalize();
    return number;
}

ExactNumber ExactNumber::Negated() const {
    ExactNumber number = *this;
    number.negative_ = !negative_;
    number.Normalize();
    return number;
}

ExactNumber operator+(const ExactNumber& left, const ExactNumber& right) {
    const int scale = std::max(left.scale_, right.scale_);
    ExactNumber sum = left.Truncated(scale);
    const ExactNumber other = right.Truncated(scale);
    if (sum.negative_ == other.negative_) {
        ExactNumber::AddTo(sum.limbs_, other.limbs_);
    } else if (ExactNumber::Compare(sum.limbs_, other.limbs_) >= 0) {
        ExactNumber::SubtractFrom(sum.limbs_, other.limbs_);
    } else {
        ExactNumber::Limbs difference = other.limbs_;
        ExactNumber::SubtractFrom(difference, sum.limbs_);
        sum.limbs_ = difference;
        sum.negative_ = other.negative_;
    }
    sum.Normalize();
    return sum;
}

ExactNumber operator-(const ExactNumber& left, const ExactNumber& right) { return left + right.Negated(); }

ExactNumber operator*(const ExactNumber& left, const ExactNumber& right) {
    ExactNumber product;
    product.scale_ = left.scale_ + right.scale_;
    product.negative_ = left.negative_ != right.negative_;
    for (std::size_t i = ExactNumber::limbCount; i-- > 0;) {
        ExactNumber::Limbs shifted = left.limbs_;
        ExactNumber::MultiplyAdd(shifted, right.limbs_[i], 0);
        // Horner's scheme: what is gathered so far moves up by one limb.
        for (std::size_t j = ExactNumber::limbCount; j-- > 1;) {
            product.limbs_[j] = product.limbs_[j - 1];
        }
        product.limbs_[0] = 0;
        ExactNumber::AddTo(product.limbs_, shifted);
    }
    product.Normalize();
    return product;
}

ExactNumber Divide(const ExactNumber& left, const ExactNumber& right, int scale) {
    ExactNumber quotient = left.Truncated(std::max(left.scale_, scale + right.scale_));
    ExactNumber::Limbs rest{};
    quotient.limbs_ = ExactNumber::Quotient(quotient.limbs_, right.limbs_, rest);
    quotient.scale_ -= right.scale_;
    quotient.negative_ = left.negative_ != right.negative_;
    quotient.Normalize();
    return quotient.Truncated(scale);
}

ExactNumber Modulo(const ExactNumber& left, const ExactNumber& right) {
    const int scale = std::max(left.scale_, right.scale_);
    ExactNumber rest = left.Truncated(scale);
    ExactNumber::Limbs limbs{};
    ExactNumber::Quotient(rest.limbs_, right.Truncated(scale).limbs_, limbs);
    rest.limbs_ = limbs;
    rest.Normalize();
    return rest;
}

} // namespace refhost::sql
