#include "import/reading/SerialDate.h"

#include "import/reading/NumberFormat.h"

#include <gtest/gtest.h>

namespace {

using importing::DateSystem;
using importing::IsDateFormat;
using importing::SerialDate;

TEST(SerialDate, CountsFrom1900) {
    EXPECT_EQ(SerialDate(1, DateSystem::from1900), "1900-01-01");
    EXPECT_EQ(SerialDate(59, DateSystem::from1900), "1900-02-28");
    EXPECT_EQ(SerialDate(61, DateSystem::from1900), "1900-03-01");
    EXPECT_EQ(SerialDate(45296, DateSystem::from1900), "2024-01-05");
    EXPECT_EQ(SerialDate(2958465, DateSystem::from1900), "9999-12-31");
}

TEST(SerialDate, RefusesTheDayThatNeverWas) { EXPECT_EQ(SerialDate(60, DateSystem::from1900), std::nullopt); }

TEST(SerialDate, CountsFrom1904) {
    EXPECT_EQ(SerialDate(0, DateSystem::from1904), "1904-01-01");
    EXPECT_EQ(SerialDate(60, DateSystem::from1904), "1904-03-01");
    // 1,462 days lie between the two systems.
    EXPECT_EQ(SerialDate(43834, DateSystem::from1904), "2024-01-05");
}

TEST(SerialDate, ShowsTheTimeOfDay) {
    EXPECT_EQ(SerialDate(45296.5, DateSystem::from1900), "2024-01-05 12:00:00");
    EXPECT_EQ(SerialDate(45296.999999999, DateSystem::from1900), "2024-01-06");
    EXPECT_EQ(SerialDate(0.75, DateSystem::from1900), "18:00:00");
}

TEST(SerialDate, RefusesWhatIsNoDay) {
    EXPECT_EQ(SerialDate(-1, DateSystem::from1900), std::nullopt);
    EXPECT_EQ(SerialDate(2958466, DateSystem::from1900), std::nullopt);
    EXPECT_EQ(SerialDate(2957004, DateSystem::from1904), std::nullopt);
}

TEST(NumberFormat, KnowsTheBuiltInDates) {
    for (const unsigned id : {14U, 22U, 27U, 36U, 45U, 47U, 50U, 58U}) {
        EXPECT_TRUE(IsDateFormat(id)) << id;
    }
    for (const unsigned id : {0U, 1U, 4U, 13U, 23U, 26U, 37U, 44U, 48U, 49U, 59U}) {
        EXPECT_FALSE(IsDateFormat(id)) << id;
    }
}

TEST(NumberFormat, FindsDatesInCodes) {
    for (const char* const code : {"yyyy-mm-dd", "yyyy\"年\"m\"月\"d\"日\"", "[$-804]m/d", "[h]:mm", "mm:ss.0"}) {
        EXPECT_TRUE(IsDateFormat(std::string_view(code))) << code;
    }
}

TEST(NumberFormat, FindsNoDatesInNumbers) {
    for (const char* const code : {"General", "0.00E+00", "#,##0.00", "[Red]0.00", "0\" days\"", "\\d0", "_-* 0_-", "@",
                                   "0;yyyy", "[$¥-804]#,##0"}) {
        EXPECT_FALSE(IsDateFormat(std::string_view(code))) << code;
    }
}

} // namespace
