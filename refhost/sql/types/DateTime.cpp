#include "refhost/sql/types/DateTime.h"

#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"
#include "text/Digit.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace refhost::sql {
namespace {

constexpr std::array<std::string_view, 12> monthNames{"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> dayNames{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                   "Thursday", "Friday", "Saturday"};

/// Day 0 of OLE Automation.
constexpr std::chrono::sys_days dayZero = std::chrono::year(1899) / 12 / 30;

// SQL Server's Hijri calendar (styles 130 and 131) is the tabular one: cycles of 30 years, of which the 2nd, 5th, 7th,
// 10th, 13th, 16th, 18th, 21st, 24th, 26th and 29th have a day more; months of 30 and 29 days in turn. Its first day
// follows from two answers of the server that are in print: 2000-08-07 is 7/05/1421 and 2006-12-30 is 10/12/1427.
constexpr int hijriStyle = 131;
constexpr int namedHijriStyle = 130;
/// The calendar's months as .NET names them for Arabic; the spelling of the server's own is not in print.
constexpr std::array<std::string_view, 12> hijriMonths{"محرم",         "صفر",           "ربيع الأول", "ربيع الثاني",
                                                       "جمادى الأولى", "جمادى الثانية", "رجب",        "شعبان",
                                                       "رمضان",        "شوال",          "ذو القعدة",  "ذو الحجة"};
constexpr std::int64_t hijriCycleDays = 10631;
/// Day 1 of its year 1 as days since day 0 of OLE Automation.
constexpr std::int64_t hijriEpoch = -466580;

/// Days from the calendar's first to the first of a year.
std::int64_t HijriYearStart(std::int64_t year) { return (year - 1) * 354 + (3 + 11 * year) / 30; }

std::int64_t DaysFromHijri(std::int64_t year, int month, int day) {
    return hijriEpoch + HijriYearStart(year) + (month - 1) * 29 + month / 2 + day - 1;
}

enum class Flaw { none, syntax, range };

std::string_view ShortName(std::string_view name) { return name.substr(0, 3); }

/// The order of separated numbers.
enum class DateOrder {
    open, ///< a year of four digits tells its place; else year, month, day, as on a Chinese server
    monthDayYear,
    dayMonthYear,
    yearMonthDay,
    yearDayMonth,
    monthYearDay,
    dayYearMonth,
};

/// The style that differs in giving the century, or the same where there is none.
int WithCentury(int style) { return style >= 0 && style < 20 ? style + 100 : style; }

DateOrder OrderOf(int style) {
    switch (WithCentury(style)) {
    case 22:
    case 101:
    case 110:
        return DateOrder::monthDayYear;
    case 103:
    case 104:
    case 105:
    case hijriStyle:
        return DateOrder::dayMonthYear;
    case 20:
    case 21:
    case 23:
    case 25:
    case 102:
    case 111:
    case 120:
    case 121:
        return DateOrder::yearMonthDay;
    case yearDayMonthStyle:
        return DateOrder::yearDayMonth;
    case monthYearDayStyle:
        return DateOrder::monthYearDay;
    case dayYearMonthStyle:
        return DateOrder::dayYearMonth;
    default:
        return DateOrder::open;
    }
}

/// Reads a date text; the first flaw met stays.
class DateReader {
public:
    DateReader(std::string_view text, const Type& target, int style)
        : text_(text), order_(OrderOf(style)), target_(target), hijri_(style == hijriStyle) {}

    Flaw Read(Calendar& result) {
        Split();
        if (flaw_ != Flaw::none) {
            return flaw_;
        }
        result = calendar_;
        return Validate();
    }

private:
    static bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

    char Peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }
    void SkipBlanks() {
        while (Peek() == ' ' || Peek() == '\t' || Peek() == '\r' || Peek() == '\n') {
            ++position_;
        }
    }

    std::string_view TakeDigits() {
        const std::size_t start = position_;
        while (text::IsDigit(Peek())) {
            ++position_;
        }
        return text_.substr(start, position_ - start);
    }

    /// Whether the text is "YYYY-MM-DD", as nearly every date is written.
    bool IsIsoDate() const {
        constexpr std::string_view form = "0000-00-00";
        return std::ranges::equal(text_, form,
                                  [](char c, char expected) { return expected == '-' ? c == '-' : text::IsDigit(c); });
    }

    void Split() {
        if (IsIsoDate()) {
            pieces_ = {text_.substr(0, 4), text_.substr(5, 2), text_.substr(8)};
            return AssembleSeparated();
        }
        SkipBlanks();
        while (position_ < text_.size() && flaw_ == Flaw::none) {
            if (text::IsDigit(Peek())) {
                const std::string_view digits = TakeDigits();
                if (Peek() == ':' || TimeFollows()) {
                    ReadTime(digits);
                } else {
                    ReadNumber(digits);
                }
            } else if (IsLetter(Peek())) {
                ReadWord();
            } else {
                flaw_ = Flaw::syntax;
            }
            SkipBlanks();
        }
        if (flaw_ == Flaw::none) {
            Assemble();
        }
    }

    /// Whether an hour alone stands here, as in "10 PM".
    bool TimeFollows() const {
        std::size_t at = position_;
        while (at < text_.size() && text_[at] == ' ') {
            ++at;
        }
        return at + 1 < text_.size() &&
               (text_[at] == 'A' || text_[at] == 'a' || text_[at] == 'P' || text_[at] == 'p') &&
               (text_[at + 1] == 'M' || text_[at + 1] == 'm') && (at + 2 == text_.size() || text_[at + 2] == ' ');
    }

    static int Number(std::string_view digits) {
        int value = 0;
        for (const char c : digits.substr(0, 8)) {
            value = value * 10 + (c - '0');
        }
        return value;
    }

    void ReadNumber(std::string_view digits) {
        if (digits.size() > 8 || pieceCount_ == pieces_.size()) {
            flaw_ = Flaw::syntax;
            return;
        }
        pieces_[pieceCount_++] = digits;
        if ((Peek() == '-' || Peek() == '/' || Peek() == '.' || Peek() == ',') && position_ + 1 < text_.size()) {
            separated_ = separated_ || Peek() != ',';
            ++position_;
        }
    }

    void ReadWord() {
        const std::size_t start = position_;
        while (IsLetter(Peek())) {
            ++position_;
        }
        const std::string_view word = text_.substr(start, position_ - start);
        if (EqualNames(word, "T") && pieceCount_ != 0 && text::IsDigit(Peek())) {
            return;
        }
        for (std::size_t month = 0; month < monthNames.size() && word.size() >= 3; ++month) {
            if (EqualNames(word.substr(0, 3), ShortName(monthNames[month])) && namedMonth_ == 0) {
                namedMonth_ = static_cast<int>(month) + 1;
                if (Peek() == ',' || Peek() == '-' || Peek() == '.') {
                    ++position_;
                }
                return;
            }
        }
        flaw_ = Flaw::syntax;
    }

    void ReadTime(std::string_view hour) {
        if (hasTime_ || hour.size() > 2) {
            flaw_ = Flaw::syntax;
            return;
        }
        hasTime_ = true;
        calendar_.hour = Number(hour);
        if (Peek() == ':') {
            ++position_;
            calendar_.minute = TimePart();
            if (Peek() == ':') {
                ++position_;
                calendar_.second = TimePart();
                if (Peek() == '.' || Peek() == ':') {
                    ReadFraction(Peek() == '.');
                }
            }
        }
        SkipBlanks();
        const std::size_t start = position_;
        while (IsLetter(Peek())) {
            ++position_;
        }
        const std::string_view half = text_.substr(start, position_ - start);
        if (EqualNames(half, "AM") || EqualNames(half, "PM")) {
            if (calendar_.hour > 12) {
                flaw_ = Flaw::syntax;
            }
            calendar_.hour = calendar_.hour % 12 + (EqualNames(half, "PM") ? 12 : 0);
        } else if (!half.empty() && !EqualNames(half, "Z")) {
            flaw_ = Flaw::syntax;
        }
    }

    int TimePart() {
        const std::string_view digits = TakeDigits();
        if (digits.empty() || digits.size() > 2) {
            flaw_ = Flaw::syntax;
        }
        return Number(digits);
    }

    /// A point begins a decimal fraction, a colon counts milliseconds.
    void ReadFraction(bool decimal) {
        ++position_;
        const std::string_view digits = TakeDigits();
        // Those of datetime know thousandths at most, a text for them likewise.
        const std::size_t most = decimal && (target_.base == Base::datetime2 || target_.base == Base::date) ? 7 : 3;
        if (digits.empty() || digits.size() > most) {
            flaw_ = Flaw::syntax;
            return;
        }
        Ticks value = Number(digits);
        if (decimal) {
            for (std::size_t i = digits.size(); i < 7; ++i) {
                value *= 10;
            }
        } else {
            value *= ticksPerSecond / 1000;
        }
        calendar_.fraction = value;
    }

    static int FullYear(std::string_view digits) {
        const int year = Number(digits);
        // SQL Server's default two-digit year cutoff.
        return digits.size() > 2 ? year : year + (year < 50 ? 2000 : 1900);
    }

    void Assemble() {
        if (namedMonth_ != 0) {
            AssembleNamed();
        } else if (pieceCount_ == 0) {
            return; // a time alone, or nothing, is on the server's day 0
        } else if (pieceCount_ == 1) {
            AssembleSolid(pieces_[0]);
        } else if (pieceCount_ == 3 && separated_) {
            AssembleSeparated();
        } else {
            flaw_ = Flaw::syntax;
        }
    }

    void AssembleNamed() {
        calendar_.month = namedMonth_;
        if (pieceCount_ == 1) {
            calendar_.year = FullYear(pieces_[0]);
            if (pieces_[0].size() <= 2) {
                flaw_ = Flaw::syntax;
            }
        } else if (pieceCount_ == 2) {
            const bool yearFirst = pieces_[0].size() == 4;
            calendar_.year = FullYear(pieces_[yearFirst ? 0 : 1]);
            calendar_.day = Number(pieces_[yearFirst ? 1 : 0]);
        } else {
            flaw_ = Flaw::syntax;
        }
    }

    void AssembleSolid(std::string_view digits) {
        if (digits.size() == 4) {
            calendar_.year = Number(digits);
        } else if (digits.size() == 6 || digits.size() == 8) {
            const std::size_t yearDigits = digits.size() - 4;
            calendar_.year = FullYear(digits.substr(0, yearDigits));
            calendar_.month = Number(digits.substr(yearDigits, 2));
            calendar_.day = Number(digits.substr(yearDigits + 2));
        } else {
            flaw_ = Flaw::syntax;
        }
    }

    /// Which of the three numbers is the year: one of four digits tells it by itself.
    std::size_t YearPlace() const {
        if (pieces_[0].size() == 4) {
            return 0;
        }
        const bool middle = order_ == DateOrder::monthYearDay || order_ == DateOrder::dayYearMonth;
        if (pieces_[2].size() == 4) {
            return 2;
        }
        const bool last = order_ == DateOrder::monthDayYear || order_ == DateOrder::dayMonthYear;
        return last ? 2 : middle ? 1 : 0;
    }

    void AssembleSeparated() {
        const std::size_t yearPlace = YearPlace();
        bool dayFirst =
            order_ == DateOrder::dayMonthYear || order_ == DateOrder::yearDayMonth || order_ == DateOrder::dayYearMonth;
        if (pieces_[0].size() == 4 && (target_.base == Base::date || target_.base == Base::datetime2)) {
            dayFirst = false; // the newer types read year, month, day whatever the order is
        }
        const std::string_view year = pieces_[yearPlace];
        const std::string_view earlier = pieces_[yearPlace == 0 ? 1 : 0];
        const std::string_view later = pieces_[yearPlace == 2 ? 1 : 2];
        const std::string_view month = dayFirst ? later : earlier;
        const std::string_view day = dayFirst ? earlier : later;
        if (month.size() > 2 || day.size() > 2 || year.size() == 3 || year.size() > 4) {
            flaw_ = Flaw::syntax;
            return;
        }
        calendar_.year = FullYear(year);
        calendar_.month = Number(month);
        calendar_.day = Number(day);
        if (hijri_) {
            ReadAsHijri();
        }
    }

    void ReadAsHijri() {
        const int days = calendar_.month % 2 == 1 || calendar_.month == 12 ? 30 : 29;
        if (calendar_.year < 1 || calendar_.month < 1 || calendar_.month > 12 || calendar_.day < 1 ||
            calendar_.day > days) {
            calendar_.month = 0; // beyond its range, as `Validate` finds
            return;
        }
        const Calendar date = ToCalendar(DaysFromHijri(calendar_.year, calendar_.month, calendar_.day) * ticksPerDay);
        calendar_.year = date.year;
        calendar_.month = date.month;
        calendar_.day = date.day;
    }

    Flaw Validate() const {
        if (calendar_.year < 1 || calendar_.year > 9999 || calendar_.month < 1 || calendar_.month > 12 ||
            calendar_.day < 1 || calendar_.day > DaysInMonth(calendar_.year, calendar_.month) || calendar_.hour > 23 ||
            calendar_.minute > 59 || calendar_.second > 59) {
            return Flaw::range;
        }
        return Flaw::none;
    }

    std::string_view text_;
    DateOrder order_;
    Type target_;
    bool hijri_;
    std::size_t position_ = 0;
    std::array<std::string_view, 3> pieces_;
    std::size_t pieceCount_ = 0;
    bool separated_ = false;
    int namedMonth_ = 0;
    bool hasTime_ = false;
    Calendar calendar_;
    Flaw flaw_ = Flaw::none;
};

[[noreturn]] void FailRange(Base source, Base target) {
    Fail(242, "The conversion of a {} data type to a {} data type resulted in an out-of-range value.", NameOf(source),
         NameOf(target));
}

bool InYears(Ticks ticks, Base base) {
    const std::int64_t year = ToCalendar(ticks).year;
    switch (base) {
    case Base::datetime:
        return year >= 1753 && year <= 9999;
    case Base::smalldatetime:
        return ticks >= serverDayZero * ticksPerDay && ticks < (65536 + serverDayZero) * ticksPerDay;
    default:
        return year >= 1 && year <= 9999;
    }
}

Ticks RoundUnchecked(Ticks ticks, const Type& type) {
    const Base base = type.base;
    if (base == Base::date) {
        return FloorTo(ticks, ticksPerDay);
    }
    if (base == Base::smalldatetime) {
        return FloorTo(ticks + 30 * ticksPerSecond, 60 * ticksPerSecond);
    }
    if (base == Base::datetime) {
        const Ticks second = FloorTo(ticks, ticksPerSecond);
        const Ticks part = ((ticks - second) * 300 + ticksPerSecond / 2) / ticksPerSecond;
        // Kept to the millisecond, as every client sees it: .000, .003, .007, .010 and so on.
        const Ticks milliseconds = (part * 10 + 1) / 3;
        return second + milliseconds * (ticksPerSecond / 1000);
    }
    Ticks unit = ticksPerSecond;
    for (int digit = 0; digit < FractionDigits(type); ++digit) {
        unit /= 10;
    }
    return FloorTo(ticks + unit / 2, unit);
}

/// The second's fraction as text, with its point; milliseconds of the types that have none or know no more.
std::string Fraction(const Calendar& calendar, const Type& type) {
    if (type.base != Base::datetime2) {
        return fmt::format(".{:03}", calendar.fraction / (ticksPerSecond / 1000));
    }
    const auto digits = static_cast<std::size_t>(FractionDigits(type));
    return digits == 0 ? std::string() : fmt::format(".{:07}", calendar.fraction).substr(0, digits + 1);
}

} // namespace

