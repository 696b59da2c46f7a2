#include "ModPub/Dates.h"

#include "ModPub/DateFields.h"
#include "ModPub/Numbers.h"
#include "ModPub/RuntimeErrors.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <span>

namespace ModPub {

namespace {

namespace en = host::error_number;

constexpr int firstYear = 100;
constexpr int lastYear = 9999;
constexpr int secondsPerDay = 86400;

/// Day 0 of OLE Automation, 1899-12-30, on the calendar of <chrono>.
constexpr std::chrono::sys_days dayZero = std::chrono::year(1899) / 12 / 30;

int CurrentYear() {
    const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    return static_cast<int>(std::chrono::year_month_day(today).year());
}

/// A year as written; one of two digits lies between 1930 and 2029.
int FullYear(int year) { return year < 30 ? 2000 + year : year < 100 ? 1900 + year : year; }

/// Units in the order of a date's numbers.
using Order = std::array<DateUnit, 3>;

using enum DateUnit;
// The locale's own order first, then the ones that are tried when it gives no day.
constexpr Order ordersOfThree[] = {{year, month, day}, {month, day, year}, {year, day, month}, {day, month, year}};
constexpr Order ordersOfTwo[] = {{month, day}, {day, month}, {year, month}, {month, year}};

/// Reads the date's numbers in `order`; a unit that no number stands for is this year or the first day.
bool SetDay(DateParts& parts, const DateFields& fields, const Order& order) {
    std::optional<int> units[4];
    for (std::size_t i = 0; i < fields.dateCount; ++i) {
        if (!fields.date[i].CanBe(order[i]))
            return false;
        units[static_cast<std::size_t>(order[i])] = fields.date[i].value;
    }
    const auto unit = [&](DateUnit wanted) { return units[static_cast<std::size_t>(wanted)]; };
    parts.year = unit(year) ? FullYear(*unit(year)) : CurrentYear();
    parts.month = unit(month).value_or(0);
    parts.day = unit(day).value_or(1);
    return parts.month >= 1 && parts.month <= 12 && parts.day >= 1 && parts.day <= DaysInMonth(parts.year, parts.month);
}

bool SetDay(DateParts& parts, const DateFields& fields) {
    if (fields.dateCount == 0)
        return true;
    const std::span<const Order> orders = fields.dateCount == 2 ? std::span(ordersOfTwo) : std::span(ordersOfThree);
    return std::ranges::any_of(orders, [&](const Order& order) { return SetDay(parts, fields, order); });
}

bool SetTime(DateParts& parts, const DateFields& fields) {
    parts.hour = fields.time[0];
    parts.minute = fields.time[1];
    parts.second = fields.time[2];
    if (parts.hour > 23 || parts.minute > 59 || parts.second > 59)
        return false;
    if (fields.halfDay == HalfDay::afternoon && parts.hour < 12)
        parts.hour += 12;
    else if (fields.halfDay == HalfDay::morning && parts.hour == 12)
        parts.hour = 0;
    return true;
}

/// Appends a number of at most `width` digits, which are two or four.
void AppendPadded(std::string& text, int number, int width) {
    for (int unit = width == 4 ? 1000 : 10; unit > 0; unit /= 10)
        text += static_cast<char>('0' + number / unit % 10);
}

DateParts SplitOrRaise(host::Date date) {
    const std::optional<DateParts> parts = SplitDate(date);
    if (!parts)
        RaiseRuntimeError(en::invalidCall);
    return *parts;
}

} // namespace

int DaysInMonth(int year, int month) noexcept {
    const auto last = std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

std::optional<host::Date> MakeDate(const DateParts& parts) noexcept {
    if (parts.year < firstYear || parts.year > lastYear || parts.month < 1 || parts.month > 12 || parts.day < 1 ||
        parts.day > DaysInMonth(parts.year, parts.month) || parts.hour < 0 || parts.hour > 23 || parts.minute < 0 ||
        parts.minute > 59 || parts.second < 0 || parts.second > 59)
        return std::nullopt;
    const std::chrono::sys_days day = std::chrono::year(parts.year) /
                                      std::chrono::month(static_cast<unsigned>(parts.month)) /
                                      std::chrono::day(static_cast<unsigned>(parts.day));
    const auto days = static_cast<double>((day - dayZero).count());
    const double time = ((parts.hour * 60 + parts.minute) * 60 + parts.second) / static_cast<double>(secondsPerDay);
    // The time counts away from zero: -1.25 is 06:00 of the day before day 0.
    return host::Date{days < 0 ? days - time : days + time};
}

std::optional<DateParts> SplitDate(host::Date date) noexcept {
    // Days 0 of the years 100 and 10000.
    if (!(date.days > -657435.0 && date.days < 2958466.0))
        return std::nullopt;
    auto day = static_cast<int>(date.days);
    auto seconds = static_cast<int>(std::fabs(date.days - day) * secondsPerDay + 0.5);
    if (seconds == secondsPerDay) {
        seconds = 0;
        ++day;
    }
    const std::chrono::year_month_day civil(dayZero + std::chrono::days(day));
    DateParts parts;
    parts.year = static_cast<int>(civil.year());
    if (parts.year > lastYear)
        return std::nullopt;
    parts.month = static_cast<int>(static_cast<unsigned>(civil.month()));
    parts.day = static_cast<int>(static_cast<unsigned>(civil.day()));
    parts.hour = seconds / 3600;
    parts.minute = seconds / 60 % 60;
    parts.second = seconds % 60;
    return parts;
}

std::optional<host::Date> ParseDate(std::string_view text) {
    const std::optional<DateFields> fields = ReadDateFields(text);
    if (!fields)
        return std::nullopt;
    DateParts parts;
    if (!SetDay(parts, *fields) || !SetTime(parts, *fields))
        return std::nullopt;
    return MakeDate(parts);
}

bool IsDate(std::string_view text) { return ParseDate(text).has_value(); }

host::Date ToDate(std::string_view text) {
    const std::optional<host::Date> date = ParseDate(text);
    if (!date)
        RaiseRuntimeError(en::typeMismatch);
    return *date;
}

std::string DateText(host::Date date) {
    const DateParts parts = SplitOrRaise(date);
    const bool isDayZero = parts.year == 1899 && parts.month == 12 && parts.day == 30;
    const bool hasTime = parts.hour != 0 || parts.minute != 0 || parts.second != 0;
    std::string text;
    if (!isDayZero) {
        text = std::to_string(parts.year);
        text.append(1, '/').append(std::to_string(parts.month)).append(1, '/').append(std::to_string(parts.day));
        if (hasTime)
            text += ' ';
    }
    if (isDayZero || hasTime) {
        text.append(std::to_string(parts.hour)).append(1, ':');
        AppendPadded(text, parts.minute, 2);
        text += ':';
        AppendPadded(text, parts.second, 2);
    }
    return text;
}

std::string FormatDate(host::Date date) {
    const DateParts parts = SplitOrRaise(date);
    std::string text;
    AppendPadded(text, parts.year, 4);
    text += '-';
    AppendPadded(text, parts.month, 2);
    text += '-';
    AppendPadded(text, parts.day, 2);
    return text;
}

std::string FormatDate(std::string_view text) {
    if (const std::optional<host::Date> date = ParseDate(text))
        return FormatDate(*date);
    if (IsNumeric(text)) {
        const host::Date date{ToDouble(text)};
        if (SplitDate(date))
            return FormatDate(date);
    }
    return std::string(text);
}

} // namespace ModPub
