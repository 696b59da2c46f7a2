#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace refhost::sql {

/// An exact decimal number of up to 80 digits; what decimal and money columns compute with.
class ExactNumber {
public:
    ExactNumber() = default;
    explicit ExactNumber(std::int64_t value);

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
    bool IsZero() const;
    bool IsNegative() const { return negative_; }
    /// Digits before the point, leading zeros aside.
    int WholeDigits() const;

    /// The same value with `scale` digits behind the point, rounded half away from zero.
    ExactNumber Rescaled(int scale) const;
    /// The same, with the surplus digits cut off.
    ExactNumber Truncated(int scale) const;
    ExactNumber Negated() const;

    friend ExactNumber operator+(const ExactNumber& left, const ExactNumber& right);
    friend ExactNumber operator-(const ExactNumber& left, const ExactNumber& right);
    /// Its scale is the sum of both scales.
    friend ExactNumber operator*(const ExactNumber& left, const ExactNumber& right);
    /// The quotient cut to `scale` digits. `right` must not be zero.
    friend ExactNumber Divide(const ExactNumber& left, const ExactNumber& right, int scale);
    /// The rest of the whole-number division, with the sign of `left`. `right` must not be zero.
    friend ExactNumber Modulo(const ExactNumber& left, const ExactNumber& right);

private:
    static constexpr std::size_t limbCount = 12;
    /// Digits in groups of nine, the lowest group first.
    using Limbs = std::array<std::uint32_t, limbCount>;

    static int Compare(const Limbs& left, const Limbs& right);
    static void AddTo(Limbs& left, const Limbs& right);
    static void SubtractFrom(Limbs& left, const Limbs& right);
    static std::uint32_t MultiplyAdd(Limbs& limbs, std::uint32_t factor, std::uint32_t addend);
    static std::uint32_t DivideSmall(Limbs& limbs, std::uint32_t divisor);
    static int DigitsOf(const Limbs& limbs);
    static Limbs Quotient(const Limbs& left, const Limbs& right, Limbs& rest);
    void Normalize();

    Limbs limbs_{};
    bool negative_ = false;
    int scale_ = 0;
};

} // namespace refhost::sql
