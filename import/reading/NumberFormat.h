#pragma once

#include <string_view>

namespace importing {

/// Whether a number with the built-in format `id` is shown as a date or time: 14 to 22 and 45 to 47 (ECMA-376 part 1,
/// 18.8.30), and 27 to 36 and 50 to 58, which are dates in the East Asian spreadsheets.
bool IsDateFormat(unsigned id) noexcept;

/// Whether a number with the format `code` is shown as a date or time: it has a year, month, day, hour, minute or
/// second outside quoted texts, escaped characters and brackets (ECMA-376 part 1, 18.8.31); [h], [m] and [s] count
/// hours, minutes and seconds, so they are times too.
bool IsDateFormat(std::string_view code) noexcept;

} // namespace importing