int DaysInMonth(std::int64_t year, int month) {
    const std::chrono::year_month_day_last last = std::chrono::year(static_cast<int>(year)) / month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

Calendar ToCalendar(Ticks ticks) {
    const Ticks dayStart = FloorTo(ticks, ticksPerDay);
    const std::chrono::year_month_day date(dayZero + std::chrono::days(dayStart / ticksPerDay));
    const Ticks time = ticks - dayStart;
    const std::int64_t seconds = time / ticksPerSecond;
    return {.year = static_cast<int>(date.year()),
            .month = static_cast<int>(static_cast<unsigned>(date.month())),
            .day = static_cast<int>(static_cast<unsigned>(date.day())),
            .hour = static_cast<int>(seconds / 3600),
            .minute = static_cast<int>(seconds / 60 % 60),
            .second = static_cast<int>(seconds % 60),
            .fraction = time % ticksPerSecond};
}

Ticks ToTicks(const Calendar& calendar) {
    const std::chrono::sys_days day =
        std::chrono::year(static_cast<int>(calendar.year)) / calendar.month / calendar.day;
    const std::int64_t seconds = calendar.hour * 3600 + calendar.minute * 60 + calendar.second;
    return (day - dayZero).count() * ticksPerDay + seconds * ticksPerSecond + calendar.fraction;
}

Ticks ParseDate(std::string_view text, Base source, const Type& target, int style) {
    Calendar calendar;
    switch (DateReader(text, target, style).Read(calendar)) {
    case Flaw::syntax:
        if (target.base == Base::smalldatetime) {
            Fail(295, "Conversion failed when converting character string to smalldatetime data type.");
        }
        Fail(241, "Conversion failed when converting date and/or time from character string.");
    case Flaw::range:
        FailRange(source, target.base);
    case Flaw::none:
        break;
    }
    const Ticks ticks = RoundUnchecked(ToTicks(calendar), target);
    if (!InYears(ticks, target.base)) {
        FailRange(source, target.base);
    }
    return ticks;
}

Ticks RoundDate(Ticks ticks, const Type& type) {
    const Ticks rounded = RoundUnchecked(ticks, type);
    if (!InYears(rounded, type.base)) {
        Fail(8115, "Arithmetic overflow error converting expression to data type {}.", NameOf(type.base));
    }
    return rounded;
}

std::string_view MonthName(int month) { return monthNames.at(static_cast<std::size_t>(month) - 1); }

std::string_view DayName(int weekday) { return dayNames.at(static_cast<std::size_t>(weekday) - 1); }

std::string FormatDate(Ticks ticks, const Type& type, int style) {
    const Calendar c = ToCalendar(ticks);
    const Base base = type.base;
    const std::string_view month = ShortName(MonthName(c.month));
    const int hour12 = c.hour % 12 == 0 ? 12 : c.hour % 12;
    const std::string_view half = c.hour < 12 ? "AM" : "PM";
    const std::int64_t milliseconds = c.fraction / (ticksPerSecond / 1000);
    if (base == Base::date && style == 0) {
        style = 23;
    } else if (base == Base::datetime2 && style == 0) {
        style = 121;
    }
    const std::string fraction = Fraction(c, type);
    // Styles from 100 on give the century, too.
    const auto year = [&] { return style < 100 ? fmt::format("{:02}", c.year % 100) : fmt::format("{:04}", c.year); };
    switch (WithCentury(style)) {
    case 100:
        return fmt::format("{} {:>2} {:04} {:>2}:{:02}{}", month, c.day, c.year, hour12, c.minute, half);
    case 101:
        return fmt::format("{:02}/{:02}/{}", c.month, c.day, year());
    case 102:
        return fmt::format("{}.{:02}.{:02}", year(), c.month, c.day);
    case 103:
        return fmt::format("{:02}/{:02}/{}", c.day, c.month, year());
    case 104:
        return fmt::format("{:02}.{:02}.{}", c.day, c.month, year());
    case 105:
        return fmt::format("{:02}-{:02}-{}", c.day, c.month, year());
    case 106:
        return fmt::format("{:02} {} {}", c.day, month, year());
    case 107:
        return fmt::format("{} {:02}, {}", month, c.day, year());
    case 24:
    case 108:
        return fmt::format("{:02}:{:02}:{:02}", c.hour, c.minute, c.second);
    case 109:
        return fmt::format("{} {:>2} {:04} {:>2}:{:02}:{:02}:{:03}{}", month, c.day, c.year, hour12, c.minute, c.second,
                           milliseconds, half);
    case 110:
        return fmt::format("{:02}-{:02}-{}", c.month, c.day, year());
    case 111:
        return fmt::format("{}/{:02}/{:02}", year(), c.month, c.day);
    case 112:
        return fmt::format("{}{:02}{:02}", year(), c.month, c.day);
    case 113:
        return fmt::format("{:02} {} {:04} {:02}:{:02}:{:02}:{:03}", c.day, month, c.year, c.hour, c.minute, c.second,
                           milliseconds);
    case 114:
        return fmt::format("{:02}:{:02}:{:02}:{:03}", c.hour, c.minute, c.second, milliseconds);
    case 20:
    case 120:
        return base == Base::date ? fmt::format("{:04}-{:02}-{:02}", c.year, c.month, c.day)
                                  : fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", c.year, c.month, c.day, c.hour,
                                                c.minute, c.second);
    case 21:
    case 25:
    case 121:
        return base == Base::date ? fmt::format("{:04}-{:02}-{:02}", c.year, c.month, c.day)
                                  : fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}{}", c.year, c.month, c.day, c.hour,
                                                c.minute, c.second, fraction);
    case 22:
        return fmt::format("{:02}/{:02}/{} {:>2}:{:02}:{:02} {}", c.month, c.day, year(), hour12, c.minute, c.second,
                           half);
    case 23:
        return fmt::format("{:04}-{:02}-{:02}", c.year, c.month, c.day);
    case 126:
    case 127: // the same, for dates without a time zone
        if (base == Base::date) {
            return fmt::format("{:04}-{:02}-{:02}", c.year, c.month, c.day);
        }
        // A fraction of zero is left out.
        return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}{}", c.year, c.month, c.day, c.hour, c.minute, c.second,
                           c.fraction == 0 ? std::string() : fraction);
    case namedHijriStyle:
    case hijriStyle: {
        const std::int64_t days = FloorTo(ticks, ticksPerDay) / ticksPerDay - hijriEpoch;
        const std::int64_t hijriYear = (30 * days + 10646) / hijriCycleDays;
        const auto day = static_cast<int>(days - HijriYearStart(hijriYear));
        const int hijriMonth = std::min(day * 2 / 59 + 1, 12);
        const int hijriDay = day - ((hijriMonth - 1) * 29 + hijriMonth / 2) + 1;
        const std::string time =
            fmt::format("{:04} {:>2}:{:02}:{:02}:{:03}{}", hijriYear, hour12, c.minute, c.second, milliseconds, half);
        return style == hijriStyle ? fmt::format("{:>2}/{:02}/{}", hijriDay, hijriMonth, time)
                                   : fmt::format("{:>2} {} {}", hijriDay,
                                                 hijriMonths.at(static_cast<std::size_t>(hijriMonth) - 1), time);
    }
    default:
        Fail(281, "{} is not a valid style number when converting from {} to a character string.", style, NameOf(base));
    }
}

double ToOleDate(Ticks ticks) {
    const Ticks dayStart = FloorTo(ticks, ticksPerDay);
    const auto days = static_cast<double>(dayStart / ticksPerDay);
    const double time = static_cast<double>(ticks - dayStart) / static_cast<double>(ticksPerDay);
    // Before day 0 the fraction still counts forward within the day.
    return days < 0 ? days - time : days + time;
}

} // namespace refhost::sql
