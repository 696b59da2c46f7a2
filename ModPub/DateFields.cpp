#include "ModPub/DateFields.h"

#include "text/Digit.h"

namespace ModPub {

namespace {

constexpr std::size_t maximumFields = 6;

/// A number of the text and what was written around it.
struct Field {
    DateField date;
    /// A ":" or "." joins it to the next field.
    bool joinsTime = false;
    bool hasHalfDay = false;
};

constexpr std::array<std::string_view, 12> chineseMonths = {"一月", "二月", "三月", "四月", "五月",   "六月",
                                                            "七月", "八月", "九月", "十月", "十一月", "十二月"};
constexpr std::array<std::string_view, 12> englishMonths = {"january",   "february", "march",    "april",
                                                            "may",       "june",     "july",     "august",
                                                            "september", "october",  "november", "december"};
constexpr std::array<std::string_view, 14> chineseDays = {"星期日", "星期一", "星期二", "星期三", "星期四",
                                                          "星期五", "星期六", "周日",   "周一",   "周二",
                                                          "周三",   "周四",   "周五",   "周六"};
constexpr std::array<std::string_view, 7> englishDays = {"sunday",   "monday", "tuesday", "wednesday",
                                                         "thursday", "friday", "saturday"};
constexpr std::size_t abbreviation = 3;

constexpr bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// Whether `word`, ASCII letters, is `name` (in lower case).
bool EqualsIgnoreCase(std::string_view word, std::string_view name) {
    if (word.size() != name.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if ((word[i] | 0x20) != name[i])
            return false;
    }
    return true;
}

bool IsNameOf(std::string_view word, std::string_view name) {
    return EqualsIgnoreCase(word, name) || EqualsIgnoreCase(word, name.substr(0, abbreviation));
}

class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    std::optional<DateFields> Read() {
        while (!rest_.empty()) {
            if (!ReadNext())
                return std::nullopt;
        }
        if (count_ == 0 || separatorPending_ || pendingHalfDay_ != HalfDay::none)
            return std::nullopt;
        return Sort();
    }

private:
    bool ReadNext() {
        const char c = rest_.front();
        if (text::IsDigit(c))
            return ReadNumber();
        if (IsLetter(c))
            return ReadWord();
        switch (c) {
        case ' ':
        case '\t':
        case '\n':
        case '\v':
        case '\f':
        case '\r':
            rest_.remove_prefix(1);
            return true;
        case ':':
        case '.':
            return TakeTimeSeparator();
        case '-':
        case '/':
            return TakeDateSeparator();
        case ',':
            rest_.remove_prefix(1);
            return !rest_.empty();
        default:
            return ReadChinese();
        }
    }

    bool ReadNumber() {
        constexpr int tooLong = 100000;
        int value = 0;
        while (!rest_.empty() && text::IsDigit(rest_.front())) {
            if (value < tooLong)
                value = value * 10 + (rest_.front() - '0');
            rest_.remove_prefix(1);
        }
        return Add({value, DateUnit::unknown});
    }

    bool Add(DateField date) {
        if (count_ == maximumFields)
            return false;
        fields_[count_].date = date;
        if (pendingHalfDay_ != HalfDay::none) {
            fields_[count_].hasHalfDay = true;
            halfDay_ = pendingHalfDay_;
            pendingHalfDay_ = HalfDay::none;
        }
        ++count_;
        separatorPending_ = false;
        return true;
    }

    bool TakeTimeSeparator() {
        if (count_ == 0 || separatorPending_)
            return false;
        fields_[count_ - 1].joinsTime = true;
        separatorPending_ = true;
        rest_.remove_prefix(1);
        return true;
    }

    bool TakeDateSeparator() {
        constexpr int mostSeparators = 2;
        if (count_ == 0 || separatorPending_ || ++separators_ > mostSeparators)
            return false;
        separatorPending_ = true;
        rest_.remove_prefix(1);
        return true;
    }

    bool TakeText(std::string_view text) {
        if (!rest_.starts_with(text))
            return false;
        rest_.remove_prefix(text.size());
        return true;
    }

