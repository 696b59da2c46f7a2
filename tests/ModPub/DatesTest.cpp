#include "ModPub/Dates.h"

#include "tests/support/ConversionCases.h"
#include "tests/support/ErrorOf.h"

#include <chrono>
#include <utility>

#include <gtest/gtest.h>

using namespace ModPub;
using namespace std::literals;
namespace en = host::error_number;

namespace {

host::Date Day(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return MakeDate({year, month, day, hour, minute, second}).value();
}

int ThisYear() {
    return static_cast<int>(
        std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now())).year());
}

} // namespace

TEST(MakeDate, CountsDaysFromTheEndOf1899) {
    EXPECT_EQ(Day(1899, 12, 30).days, 0);
    EXPECT_EQ(Day(1899, 12, 31).days, 1);
    EXPECT_EQ(Day(1899, 12, 29).days, -1);
    EXPECT_EQ(Day(1970, 1, 1).days, 25569);
    EXPECT_EQ(Day(2023, 3, 15).days, 45000);
    EXPECT_EQ(Day(100, 1, 1).days, -657434);
    EXPECT_EQ(Day(9999, 12, 31).days, 2958465);
    EXPECT_EQ(Day(2023, 3, 15, 12).days, 45000.5);
    EXPECT_EQ(Day(1899, 12, 29, 6).days, -1.25) << "the time counts away from zero";
}

TEST(MakeDate, RefusesWhatIsNoDay) {
    for (const DateParts& parts :
         {DateParts{2023, 2, 29}, DateParts{1900, 2, 29}, DateParts{2023, 13, 1}, DateParts{2023, 0, 1},
          DateParts{2023, 4, 31}, DateParts{2023, 1, 0}, DateParts{99, 1, 1}, DateParts{10000, 1, 1},
          DateParts{2023, 1, 1, 24}, DateParts{2023, 1, 1, 0, 60}, DateParts{2023, 1, 1, 0, 0, 60}})
        EXPECT_FALSE(MakeDate(parts)) << parts.year << '-' << parts.month << '-' << parts.day;
    EXPECT_TRUE(MakeDate({2000, 2, 29}));
    EXPECT_TRUE(MakeDate({2024, 2, 29}));
}

TEST(SplitDate, RoundsToTheSecond) {
    EXPECT_EQ(SplitDate({45000.25}), (DateParts{2023, 3, 15, 6, 0, 0}));
    EXPECT_EQ(SplitDate({-1.25}), (DateParts{1899, 12, 29, 6, 0, 0}));
    EXPECT_EQ(SplitDate({44999.9999999}), (DateParts{2023, 3, 15, 0, 0, 0}));
    EXPECT_EQ(SplitDate({-657434.75}), (DateParts{100, 1, 1, 18, 0, 0}));
    EXPECT_FALSE(SplitDate({2958466}));
    EXPECT_FALSE(SplitDate({2958465.9999999}));
    EXPECT_FALSE(SplitDate({-657435}));
    EXPECT_FALSE(SplitDate({std::numeric_limits<double>::quiet_NaN()}));
}

TEST(ParseDate, ReadsYearMonthDay) {
    for (const auto text :
         {"2023-05-01"sv, "2023-5-1"sv,     "2023/5/1"sv,    "2023/05/01"sv,      "2023-5/1"sv,
          " 2023-5-1 "sv, "2023 5 1"sv,     "2023,5,1"sv,    "2023年5月1日"sv,    "2023年05月01日"sv,
          "2023年5月"sv,  "2023-05"sv,      "5-2023"sv,      "23年5月1日"sv,      "2023年5月1"sv,
          "2023年5/1"sv,  "1日5月2023年"sv, "May 1, 2023"sv, "1 May 2023"sv,      "1-May-2023"sv,
          "may 2023"sv,   "五月 1 2023"sv,  "2023 五月 1"sv, "2023-5-1 星期一"sv, "Monday, 2023-5-1"sv,
          "23-5-1"sv,     "5/1/2023"sv})
        EXPECT_EQ(ParseDate(text), Day(2023, 5, 1)) << text;
}

TEST(ParseDate, TriesOtherOrdersWhenYearMonthDayGivesNoDay) {
    EXPECT_EQ(ParseDate("1/2/3"), Day(2001, 2, 3));
    EXPECT_EQ(ParseDate("12/31/1999"), Day(1999, 12, 31)) << "month, day, year";
    EXPECT_EQ(ParseDate("1999-31-12"), Day(1999, 12, 31)) << "year, day, month";
    EXPECT_EQ(ParseDate("31/12/99"), Day(1999, 12, 31)) << "day, month, year";
    EXPECT_EQ(ParseDate("1/2/1970"), Day(1970, 1, 2)) << "month before day";
}

