#include "refhost/sql/functions/FunctionGroups.h"
#include "refhost/sql/types/DateParts.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>

namespace refhost::sql {
namespace {

/// k_datepart(part, date)
void DatePartFunction(Call& call) {
    if (call.IsNull(1)) {
        return call.ReturnNull();
    }
    call.Return(PartOf(static_cast<DatePart>(call.Integer(0)), call.Integer(1)));
}

/// k_datename(part, date)
void DateNameFunction(Call& call) {
    if (call.IsNull(1)) {
        return call.ReturnNull();
    }
    const auto part = static_cast<DatePart>(call.Integer(0));
    const std::int64_t value = PartOf(part, call.Integer(1));
    if (part == DatePart::month) {
        return call.Return(MonthName(static_cast<int>(value)));
    }
    if (part == DatePart::weekday) {
        return call.Return(DayName(static_cast<int>(value)));
    }
    call.Return(std::to_string(value));
}

/// k_datediff(part, from, to)
void DateDiffFunction(Call& call) {
    if (call.IsNull(1) || call.IsNull(2)) {
        return call.ReturnNull();
    }
    const std::int64_t count = Boundaries(static_cast<DatePart>(call.Integer(0)), call.Integer(1), call.Integer(2));
    if (count != static_cast<std::int32_t>(count)) {
        Fail(535, "The datediff function resulted in an overflow. The number of dateparts separating two "
                  "date/time instances is too large. Try to use datediff with a less precise datepart.");
    }
    call.Return(count);
}

/// k_dateadd(part, number, date, type)
void DateAddFunction(Call& call) {
    if (call.IsNull(1) || call.IsNull(2)) {
        return call.ReturnNull();
    }
    const Ticks ticks = AddPart(static_cast<DatePart>(call.Integer(0)), call.Integer(1), call.Integer(2));
    call.Return(RoundDate(ticks, call.TypeAt(3)));
}

/// k_datefromparts(year, month, day)
void DateFromPartsFunction(Call& call) {
    if (call.AnyNull(3)) {
        return call.ReturnNull();
    }
    Calendar date;
    date.year = call.Integer(0);
    date.month = static_cast<int>(std::clamp<std::int64_t>(call.Integer(1), 0, 13));
    date.day = static_cast<int>(std::clamp<std::int64_t>(call.Integer(2), 0, 32));
    if (date.year < 1 || date.year > 9999 || date.month < 1 || date.month > 12 || date.day < 1 ||
        date.day > DaysInMonth(date.year, date.month)) {
        Fail(289, "Cannot construct data type date, some of the arguments have values which are not valid.");
    }
    call.Return(ToTicks(date));
}

/// k_eomonth(date, months)
void EndOfMonthFunction(Call& call) {
    if (call.IsNull(0)) {
        return call.ReturnNull();
    }
    const Calendar date = ToCalendar(AddPart(DatePart::month, call.IsNull(1) ? 0 : call.Integer(1), call.Integer(0)));
    Calendar last;
    last.year = date.year;
    last.month = date.month;
    last.day = DaysInMonth(date.year, date.month);
    call.Return(ToTicks(last));
}

} // namespace

std::span<const FunctionRow> DateFunctions() {
    static constexpr std::array rows{
        FunctionRow{"k_datepart", 2, Entry<DatePartFunction>},
        FunctionRow{"k_datename", 2, Entry<DateNameFunction>},
        FunctionRow{"k_datediff", 3, Entry<DateDiffFunction>},
        FunctionRow{"k_dateadd", 4, Entry<DateAddFunction>},
        FunctionRow{"k_datefromparts", 3, Entry<DateFromPartsFunction>},
        FunctionRow{"k_eomonth", 2, Entry<EndOfMonthFunction>},
    };
    return rows;
}

} // namespace refhost::sql
