#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace ModPub {

/// What a number of a date stands for.
enum class DateUnit { unknown, year, month, day };

/// A number of a date, or a month given by its name.
struct DateField {
    int value = 0;
    /// Known of a month's name and of a number that 年, 月 or 日 follows.
    DateUnit unit = DateUnit::unknown;

    /// Whether the field can stand for `wanted`.
    bool CanBe(DateUnit wanted) const noexcept { return unit == DateUnit::unknown || unit == wanted; }
};

enum class HalfDay { none, morning, afternoon };

/// The numbers that a date's text is made of, sorted into date and time but not yet into year, month and
/// day.
struct DateFields {
    /// Two or three numbers, or none for a time alone.
    std::array<DateField, 3> date{};
    std::size_t dateCount = 0;
    /// Hour, minute and second as written.
    std::array<int, 3> time{};
    HalfDay halfDay = HalfDay::none;
};

/// Takes a date's text apart, or gives nothing when no date is written so.
std::optional<DateFields> ReadDateFields(std::string_view text) noexcept;

} // namespace ModPub