TEST(ParseDate, TakesTwoNumbersAsMonthAndDayOfThisYear) {
    // The year may end in between.
    const auto expect = [](std::string_view text, int month, int day) {
        const int before = ThisYear();
        const std::optional<host::Date> date = ParseDate(text);
        EXPECT_TRUE(date == Day(before, month, day) || date == Day(ThisYear(), month, day)) << text;
    };
    expect("5/1", 5, 1);
    expect("5月1日", 5, 1);
    expect("13/1", 1, 13);
    expect("May 2", 5, 2);
    expect("2 May", 5, 2);
    EXPECT_EQ(ParseDate("May 35"), Day(1935, 5, 1));
    EXPECT_EQ(ParseDate("30 2"), Day(1930, 2, 1)) << "no day of February, so a year";
}

TEST(ParseDate, PlacesYearsOfTwoDigitsBetween1930And2029) {
    EXPECT_EQ(ParseDate("29-1-1"), Day(2029, 1, 1));
    EXPECT_EQ(ParseDate("30-1-1"), Day(1930, 1, 1));
    EXPECT_EQ(ParseDate("00-1-1"), Day(2000, 1, 1));
    EXPECT_EQ(ParseDate("99-12-31"), Day(1999, 12, 31));
    EXPECT_EQ(ParseDate("0099-1-1"), Day(1999, 1, 1));
    EXPECT_EQ(ParseDate("100-1-1"), Day(100, 1, 1));
    EXPECT_EQ(ParseDate("9999-12-31"), Day(9999, 12, 31));
}

TEST(ParseDate, KnowsLeapDays) {
    EXPECT_TRUE(IsDate("2024-02-29"));
    EXPECT_TRUE(IsDate("2000-02-29"));
    EXPECT_TRUE(IsDate("96-2-29"));
    EXPECT_FALSE(IsDate("2023-02-29"));
    EXPECT_FALSE(IsDate("1900-02-29"));
    EXPECT_FALSE(IsDate("2100-02-29"));
}

TEST(ParseDate, ReadsTimes) {
    const std::pair<std::string_view, host::Date> table[] = {
        {"8:30", Day(1899, 12, 30, 8, 30)},
        {"8.30", Day(1899, 12, 30, 8, 30)},
        {"8:30:15", Day(1899, 12, 30, 8, 30, 15)},
        {"8:30:15 PM", Day(1899, 12, 30, 20, 30, 15)},
        {"8:30pm", Day(1899, 12, 30, 20, 30)},
        {"12:59 AM", Day(1899, 12, 30, 0, 59)},
        {"12:59 p", Day(1899, 12, 30, 12, 59)},
        {"00:00 pm", Day(1899, 12, 30, 12)},
        {"13:00 AM", Day(1899, 12, 30, 13)},
        {"8 PM", Day(1899, 12, 30, 20)},
        {"下午 8:30", Day(1899, 12, 30, 20, 30)},
        {"8:30 下午", Day(1899, 12, 30, 20, 30)},
        {"上午8:30", Day(1899, 12, 30, 8, 30)},
        {"2023-05-01 8:30", Day(2023, 5, 1, 8, 30)},
        {"8:30 2023-5-1", Day(2023, 5, 1, 8, 30)},
        {"2023-5-1 下午 8:30:15", Day(2023, 5, 1, 20, 30, 15)},
        {"2023/5/1 8:30:15 下午", Day(2023, 5, 1, 20, 30, 15)},
        {"2023-5-1 8 am", Day(2023, 5, 1, 8)},
        {"6/30/2011\u30001:20:34", Day(2011, 6, 30, 1, 20, 34)},
        {"0:00", Day(1899, 12, 30)},
    };
    for (const auto& [text, expected] : table) {
        const auto date = ParseDate(text);
        ASSERT_TRUE(date) << text;
        EXPECT_DOUBLE_EQ(date->days, expected.days) << text;
    }
}

