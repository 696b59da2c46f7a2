#include "import/cells/ReadNumber.h"

#include <gtest/gtest.h>

namespace {

using importing::Cell;
using importing::Reading;
namespace message = importing::message;

Reading NumberTyped(const std::string& text) { return importing::ReadNumber({Cell::Kind::text, text}); }

struct TakenNumber {
    const char* name;
    const char* typed;
    const char* value;
};

class NumberTaken : public testing::TestWithParam<TakenNumber> {};

TEST_P(NumberTaken, Becomes) { EXPECT_EQ(NumberTyped(GetParam().typed), Reading::Take(GetParam().value)); }

INSTANTIATE_TEST_SUITE_P(
    Texts, NumberTaken,
    testing::Values(TakenNumber{"Plain", "1234.56", "1234.56"}, TakenNumber{"Grouped", "1,234,567.89", "1234567.89"},
                    TakenNumber{"GroupedWithoutFraction", "12,000", "12000"},
                    TakenNumber{"FullWidth", "１２３．５", "123.5"},
                    TakenNumber{"FullWidthGrouped", "１，２３４", "1234"}, TakenNumber{"YuanSign", "¥1,200.00", "1200"},
                    TakenNumber{"WideYuanSign", "￥35", "35"}, TakenNumber{"Yuan", "350元", "350"},
                    TakenNumber{"BlanksAround", "  42\u3000", "42"},
                    TakenNumber{"GroupedByBlanks", "1 234 567", "1234567"}, TakenNumber{"BlankBehindSign", "- 5", "-5"},
                    TakenNumber{"Parentheses", "(50)", "-50"}, TakenNumber{"WideParentheses", "（1,050.5）", "-1050.5"},
                    TakenNumber{"MinusBehind", "50-", "-50"}, TakenNumber{"MinusBefore", "-0.50", "-0.5"},
                    TakenNumber{"PlusBefore", "+7", "7"}, TakenNumber{"LeadingZeros", "007", "7"},
                    TakenNumber{"FractionAlone", ".5", "0.5"}, TakenNumber{"NegativeZero", "-0.00", "0"},
                    TakenNumber{"Zero", "0", "0"}, TakenNumber{"Empty", "", ""}, TakenNumber{"BlanksAlone", " \t", ""}),
    [](const auto& tested) { return tested.param.name; });

TEST(ReadNumber, TakesANumberCellAsItIs) {
    EXPECT_EQ(importing::ReadNumber({Cell::Kind::number, "17.25"}), Reading::Take("17.25"));
}

TEST(ReadNumber, AsksWhatACommaThatDoesNotGroupMeans) {
    EXPECT_EQ(NumberTyped("1,23"), Reading::Refuse({message::numberGrouping, {"1,23", "1.23", "123"}}));
    EXPECT_EQ(NumberTyped("1234,567"), Reading::Refuse({message::numberGrouping, {"1234,567", "1234.567", "1234567"}}));
}

TEST(ReadNumber, RefusesCommasInTheFraction) {
    EXPECT_EQ(NumberTyped("1.234,5"), Reading::Refuse({message::numberNone, {"1.234,5"}}, "1.2345"));
}

TEST(ReadNumber, RefusesAPercentageAndNamesItsNumber) {
    EXPECT_EQ(NumberTyped("12.5%"), Reading::Refuse({message::numberPercent, {"12.5%", "0.125"}}, "0.125"));
    EXPECT_EQ(NumberTyped("５％"), Reading::Refuse({message::numberPercent, {"５％", "0.05"}}, "0.05"));
}

TEST(ReadNumber, RefusesAnExponentInATextAndNamesItsNumber) {
    EXPECT_EQ(NumberTyped("6.9E+3"), Reading::Refuse({message::numberNone, {"6.9E+3"}}, "6900"));
}

TEST(ReadNumber, RefusesText) {
    EXPECT_EQ(NumberTyped("十二"), Reading::Refuse({message::numberNone, {"十二"}}));
    EXPECT_EQ(NumberTyped("12个"), Reading::Refuse({message::numberNone, {"12个"}}));
    EXPECT_EQ(NumberTyped("-"), Reading::Refuse({message::numberNone, {"-"}}));
}

TEST(ReadNumber, RefusesErrorsFormulasDatesAndBooleans) {
    EXPECT_EQ(importing::ReadNumber({Cell::Kind::error, "#REF!"}), Reading::Refuse({message::cellError, {"#REF!"}}));
    EXPECT_EQ(importing::ReadNumber({Cell::Kind::noValue, "=A1*2"}),
              Reading::Refuse({message::cellNoValue, {"=A1*2"}}));
    EXPECT_EQ(importing::ReadNumber({Cell::Kind::date, "2024-01-05"}),
              Reading::Refuse({message::cellOfOtherKind, {"2024-01-05"}}));
    EXPECT_EQ(importing::ReadNumber({Cell::Kind::boolean, "TRUE"}),
              Reading::Refuse({message::cellOfOtherKind, {"TRUE"}}));
}

} // namespace
