#pragma once

#include "refhost/sql/types/Types.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace refhost::sql {

/// Dates are counted in ticks of 100 ns since 1899-12-30, the day 0 of OLE Automation.
using Ticks = std::int64_t;
inline constexpr Ticks ticksPerSecond = 10'000'000;
inline constexpr Ticks ticksPerDay = 86'400 * ticksPerSecond;
/// Day 0 of SQL Server, 1900-01-01, as days since day 0 of OLE Automation.
inline constexpr std::int64_t serverDayZero = 2;

/// The whole units that lie at or before `ticks`, before day 0 as behind it.
constexpr Ticks FloorTo(Ticks ticks, Ticks unit) {
    const Ticks rest = ticks % unit;
    return ticks - rest - (rest < 0 ? unit : 0);
}

struct Calendar {
    std::int64_t year = 1900;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    /// Part of the second in ticks.
    Ticks fraction = 0;
};

Calendar ToCalendar(Ticks ticks);
/// `calendar` must be a real date.
Ticks ToTicks(const Calendar& calendar);
/// @param month 1 to 12
int DaysInMonth(std::int64_t year, int month);

// Orders of SET DATEFORMAT that no style of `convert` has, in a style's place.
inline constexpr int yearDayMonthStyle = -1;
inline constexpr int monthYearDayStyle = -2;
inline constexpr int dayYearMonthStyle = -3;

/// The date that a text means, its day, month and year in the order of convert's `style` where they are separated
/// numbers. Throws SQL Server's conversion errors; `source` is the text's type, named in them.
Ticks ParseDate(std::string_view text, Base source, const Type& target, int style);
/// The nearest value that a type can hold: date whole days, smalldatetime minutes, datetime 1/300 seconds, datetime2
/// the digits of its fraction. Throws the overflow error when `ticks` lies outside the type's years.
Ticks RoundDate(Ticks ticks, const Type& type);
/// A date as `convert` shows it in `style`. Throws error 281's message for a style that there is not.
std::string FormatDate(Ticks ticks, const Type& type, int style);
/// The month's and the day of the week's name, as datename gives them.
std::string_view MonthName(int month);
std::string_view DayName(int weekday);

/// OLE Automation's date and back.
double ToOleDate(Ticks ticks);

} // namespace refhost::sql