TEST(ParseDate, RefusesWhatIsNoDate) {
    for (const auto text : {""sv,
                            " "sv,
                            "0"sv,
                            "1"sv,
                            "20230501"sv,
                            "45000"sv,
                            "abc"sv,
                            "2024-13-40"sv,
                            "13/14/2024"sv,
                            "2024-00-10"sv,
                            "2024-10-00"sv,
                            "2023-04-31"sv,
                            "10000-1-1"sv,
                            "2023.5.1"sv,
                            "02.01.1970"sv,
                            "2023-5-1x"sv,
                            "2023-5-1 abc"sv,
                            "2023-05-01T08:30"sv,
                            "-2023-5-1"sv,
                            "2023--5"sv,
                            "2023-5-"sv,
                            "2023-5-1-"sv,
                            "2023-5-1-1"sv,
                            "2023;5;1"sv,
                            "24:00"sv,
                            "0:60"sv,
                            "8:30:60"sv,
                            "2023-05-01 24:00"sv,
                            "0."sv,
                            ".0"sv,
                            "1.1-"sv,
                            "1 2 am"sv,
                            "1 am 2"sv,
                            "1.5 2"sv,
                            "1 5.2"sv,
                            "1 2 am 3"sv,
                            "1 2.3 4"sv,
                            "1.2.3 4"sv,
                            "1.2 3.4"sv,
                            "1.2.3.4"sv,
                            "1 2 3 4"sv,
                            "1.2 3 am 4"sv,
                            "1.2.3 4 5 am"sv,
                            "1 2 3 4 5"sv,
                            "1.2.3.4.5.6"sv,
                            "1 2 3 4 5 6 7"sv,
                            "am"sv,
                            "下午"sv,
                            "May"sv,
                            "五月"sv,
                            "星期一"sv,
                            "May:30"sv,
                            "2013-05-14 02:04:12.017000000"sv,
                            "True"sv,
                            "２０２３-5-1"sv,
                            "32 49"sv,
                            "99999999999-1-1"sv,
                            "8:30 am pm"sv,
                            "年5月"sv,
                            "2023年13月1日"sv,
                            "2023年5日"sv,
                            "5月2023月"sv,
                            "2023年年5月"sv,
                            "2023-5-1\xFF"sv})
        EXPECT_FALSE(IsDate(text)) << text;
    EXPECT_EQ(test::ErrorNumberOf([] { return ToDate("2024-13-40"sv); }), en::typeMismatch);
}

TEST(DateText, IsTheShortDateAndTheTime) {
    EXPECT_EQ(DateText({45047}), "2023/5/1");
    EXPECT_EQ(DateText({45000.5}), "2023/3/15 12:00:00");
    EXPECT_EQ(DateText({45000.25}), "2023/3/15 6:00:00");
    EXPECT_EQ(DateText({0}), "0:00:00");
    EXPECT_EQ(DateText({0.5}), "12:00:00");
    EXPECT_EQ(DateText({-1}), "1899/12/29");
    EXPECT_EQ(DateText({-657434}), "100/1/1");
    EXPECT_EQ(test::ErrorNumberOf([] { return DateText({3000000}); }), en::invalidCall);
}

TEST(FormatDate, WritesADateAsYearMonthDay) {
    EXPECT_EQ(FormatDate("2023-05-01"sv), "2023-05-01");
    EXPECT_EQ(FormatDate("2023/5/1"sv), "2023-05-01");
    EXPECT_EQ(FormatDate("2023-5-1 8:30"sv), "2023-05-01");
    EXPECT_EQ(FormatDate("8:30"sv), "1899-12-30");
    EXPECT_EQ(FormatDate("100-1-1"sv), "0100-01-01");
    EXPECT_EQ(FormatDate(host::Date{45000.75}), "2023-03-15");
}

TEST(FormatDate, TakesNumericTextAsADayNumber) {
    EXPECT_EQ(FormatDate("45000"sv), "2023-03-15");
    EXPECT_EQ(FormatDate("45000.5"sv), "2023-03-15");
    EXPECT_EQ(FormatDate("0"sv), "1899-12-30");
    EXPECT_EQ(FormatDate("-5"sv), "1899-12-25");
    EXPECT_EQ(FormatDate("1e3"sv), "1902-09-26");
    EXPECT_EQ(FormatDate("20230501"sv), "20230501") << "no date has this number";
    EXPECT_EQ(FormatDate("1e400"sv), "1e400");
}

TEST(FormatDate, LeavesOtherTextAsItIs) {
    for (const auto text :
         {""sv, " "sv, "abc"sv, "2024-13-40"sv, "2023.5.1"sv, "True"sv, "2023年13月1日"sv, "'); --"sv})
        EXPECT_EQ(FormatDate(text), text);
}

// What must hold of every text.
TEST(Dates, TextOfADateReadsBackAsTheDate) {
    std::vector<std::string> texts = cases::MadeDateTexts(4000, 11);
    texts.insert(texts.end(), cases::dateTextEdges.begin(), cases::dateTextEdges.end());
    int dates = 0;
    for (const std::string& text : texts) {
        const auto date = ParseDate(text);
        if (!date)
            continue;
        ++dates;
        const auto parts = SplitDate(*date);
        ASSERT_TRUE(parts) << text;
        EXPECT_EQ(MakeDate(*parts), date) << text;
        const std::string formatted = FormatDate(text);
        EXPECT_EQ(FormatDate(formatted), formatted) << text;
        EXPECT_DOUBLE_EQ(ToDate(DateText(*date)).days, date->days) << text;
    }
    EXPECT_GT(dates, 1000);
}
