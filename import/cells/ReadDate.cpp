#include "import/cells/ReadDate.h"

#include "import/cells/Characters.h"
#include "import/cells/ReadCell.h"
#include "import/reading/SerialDate.h"

#include <array>
#include <charconv>
#include <chrono>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace importing {
namespace {

/// The numbers of a text that is three numbers with the same sign between them, and how many digits the first has.
struct ThreeNumbers {
    std::array<unsigned, 3> numbers{};
    std::size_t firstDigits = 0;
};

std::optional<unsigned> TakeNumber(std::string_view& text) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(end - text.data());
    if (error != std::errc() || length > 4) {
        return std::nullopt;
    }
    text.remove_prefix(length);
    return number;
}

bool TakePart(std::string_view& text, std::string_view part) {
    if (!text.starts_with(part)) {
        return false;
    }
    text.remove_prefix(part.size());
    return true;
}

/// Reads numbers with `first` and `second` between them and `last` behind.
std::optional<ThreeNumbers> ReadThree(std::string_view text, std::string_view first, std::string_view second,
                                      std::string_view last) {
    ThreeNumbers three;
    const std::array<std::string_view, 3> ends = {first, second, last};
    for (std::size_t index = 0; index < ends.size(); ++index) {
        const std::size_t before = text.size();
        const std::optional<unsigned> number = TakeNumber(text);
        if (!number) {
            return std::nullopt;
        }
        three.numbers[index] = *number;
        if (index == 0) {
            three.firstDigits = before - text.size();
        }
        if (!TakePart(text, ends[index])) {
            return std::nullopt;
        }
    }
    return text.empty() ? std::optional(three) : std::nullopt;
}

std::optional<ThreeNumbers> ReadThree(std::string_view text) {
    constexpr std::array<std::array<std::string_view, 3>, 5> forms = {
        {{"-", "-", ""}, {"/", "/", ""}, {".", ".", ""}, {"年", "月", "日"}, {"年", "月", ""}}};
    for (const auto& [first, second, last] : forms) {
        if (const std::optional<ThreeNumbers> three = ReadThree(text, first, second, last)) {
            return three;
        }
    }
    return std::nullopt;
}

/// The day as text, or nothing when there is none or it lies outside what the ledger can hold.
std::optional<std::string> DayText(unsigned year, unsigned month, unsigned day) {
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                           std::chrono::day(day)};
    constexpr unsigned firstYear = 1753;
    if (year < firstYear || year > 9999 || !date.ok()) {
        return std::nullopt;
    }
    return fmt::format("{:04}-{:02}-{:02}", year, month, day);
}

Reading TakeOrNoDay(const std::string& shown, const std::optional<std::string>& day) {
    return day ? Reading::Take(*day) : Reading::Refuse({message::dateNoDay, {shown}});
}

/// A date whose last number is the year: day and month may stand either way round.
Reading YearLast(const std::string& shown, const ThreeNumbers& three) {
    const auto& [first, second, year] = three.numbers;
    const std::optional<std::string> monthFirst = DayText(year, first, second);
    const std::optional<std::string> dayFirst = DayText(year, second, first);
    if (monthFirst && dayFirst && *monthFirst != *dayFirst) {
        return Reading::Refuse({message::dateTwoReadings, {shown, *monthFirst, *dayFirst}});
    }
    return TakeOrNoDay(shown, monthFirst ? monthFirst : dayFirst);
}

/// Takes off a time of day: what stands behind a blank and holds a colon.
std::string_view WithoutTime(std::string_view text) {
    const std::size_t blank = text.find(' ');
    const bool time = blank != std::string_view::npos && text.find(':', blank) != std::string_view::npos;
    return time ? TrimBlanks(text.substr(0, blank)) : text;
}

bool IsEightDigits(std::string_view text) {
    return text.size() == 8 && text.find_first_not_of("0123456789") == std::string_view::npos;
}

unsigned Digits(std::string_view text) {
    unsigned number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace

Reading ReadDate(const Cell& cell) {
    if (cell.kind == Cell::Kind::date) {
        // A time alone has no day.
        const std::string_view day = WithoutTime(cell.text);
        return day.find('-') == std::string_view::npos ? Reading::Refuse({message::dateNone, {cell.text}})
                                                       : Reading::Take(std::string(day));
    }
    if (std::optional<Reading> refused = RefuseUnlessTextOrNumber(cell)) {
        return *std::move(refused);
    }
    const std::string half = ToHalfWidth(TrimBlanks(cell.text));
    const std::string_view text = WithoutTime(half);
    if (text.empty()) {
        return Reading::Take({});
    }
    if (IsEightDigits(text)) {
        return TakeOrNoDay(cell.text,
                           DayText(Digits(text.substr(0, 4)), Digits(text.substr(4, 2)), Digits(text.substr(6))));
    }
    if (cell.kind == Cell::Kind::number) {
        double serial = 0;
        std::from_chars(text.data(), text.data() + text.size(), serial);
        const std::optional<std::string> date = SerialDate(serial, DateSystem::from1900);
        const std::string day = date ? std::string(WithoutTime(*date)) : std::string();
        return day.find('-') == std::string::npos ? Reading::Refuse({message::dateNone, {cell.text}})
                                                  : Reading::Refuse({message::dateSerial, {cell.text, day}}, day);
    }
    const std::optional<ThreeNumbers> three = ReadThree(text);
    if (!three) {
        return Reading::Refuse({message::dateNone, {cell.text}});
    }
    const auto& [year, month, day] = three->numbers;
    if (three->firstDigits == 4) {
        return TakeOrNoDay(cell.text, DayText(year, month, day));
    }
    constexpr unsigned leastYear = 1000;
    if (day >= leastYear) {
        return YearLast(cell.text, *three);
    }
    constexpr unsigned century = 2000;
    const std::optional<std::string> thisCentury = DayText(century + year, month, day);
    return Reading::Refuse({message::dateNone, {cell.text}}, thisCentury.value_or(std::string()));
}

} // namespace importing
