#pragma once

#include "host/Value.h"

#include <optional>
#include <string>
#include <string_view>

/// Dates as OLE Automation reads and writes them under the Chinese (PRC) locale: year, month, day.
namespace ModPub {

/// A date and time of day taken apart.
struct DateParts {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const DateParts&) const = default;
};

/// Number of days in a month of the Gregorian calendar.
int DaysInMonth(int year, int month) noexcept;

/// The date that `parts` name, or nothing when there is no such day or time or the year is not 100 to 9999.
std::optional<host::Date> MakeDate(const DateParts& parts) noexcept;

/// Takes `date` apart, rounded to the second; nothing outside the years 100 to 9999.
std::optional<DateParts> SplitDate(host::Date date) noexcept;

/// The date that `text` writes, or nothing when it is no date.
/// Two or three numbers are separated by "-", "/", blanks, commas and read in the order year, month, day;
/// where that gives no day, in the order month-day-year, year-day-month, day-month-year. Two numbers are a month and a
/// day of the current year, else a year and a month. A month may stand by its name, and 年, 月,
/// 日 say what the number before them is. Years 0 to 29 are 2000 to 2029,
/// years 30 to 99 are 1930 to 1999. A time (numbers joined by ":" or ".", or an hour with 上午, 下午, AM or PM) may
/// stand before or behind the date, or alone, which gives day 0. A number alone is no date.
std::optional<host::Date> ParseDate(std::string_view text);

/// Whether `text` is a date.
bool IsDate(std::string_view text);

/// `text` as a date (`CDate`). Throws error 13 when it is none.
host::Date ToDate(std::string_view text);

/// `date` as text (`CStr`): "2023/5/1", with " 8:30:00" behind it when it has a time; day 0 is the time alone.
/// Throws error 5 outside the years 100 to 9999.
std::string DateText(host::Date date);

/// `Format(date, "YYYY-MM-DD")`. Throws error 5 outside the years 100 to 9999.
std::string FormatDate(host::Date date);

/// `Format(text, "YYYY-MM-DD")`: a text that is a date, or a number that counts the days of one, gives that date;
/// every other text, the empty one included, comes back unchanged.
std::string FormatDate(std::string_view text);

} // namespace ModPub
