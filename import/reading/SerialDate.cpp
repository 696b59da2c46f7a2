#include "import/reading/SerialDate.h"

#include <chrono>
#include <cmath>

#include <fmt/format.h>

namespace importing {

std::optional<std::string> SerialDate(double serial, DateSystem system) {
    using namespace std::chrono;
    constexpr double secondsOfDay = 86'400;
    constexpr double firstUnshown = 2'958'466;
    if (!(serial >= 0) || serial >= firstUnshown) {
        return std::nullopt;
    }
    const auto all = static_cast<std::int64_t>(std::llround(serial * secondsOfDay));
    const auto wholeDays = all / static_cast<std::int64_t>(secondsOfDay);
    const auto secondOfDay = all % static_cast<std::int64_t>(secondsOfDay);
    sys_days first = sys_days(year{1904} / January / 1);
    if (system == DateSystem::from1900) {
        if (wholeDays == 60) {
            return std::nullopt;
        }
        // Before the day that never was the count is one ahead of the calendar's.
        first = wholeDays < 60 ? sys_days(year{1899} / December / 31) : sys_days(year{1899} / December / 30);
    }
    const hh_mm_ss time{seconds(secondOfDay)};
    const std::string clock =
        fmt::format("{:02}:{:02}:{:02}", time.hours().count(), time.minutes().count(), time.seconds().count());
    if (system == DateSystem::from1900 && wholeDays == 0) {
        return clock;
    }
    const year_month_day day{first + days(wholeDays)};
    if (day.year() > year{9999}) {
        return std::nullopt;
    }
    std::string text = fmt::format("{:04}-{:02}-{:02}", static_cast<int>(day.year()),
                                   static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    return secondOfDay == 0 ? text : text + " " + clock;
}

} // namespace importing
