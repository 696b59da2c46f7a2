#include "import/cells/ReadDate.h"

#include <gtest/gtest.h>

namespace {

using importing::Cell;
using importing::Reading;
namespace message = importing::message;

Reading DateTyped(const std::string& text) { return importing::ReadDate({Cell::Kind::text, text}); }
Reading ReadSerial(const std::string& number) { return importing::ReadDate({Cell::Kind::number, number}); }

struct TakenDate {
    const char* name;
    const char* typed;
};

class FifthOfJanuary : public testing::TestWithParam<TakenDate> {};

TEST_P(FifthOfJanuary, IsRead) { EXPECT_EQ(DateTyped(GetParam().typed), Reading::Take("2024-01-05")); }

INSTANTIATE_TEST_SUITE_P(Texts, FifthOfJanuary,
                         testing::Values(TakenDate{"Iso", "2024-01-05"}, TakenDate{"Slashes", "2024/1/5"},
                                         TakenDate{"Points", "2024.1.5"}, TakenDate{"Chinese", "2024年1月5日"},
                                         TakenDate{"ChineseWithoutDay", "2024年1月5"}, TakenDate{"Digits", "20240105"},
                                         TakenDate{"FullWidth", "２０２４－０１－０５"},
                                         TakenDate{"Blanks", " 2024-1-5 "}, TakenDate{"WithTime", "2024-01-05 08:30"}),
                         [](const auto& tested) { return tested.param.name; });

TEST(ReadDate, TakesDateCellsWithoutTheirTime) {
    EXPECT_EQ(importing::ReadDate({Cell::Kind::date, "2024-01-05"}), Reading::Take("2024-01-05"));
    EXPECT_EQ(importing::ReadDate({Cell::Kind::date, "2024-01-05 08:30:00"}), Reading::Take("2024-01-05"));
}

TEST(ReadDate, TakesEightDigitsOfANumberCell) { EXPECT_EQ(ReadSerial("20240105"), Reading::Take("2024-01-05")); }

TEST(ReadDate, ShowsBothReadingsOfADateWithTwo) {
    EXPECT_EQ(DateTyped("5/12/2024"),
              Reading::Refuse({message::dateTwoReadings, {"5/12/2024", "2024-05-12", "2024-12-05"}}));
}

TEST(ReadDate, TakesTheOnlyReadingOfADateWithTheYearLast) {
    EXPECT_EQ(DateTyped("25/12/2024"), Reading::Take("2024-12-25"));
    EXPECT_EQ(DateTyped("12/25/2024"), Reading::Take("2024-12-25"));
    EXPECT_EQ(DateTyped("5/5/2024"), Reading::Take("2024-05-05"));
}

TEST(ReadDate, RefusesDaysThatAreNone) {
    EXPECT_EQ(DateTyped("2024-02-30"), Reading::Refuse({message::dateNoDay, {"2024-02-30"}}));
    EXPECT_EQ(DateTyped("20230229"), Reading::Refuse({message::dateNoDay, {"20230229"}}));
    EXPECT_EQ(DateTyped("31/31/2024"), Reading::Refuse({message::dateNoDay, {"31/31/2024"}}));
    // The ledger's columns begin with the year 1753.
    EXPECT_EQ(DateTyped("1024-01-05"), Reading::Refuse({message::dateNoDay, {"1024-01-05"}}));
}

TEST(ReadDate, ProposesTheDayOfANumberWithoutADatesFormat) {
    EXPECT_EQ(ReadSerial("45296"), Reading::Refuse({message::dateSerial, {"45296", "2024-01-05"}}, "2024-01-05"));
}

TEST(ReadDate, RefusesANumberThatIsNoDay) {
    EXPECT_EQ(ReadSerial("-1"), Reading::Refuse({message::dateNone, {"-1"}}));
    EXPECT_EQ(ReadSerial("0.5"), Reading::Refuse({message::dateNone, {"0.5"}}));
    EXPECT_EQ(ReadSerial("60"), Reading::Refuse({message::dateNone, {"60"}}));
}

TEST(ReadDate, ProposesThisCenturyForYearsOfTwoDigits) {
    EXPECT_EQ(DateTyped("24-1-5"), Reading::Refuse({message::dateNone, {"24-1-5"}}, "2024-01-05"));
}

TEST(ReadDate, RefusesText) {
    for (const char* const text : {"元旦", "2024-01", "2024-1/5", "2024-01-05x", "08:30", "2024--5"}) {
        EXPECT_EQ(DateTyped(text), Reading::Refuse({message::dateNone, {text}}));
    }
}

TEST(ReadDate, RefusesATimeWithoutADay) {
    EXPECT_EQ(importing::ReadDate({Cell::Kind::date, "08:30:00"}), Reading::Refuse({message::dateNone, {"08:30:00"}}));
}

TEST(ReadDate, RefusesADateFormatWithoutADay) {
    EXPECT_EQ(importing::ReadDate({Cell::Kind::noDate, "60"}), Reading::Refuse({message::cellNoDate, {"60"}}));
}

TEST(ReadDate, TakesAnEmptyCell) { EXPECT_EQ(importing::ReadDate({}), Reading::Take("")); }

} // namespace