    bool ReadWord() {
        std::size_t length = 0;
        while (length < rest_.size() && IsLetter(rest_[length]))
            ++length;
        const std::string_view word = rest_.substr(0, length);
        rest_.remove_prefix(length);
        for (std::size_t i = 0; i < englishMonths.size(); ++i) {
            if (IsNameOf(word, englishMonths[i]))
                return Add({static_cast<int>(i) + 1, DateUnit::month});
        }
        for (const std::string_view day : englishDays) {
            if (IsNameOf(word, day))
                return true;
        }
        if (EqualsIgnoreCase(word, "am") || EqualsIgnoreCase(word, "a"))
            return MarkHalfDay(HalfDay::morning);
        if (EqualsIgnoreCase(word, "pm") || EqualsIgnoreCase(word, "p"))
            return MarkHalfDay(HalfDay::afternoon);
        return false;
    }

    bool ReadChinese() {
        if (TakeText("\u3000")) // the full-width blank
            return true;
        if (TakeText("年"))
            return SetUnit(DateUnit::year);
        if (TakeText("月"))
            return SetUnit(DateUnit::month);
        if (TakeText("日"))
            return SetUnit(DateUnit::day);
        for (std::size_t i = 0; i < chineseMonths.size(); ++i) {
            if (TakeText(chineseMonths[i]))
                return Add({static_cast<int>(i) + 1, DateUnit::month});
        }
        for (const std::string_view day : chineseDays) {
            if (TakeText(day))
                return true;
        }
        if (TakeText("上午"))
            return MarkChineseHalfDay(HalfDay::morning);
        if (TakeText("下午"))
            return MarkChineseHalfDay(HalfDay::afternoon);
        return false;
    }

    /// Says what the field just read stands for.
    bool SetUnit(DateUnit unit) {
        if (count_ == 0 || separatorPending_ || fields_[count_ - 1].date.unit != DateUnit::unknown)
            return false;
        fields_[count_ - 1].date.unit = unit;
        return true;
    }

    /// Marks the field just read.
    bool MarkHalfDay(HalfDay halfDay) {
        if (count_ == 0 || halfDay_ != HalfDay::none || pendingHalfDay_ != HalfDay::none || separatorPending_)
            return false;
        fields_[count_ - 1].hasHalfDay = true;
        halfDay_ = halfDay;
        return true;
    }

    /// Marks the time behind it, or the one before it: "下午 8:30" as well as "8:30 下午".
    bool MarkChineseHalfDay(HalfDay halfDay) {
        const bool followsTime = count_ > 1 && fields_[count_ - 2].joinsTime;
        const std::size_t next = rest_.find_first_not_of(" \t");
        if (followsTime || next == rest_.npos || !text::IsDigit(rest_[next]))
            return MarkHalfDay(halfDay);
        if (halfDay_ != HalfDay::none || pendingHalfDay_ != HalfDay::none || separatorPending_)
            return false;
        pendingHalfDay_ = halfDay;
        return true;
    }

    /// Finds the fields of the time: a run of joined ones, or one with a half of the day, at the start or the end.
    std::optional<DateFields> Sort() const {
        std::size_t begin = 0;
        while (begin < count_ && !fields_[begin].joinsTime && !fields_[begin].hasHalfDay)
            ++begin;
        std::size_t end = begin;
        if (begin < count_) {
            while (fields_[end].joinsTime)
                ++end;
            ++end;
        }
        DateFields result;
        if (end - begin > result.time.size() || (begin > 0 && end < count_))
            return std::nullopt;
        result.halfDay = halfDay_;
        for (std::size_t i = 0; i < count_; ++i) {
            const bool isTime = i >= begin && i < end;
            if (isTime && fields_[i].date.unit != DateUnit::unknown)
                return std::nullopt;
            if (isTime) {
                result.time[i - begin] = fields_[i].date.value;
                continue;
            }
            if (fields_[i].joinsTime || fields_[i].hasHalfDay || result.dateCount == result.date.size())
                return std::nullopt;
            result.date[result.dateCount++] = fields_[i].date;
        }
        if (result.dateCount == 1)
            return std::nullopt;
        return result;
    }

    std::string_view rest_;
    std::array<Field, maximumFields> fields_{};
    std::size_t count_ = 0;
    int separators_ = 0;
    /// A separator was read that still wants its second number.
    bool separatorPending_ = false;
    HalfDay halfDay_ = HalfDay::none;
    /// 上午 or 下午 was read before the number that it belongs to.
    HalfDay pendingHalfDay_ = HalfDay::none;
};

} // namespace

std::optional<DateFields> ReadDateFields(std::string_view text) noexcept { return Reader(text).Read(); }

} // namespace ModPub
