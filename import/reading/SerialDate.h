#pragma once

#include <optional>
#include <string>

namespace importing {

/// How a workbook counts its days (ECMA-376 part 1, 18.17.4.1). In the 1900 system 1 is 1900-01-01 and 60 is the
/// 29 February 1900, a day that never was; in the 1904 system 0 is 1904-01-01.
enum class DateSystem { from1900, from1904 };

/// The date that a cell shows for the number `serial`, "YYYY-MM-DD", with " hh:mm:ss" where it has a time of day,
/// rounded to the second; a number below 1 of the 1900 system is a time alone. Nothing for a number that is no day:
/// negative, 60 in the 1900 system, or beyond the year 9999.
std::optional<std::string> SerialDate(double serial, DateSystem system);

} // namespace importing
