#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <boost/multiprecision/cpp_int.hpp>

namespace refhost::sql {

/// An exact decimal number of up to 80 digits; what decimal and money columns compute with.
class ExactNumber {
public:
    ExactNumber() = default;
    explicit ExactNumber(std::int64_t value) : digits_(value) {}

    /// Reads an optional sign, digits and an optional point with digits, nothing else; at most 80 digits.
    static std::optional<ExactNumber> Parse(std::string_view text);
    /// The number nearest to a double as its shortest decimal text shows it; nothing for infinities and beyond 80
    /// digits.
    static std::optional<ExactNumber> FromDouble(double value);

    /// Exactly `Scale()` digits behind the point; no point without any.
    std::string ToText() const;
    double ToDouble() const;
    /// The whole part, rounded towards zero; nothing when it is no 64-bit number.
    std::optional<std::int64_t> ToInteger() const;

    int Scale() const { return scale_; }
    bool IsZero() const { return digits_.is_zero(); }
    bool IsNegative() const { return digits_.sign() < 0; }
    /// Digits before the point, leading zeros aside.
    int WholeDigits() const;

    /// The same value with `scale` digits behind the point, rounded half away from zero.
    ExactNumber Rescaled(int scale) const;
    /// The same, with the surplus digits cut off.
    ExactNumber Truncated(int scale) const;
    ExactNumber Negated() const { return {-digits_, scale_}; }

    friend ExactNumber operator+(const ExactNumber& left, const ExactNumber& right);
    friend ExactNumber operator-(const ExactNumber& left, const ExactNumber& right);
    /// Its scale is the sum of both scales.
    friend ExactNumber operator*(const ExactNumber& left, const ExactNumber& right);
    /// The quotient cut to `scale` digits. `right` must not be zero.
    friend ExactNumber Divide(const ExactNumber& left, const ExactNumber& right, int scale);
    /// The rest of the whole-number division, with the sign of `left`. `right` must not be zero.
    friend ExactNumber Modulo(const ExactNumber& left, const ExactNumber& right);

private:
    /// Room for a number of 80 digits times a power of ten that brings it to another such number's scale, and a little:
    /// 154 digits.
    using Digits = boost::multiprecision::number<boost::multiprecision::cpp_int_backend<
        512, 512, boost::multiprecision::signed_magnitude, boost::multiprecision::unchecked, void>>;

    ExactNumber(const Digits& digits, int scale) : digits_(digits), scale_(scale) {}

    /// The number without its point: its value is `digits_` divided by ten `scale_` times.
    Digits digits_;
    int scale_ = 0;
};

} // namespace refhost::sql
