#pragma once

#include "refhost/sql/types/DateTime.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace refhost::sql {

/// Units of time of dateadd, datediff, datepart and datename.
enum class DatePart { year, quarter, month, dayOfYear, day, week, weekday, hour, minute, second, millisecond };
/// The part named by a word such as "yy", "year", "dd"; nothing when there is none.
std::optional<DatePart> DatePartNamed(std::string_view word);

/// A part's number in a date; weeks begin on Sunday, which is weekday 1.
std::int64_t PartOf(DatePart part, Ticks ticks);
/// Number of boundaries of the part between two dates.
std::int64_t Boundaries(DatePart part, Ticks from, Ticks to);
/// The date `number` parts later; a month's last day where the month is too short. Throws error 517 outside the years 1
/// to 9999.
Ticks AddPart(DatePart part, std::int64_t number, Ticks ticks);

} // namespace refhost::sql
