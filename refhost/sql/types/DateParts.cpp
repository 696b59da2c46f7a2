#include "refhost/sql/types/DateParts.h"

#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <array>

namespace refhost::sql {

std::optional<DatePart> DatePartNamed(std::string_view word) {
    struct Row {
        std::string_view word;
        DatePart part;
    };
    static constexpr std::array words{
        Row{"year", DatePart::year},       Row{"yy", DatePart::year},
        Row{"yyyy", DatePart::year},       Row{"quarter", DatePart::quarter},
        Row{"qq", DatePart::quarter},      Row{"q", DatePart::quarter},
        Row{"month", DatePart::month},     Row{"mm", DatePart::month},
        Row{"m", DatePart::month},         Row{"dayofyear", DatePart::dayOfYear},
        Row{"dy", DatePart::dayOfYear},    Row{"y", DatePart::dayOfYear},
        Row{"day", DatePart::day},         Row{"dd", DatePart::day},
        Row{"d", DatePart::day},           Row{"week", DatePart::week},
        Row{"wk", DatePart::week},         Row{"ww", DatePart::week},
        Row{"weekday", DatePart::weekday}, Row{"dw", DatePart::weekday},
        Row{"w", DatePart::weekday},       Row{"hour", DatePart::hour},
        Row{"hh", DatePart::hour},         Row{"minute", DatePart::minute},
        Row{"mi", DatePart::minute},       Row{"n", DatePart::minute},
        Row{"second", DatePart::second},   Row{"ss", DatePart::second},
        Row{"s", DatePart::second},        Row{"millisecond", DatePart::millisecond},
        Row{"ms", DatePart::millisecond},
    };
    for (const Row& row : words) {
        if (EqualNames(row.word, word)) {
            return row.part;
        }
    }
    return std::nullopt;
}

std::int64_t PartOf(DatePart part, Ticks ticks) {
    const Calendar c = ToCalendar(ticks);
    Calendar newYear;
    newYear.year = c.year;
    const std::int64_t dayOfYear = (ticks - ToTicks(newYear)) / ticksPerDay;
    // Day 0 of OLE Automation was a Saturday; weeks begin on Sunday.
    const auto weekday = [](Ticks t) {
        const std::int64_t days = FloorTo(t, ticksPerDay) / ticksPerDay;
        return ((days + 6) % 7 + 7) % 7;
    };
    switch (part) {
    case DatePart::year:
        return c.year;
    case DatePart::quarter:
        return (c.month + 2) / 3;
    case DatePart::month:
        return c.month;
    case DatePart::dayOfYear:
        return dayOfYear + 1;
    case DatePart::day:
        return c.day;
    case DatePart::week:
        return (dayOfYear + weekday(ToTicks(newYear))) / 7 + 1;
    case DatePart::weekday:
        return weekday(ticks) + 1;
    case DatePart::hour:
        return c.hour;
    case DatePart::minute:
        return c.minute;
    case DatePart::second:
        return c.second;
    case DatePart::millisecond:
        return c.fraction / (ticksPerSecond / 1000);
    }
    return 0;
}

std::int64_t Boundaries(DatePart part, Ticks from, Ticks to) {
    const Calendar a = ToCalendar(from);
    const Calendar b = ToCalendar(to);
    const auto count = [&](Ticks unit, Ticks offset) {
        return FloorTo(to + offset, unit) / unit - FloorTo(from + offset, unit) / unit;
    };
    switch (part) {
    case DatePart::year:
        return b.year - a.year;
    case DatePart::quarter:
        return (b.year - a.year) * 4 + (b.month + 2) / 3 - (a.month + 2) / 3;
    case DatePart::month:
        return (b.year - a.year) * 12 + b.month - a.month;
    case DatePart::week:
        return count(7 * ticksPerDay, 6 * ticksPerDay);
    case DatePart::hour:
        return count(3600 * ticksPerSecond, 0);
    case DatePart::minute:
        return count(60 * ticksPerSecond, 0);
    case DatePart::second:
        return count(ticksPerSecond, 0);
    case DatePart::millisecond:
        return count(ticksPerSecond / 1000, 0);
    default:
        return count(ticksPerDay, 0);
    }
}

Ticks AddPart(DatePart part, std::int64_t number, Ticks ticks) {
    const auto addMonths = [&](std::int64_t months) {
        Calendar c = ToCalendar(ticks);
        const std::int64_t month = c.year * 12 + c.month - 1 + months;
        c.year = month / 12;
        c.month = static_cast<int>(month % 12) + 1;
        if (month < 12 || c.year > 9999) {
            Fail(517, "Adding a value to a 'datetime' column caused an overflow.");
        }
        c.day = std::min(c.day, DaysInMonth(c.year, c.month));
        return ToTicks(c);
    };
    const auto add = [&](Ticks unit) {
        // More than lies between any two dates, and less than the ticks can count.
        constexpr Ticks most = 4'000'000 * ticksPerDay;
        if (number < -most / unit || number > most / unit) {
            Fail(517, "Adding a value to a 'datetime' column caused an overflow.");
        }
        return ticks + number * unit;
    };
    switch (part) {
    case DatePart::year:
        return addMonths(number * 12);
    case DatePart::quarter:
        return addMonths(number * 3);
    case DatePart::month:
        return addMonths(number);
    case DatePart::week:
        return add(7 * ticksPerDay);
    case DatePart::hour:
        return add(3600 * ticksPerSecond);
    case DatePart::minute:
        return add(60 * ticksPerSecond);
    case DatePart::second:
        return add(ticksPerSecond);
    case DatePart::millisecond:
        return add(ticksPerSecond / 1000);
    default:
        return add(ticksPerDay);
    }
}

} // namespace refhost::sql
