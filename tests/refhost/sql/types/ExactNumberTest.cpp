#include "refhost/sql/types/ExactNumber.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using refhost::sql::ExactNumber;

ExactNumber Number(std::string_view text) { return ExactNumber::Parse(text).value(); }

TEST(ExactNumber, KeepsItsDigitsAndItsScale) {
    for (const char* text : {"0", "7", "-7", "0.00", "12345678901234567890123456789012345678", "-0.05", "1000.10"})
        EXPECT_EQ(Number(text).ToText(), text);
    EXPECT_EQ(Number("+1.5").ToText(), "1.5");
    EXPECT_EQ(Number(".5").ToText(), "0.5");
    EXPECT_EQ(Number("5.").ToText(), "5");
    EXPECT_EQ(Number("007").ToText(), "7");
    EXPECT_EQ(ExactNumber(std::numeric_limits<std::int64_t>::min()).ToText(), "-9223372036854775808");
}

TEST(ExactNumber, HasNoNegativeZero) {
    EXPECT_EQ(Number("-0.00").ToText(), "0.00");
    EXPECT_FALSE(Number("-0").IsNegative());
    EXPECT_EQ(Number("-0.04").Rescaled(1).ToText(), "0.0");
}

TEST(ExactNumber, IsReadFromDigitsAlone) {
    for (const char* text : {"", "-", ".", "1e5", "1 ", " 1", "1.2.3", "--1", "１"})
        EXPECT_FALSE(ExactNumber::Parse(text)) << text;
}

TEST(ExactNumber, TakesEightyDigits) {
    const std::string most(80, '9');
    EXPECT_EQ(Number(most).ToText(), most);
    EXPECT_EQ(Number("." + most).ToText(), "0." + most);
    EXPECT_FALSE(ExactNumber::Parse(most + "9"));
    EXPECT_FALSE(ExactNumber::Parse("." + most + "9"));
    EXPECT_EQ(Number(std::string(200, '0') + "1").ToText(), "1");
}

TEST(ExactNumber, SumsTakeTheLargerScale) {
    EXPECT_EQ((Number("1.5") + Number("2.25")).ToText(), "3.75");
    EXPECT_EQ((Number("1.50") - Number("1.5")).ToText(), "0.00");
    EXPECT_EQ((Number("0.1") - Number("100")).ToText(), "-99.9");
}

TEST(ExactNumber, ProductsTakeBothScales) {
    EXPECT_EQ((Number("1.5") * Number("-2.25")).ToText(), "-3.375");
    EXPECT_EQ((Number("99999999999999999999") * Number("99999999999999999999")).ToText(),
              "9999999999999999999800000000000000000001");
}

TEST(ExactNumber, QuotientsAreCut) {
    EXPECT_EQ(Divide(Number("1"), Number("3"), 6).ToText(), "0.333333");
    EXPECT_EQ(Divide(Number("-2"), Number("3"), 2).ToText(), "-0.66");
    EXPECT_EQ(Divide(Number("1"), Number("0.00000001"), 0).ToText(), "100000000");
}

TEST(ExactNumber, RestHasTheSignOfTheDividend) {
    EXPECT_EQ(Modulo(Number("7"), Number("3")).ToText(), "1");
    EXPECT_EQ(Modulo(Number("-7"), Number("3")).ToText(), "-1");
    EXPECT_EQ(Modulo(Number("7.5"), Number("-2")).ToText(), "1.5");
}

TEST(ExactNumber, RoundsHalfAwayFromZero) {
    EXPECT_EQ(Number("2.445").Rescaled(2).ToText(), "2.45");
    EXPECT_EQ(Number("-2.445").Rescaled(2).ToText(), "-2.45");
    EXPECT_EQ(Number("2.4449").Rescaled(2).ToText(), "2.44");
    EXPECT_EQ(Number("9.99").Rescaled(0).ToText(), "10");
    EXPECT_EQ(Number("1").Rescaled(3).ToText(), "1.000");
    EXPECT_EQ(Number("-2.449").Truncated(2).ToText(), "-2.44");
}

TEST(ExactNumber, CountsDigitsBeforeThePoint) {
    EXPECT_EQ(Number("0.99").WholeDigits(), 0);
    EXPECT_EQ(Number("-120.5").WholeDigits(), 3);
}

TEST(ExactNumber, WholePartMayBeTooLarge) {
    EXPECT_EQ(Number("-1.9").ToInteger(), -1);
    EXPECT_EQ(Number("9223372036854775807.9").ToInteger(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Number("9223372036854775808").ToInteger(), std::nullopt);
}

TEST(ExactNumber, DoublesGiveTheirShortestDigits) {
    EXPECT_EQ(ExactNumber::FromDouble(0.1)->ToText(), "0.1");
    EXPECT_EQ(ExactNumber::FromDouble(-1e22)->ToText(), "-10000000000000000000000");
    EXPECT_EQ(ExactNumber::FromDouble(1.5e-7)->ToText(), "0.00000015");
    EXPECT_EQ(ExactNumber::FromDouble(1e-90)->ToText(), "0");
    EXPECT_FALSE(ExactNumber::FromDouble(1e60));
    EXPECT_FALSE(ExactNumber::FromDouble(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(Number("0.1").ToDouble(), 0.1);
}

} // namespace
