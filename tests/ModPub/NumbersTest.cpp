#include "ModPub/Numbers.h"

#include "tests/support/ConversionCases.h"
#include "tests/support/ErrorOf.h"

#include <cmath>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

using namespace ModPub;
using namespace std::literals;
namespace en = host::error_number;

TEST(Val, ReadsTheLeadingNumber) {
    const std::pair<std::string_view, double> table[] = {
        {"", 0},          {"0", 0},
        {"12", 12},       {"12.5", 12.5},
        {"-12.5", -12.5}, {"+12.5", 12.5},
        {".5", 0.5},      {"-.5", -0.5},
        {"5.", 5},        {".", 0},
        {"-", 0},         {"abc", 0},
        {"12abc", 12},    {"1.2.3", 1.2},
        {"1,234", 1},     {"--5", 0},
        {"￥5", 0},       {"(5)", 0},
        {"１２", 0},      {"12１", 12},
        {"0.1", 0.1},     {"123456789012345678901234567890", 123456789012345678901234567890.0},
    };
    for (const auto& [text, expected] : table)
        EXPECT_EQ(Val(text), expected) << text;
}

TEST(Val, IgnoresBlanksTabsAndLineFeedsWhereverTheyStand) {
    EXPECT_EQ(Val(" 1 234.5x"), 1234.5);
    EXPECT_EQ(Val("\t1\n2 . 5"), 12.5);
    EXPECT_EQ(Val("- 5"), -5);
    EXPECT_EQ(Val("1 e 3"), 1000);
    EXPECT_EQ(Val("   "), 0);
    EXPECT_EQ(Val("1\r2"), 1) << "a carriage return ends the number";
    EXPECT_EQ(Val("1\u00A02"), 1) << "a blank of another kind ends the number";
    EXPECT_EQ(Val("1\u30002"), 1);
}

TEST(Val, ReadsExponentsWithEAndD) {
    EXPECT_EQ(Val("1e3"), 1000);
    EXPECT_EQ(Val("1E3"), 1000);
    EXPECT_EQ(Val("1d3"), 1000);
    EXPECT_EQ(Val("1D+3"), 1000);
    EXPECT_EQ(Val("25e-2"), 0.25);
    EXPECT_EQ(Val("1e"), 1);
    EXPECT_EQ(Val("1e+"), 1);
    EXPECT_EQ(Val("1e3.5"), 1000);
    EXPECT_EQ(Val("e3"), 0);
}

TEST(Val, ReadsHexadecimalAndOctalDigits) {
    const std::pair<std::string_view, double> table[] = {
        {"&H10", 16},       {"&h1f", 31},
        {"&O17", 15},       {"&o17", 15},
        {"&HFF", 255},      {"&HFFFF", -1},
        {"&H8000", -32768}, {"&H7FFF", 32767},
        {"&HFFFF&", 65535}, {"&H8000&", 32768},
        {"&H10000", 65536}, {"&HFFFFFFFF", -1},
        {"&O177777", -1},   {"&H7FFFFFFF", 2147483647.0},
        {"& H 1 0", 16},    {"&H10x", 16},
        {"&H", 0},          {"&", 0},
        {"&HG", 0},         {"&O8", 0},
    };
    for (const auto& [text, expected] : table)
        EXPECT_EQ(Val(text), expected) << text;
}

TEST(Val, RaisesOverflowForANumberThatIsTooLarge) {
    for (const auto text :
         {"1e400"sv, "-1e400"sv, "1e99999999999999999999"sv, "&H100000000"sv, "&HFFFFFFFFFFFFFFFFFF"sv})
        EXPECT_EQ(test::ErrorNumberOf([&] { return Val(text); }), en::overflow) << text;
    EXPECT_EQ(Val("1e-400"), 0);
    EXPECT_EQ(Val("1e-99999999999999999999"), 0);
    EXPECT_EQ(Val("0e400"), 0);
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1e402"), 10);
    EXPECT_EQ(test::ErrorNumberOf([] { return Val(std::string(400, '9')); }), en::overflow);
}

TEST(NumberText, HasUpToFifteenSignificantDigits) {
    const std::pair<double, std::string_view> table[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {1.0, "1"},
        {-1.5, "-1.5"},
        {0.1, "0.1"},
        {0.1 + 0.2, "0.3"},
        {2.675, "2.675"},
        {1.0 / 3, "0.333333333333333"},
        {2.0 / 3, "0.666666666666667"},
        {10.0 / 3, "3.33333333333333"},
        {100.0, "100"},
        {12345678901234.5, "12345678901234.5"},
        {123456789012345.0, "123456789012345"},
        {100000000000000.0, "100000000000000"},
        {1234567.891, "1234567.891"},
        {2.5, "2.5"},
        {-0.5, "-0.5"},
        {10.0203, "10.0203"},
        {-0.0025, "-0.0025"},
        {1.00001, "1.00001"},
        {99999999999.9999, "99999999999.9999"},
    };
    for (const auto& [number, expected] : table)
        EXPECT_EQ(NumberText(number), expected);
}

TEST(NumberText, RoundsAHalfBehindTheFifteenthDigitAwayFromZero) {
    EXPECT_EQ(NumberText(668136567261664.5), "668136567261665");
    EXPECT_EQ(NumberText(-668136567261664.5), "-668136567261665");
    EXPECT_EQ(NumberText(66813656726166.25), "66813656726166.3");
    EXPECT_EQ(NumberText(99999999999999.95), "100000000000000") << "the double nearest to it lies above the half";
    EXPECT_EQ(NumberText(999999999999999.5), "1E+15");
    EXPECT_EQ(TwoPlaces(6681365672616.125), 6681365672616.13);
}

TEST(NumberText, TakesTheExponentFormBeyondFifteenDigitsBeforeThePoint) {
    EXPECT_EQ(NumberText(999999999999999.0), "999999999999999");
    EXPECT_EQ(NumberText(999999999999999.9), "1E+15");
    EXPECT_EQ(NumberText(1e15), "1E+15");
    EXPECT_EQ(NumberText(-1e15), "-1E+15");
    EXPECT_EQ(NumberText(1234567890123456.0), "1.23456789012346E+15");
    EXPECT_EQ(NumberText(1e100), "1E+100");
    EXPECT_EQ(NumberText(2.5e-300), "2.5E-300");
}

// 75 / 999 shows as 7.50750750750751E-02 but 75 / 1000 as 0.075: what counts are the digits behind the point.
TEST(NumberText, TakesTheExponentFormBeyondFifteenDigitsBehindThePoint) {
    EXPECT_EQ(NumberText(75.0 / 1000), "0.075");
    EXPECT_EQ(NumberText(75.0 / 999), "7.50750750750751E-02");
    EXPECT_EQ(NumberText(1.0 / 12), "8.33333333333333E-02");
    EXPECT_EQ(NumberText(0.0001), "0.0001");
    EXPECT_EQ(NumberText(0.00001), "0.00001");
    EXPECT_EQ(NumberText(1e-12), "0.000000000001");
    EXPECT_EQ(NumberText(1e-15), "0.000000000000001");
    EXPECT_EQ(NumberText(1e-16), "1E-16");
    EXPECT_EQ(NumberText(1.5e-15), "1.5E-15");
    EXPECT_EQ(NumberText(1.5e-14), "0.000000000000015");
}

TEST(SingleText, HasUpToSevenSignificantDigits) {
    const std::pair<float, std::string_view> table[] = {
        {0.0F, "0"},
        {-0.0F, "0"},
        {0.1F, "0.1"},
        {-2.5F, "-2.5"},
        {1.0F / 3, "0.3333333"},
        {2.0F / 3, "0.6666667"},
        {1234.5678F, "1234.568"},
        {123456.75F, "123456.8"},
        {9999999.0F, "9999999"},
    };
    for (const auto& [number, expected] : table)
        EXPECT_EQ(SingleText(number), expected);
}

TEST(SingleText, RoundsAHalfBehindTheSeventhDigitAwayFromZero) {
    // Both are held exactly.
    EXPECT_EQ(SingleText(1000000.25F), "1000000");
    EXPECT_EQ(SingleText(1000000.5F), "1000001");
    EXPECT_EQ(SingleText(-1000002.5F), "-1000003");
}

TEST(SingleText, TakesTheExponentFormBeyondSevenDigitsOnEitherSideOfThePoint) {
    EXPECT_EQ(SingleText(10'000'000.0F), "1E+07");
    EXPECT_EQ(SingleText(16'777'216.0F), "1.677722E+07");
    EXPECT_EQ(SingleText(-3.4e38F), "-3.4E+38");
    EXPECT_EQ(SingleText(0.075F), "0.075");
    EXPECT_EQ(SingleText(1.0F / 30), "3.333334E-02") << "the nearest Single is 0.03333333507";
    EXPECT_EQ(SingleText(1e-7F), "0.0000001");
    EXPECT_EQ(SingleText(1e-8F), "1E-08");
    EXPECT_EQ(SingleText(std::numeric_limits<float>::infinity()), "1.#INF");
}

TEST(NumberText, NamesWhatIsNotFinite) {
    EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity()), "1.#INF");
    EXPECT_EQ(NumberText(-std::numeric_limits<double>::infinity()), "-1.#INF");
    EXPECT_EQ(NumberText(std::numeric_limits<double>::quiet_NaN()), "1.#QNAN");
}

TEST(ToDouble, ReadsNumbersInEveryFormTheyAreWrittenIn) {
    const std::pair<std::string_view, double> table[] = {
        {"12", 12},
        {" 12 ", 12},
        {"\t12\n", 12},
        {"1,234.5", 1234.5},
        {"1,2,3", 123},
        {"1,", 1},
        {"-5", -5},
        {"- 5", -5},
        {"5-", -5},
        {"5 -", -5},
        {"+5", 5},
        {"5+", 5},
        {"(5)", -5},
        {"( 5 )", -5},
        {"¥5", 5},
        {"￥5", 5},
        {"-¥5", -5},
        {"¥-5", -5},
        {"￥1,000.5", 1000.5},
        {"5￥", 5},
        {"1e3", 1000},
        {"1E+3", 1000},
        {"1e-3", 0.001},
        {"1d3", 1000},
        {".5", 0.5},
        {"5.", 5},
        {"-.5", -0.5},
        {"&H10", 16},
        {"&hffff", 65535},
        {"&O17", 15},
        {"1e-400", 0},
        {"00012", 12},
    };
    for (const auto& [text, expected] : table) {
        EXPECT_EQ(ToDouble(text), expected) << text;
        EXPECT_TRUE(IsNumeric(text)) << text;
        EXPECT_EQ(NumericValue(text), ToDouble(text)) << text;
    }
}

TEST(ToDouble, RaisesTypeMismatchForWhatIsNoNumber) {
    for (const auto text :
         {""sv,     " "sv,  "abc"sv, "1 2"sv,   "12abc"sv, "."sv,   "-"sv,   "--5"sv,       "1.2.3"sv, ",1"sv,
          "$5"sv,   "1e"sv, "e5"sv,  "12%"sv,   "(5"sv,    "5)"sv,  "()"sv,  "-5-"sv,       "¥¥5"sv,   "１２"sv,
          "True"sv, "&H"sv, "&HG"sv, "-&H10"sv, "&H10-"sv, "1/2"sv, "1\0"sv, "2023-05-01"sv}) {
        EXPECT_EQ(test::ErrorNumberOf([&] { return ToDouble(text); }), en::typeMismatch) << text;
        EXPECT_FALSE(IsNumeric(text)) << text;
        EXPECT_EQ(NumericValue(text), std::nullopt) << text;
    }
}

TEST(ToDouble, RaisesOverflowForANumberThatIsTooLarge) {
    for (const auto text : {"1e400"sv, "-1e400"sv, "&H10000000000000000"sv}) {
        EXPECT_EQ(test::ErrorNumberOf([&] { return ToDouble(text); }), en::overflow) << text;
        EXPECT_FALSE(IsNumeric(text)) << text;
        EXPECT_EQ(NumericValue(text), std::nullopt) << text;
    }
}

TEST(ToInt16, RoundsAHalfToTheEvenNeighbour) {
    const std::pair<double, int> table[] = {{0.5, 0},   {1.5, 2},  {2.5, 2},  {-0.5, 0},        {-1.5, -2},
                                            {-2.5, -2}, {2.51, 3}, {2.49, 2}, {32767.4, 32767}, {-32768.5, -32768}};
    for (const auto& [number, expected] : table) {
        EXPECT_EQ(ToInt16(number), expected) << number;
        EXPECT_EQ(ToInt32(number), expected) << number;
    }
}

TEST(ToInt16, RaisesOverflowOutsideTheRange) {
    for (const double number : {32767.5, 32768.0, -32768.6, 1e20, -1e300, std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity()})
        EXPECT_EQ(test::ErrorNumberOf([&] { return ToInt16(number); }), en::overflow) << number;
}

TEST(ToInt32, RaisesOverflowOutsideTheRange) {
    EXPECT_EQ(ToInt32(2147483647.4), 2147483647);
    EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    for (const double number : {2147483647.5, -2147483648.6, 1e10, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(test::ErrorNumberOf([&] { return ToInt32(number); }), en::overflow) << number;
}

TEST(ToInt16, ReadsText) {
    EXPECT_EQ(ToInt16("2023"sv), 2023);
    EXPECT_EQ(ToInt16(" 2,023.5 "sv), 2024);
    EXPECT_EQ(ToInt16("1e3"sv), 1000);
    EXPECT_EQ(ToInt16("&HFFFF"sv), -1);
    EXPECT_EQ(ToInt16("&H7FFF"sv), 32767);
    EXPECT_EQ(ToInt32("&HFFFF"sv), 65535);
    EXPECT_EQ(ToInt32("&HFFFFFFFF"sv), -1);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToInt16("&H10000"sv); }), en::overflow);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToInt16("32768"sv); }), en::overflow);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToInt16(""sv); }), en::typeMismatch);
    EXPECT_EQ(test::ErrorNumberOf([] { return ToInt16("year"sv); }), en::typeMismatch);
}

TEST(ToBoolean, ReadsItsNamesAndNumbers) {
    for (const auto text : {"True"sv, "true"sv, "TRUE"sv, "tRUE"sv, "#TRUE#"sv, "1"sv, "-1"sv, "0.1"sv, "2e3"sv})
        EXPECT_TRUE(ToBoolean(text)) << text;
    for (const auto text : {"False"sv, "false"sv, "FALSE"sv, "#FALSE#"sv, "0"sv, "0.0"sv, "-0"sv})
        EXPECT_FALSE(ToBoolean(text)) << text;
    for (const auto text : {""sv, "x"sv, " True"sv, "True "sv, "#true#"sv, "yes"sv, "真"sv})
        EXPECT_EQ(test::ErrorNumberOf([&] { return ToBoolean(text); }), en::typeMismatch) << text;
}

TEST(TwoPlaces, RoundsAHalfAwayFromZeroByTheDecimalDigits) {
    const std::pair<double, double> table[] = {
        {2.675, 2.68},     {1.005, 1.01}, {0.125, 0.13}, {-2.675, -2.68}, {0.005, 0.01}, {-0.005, -0.01},
        {0.0049, 0},       {-0.001, 0},   {0, 0},        {0.995, 1},      {99.995, 100}, {1234567.891, 1234567.89},
        {2.5, 2.5},        {10, 10},      {1e-10, 0},    {0.05, 0.05},    {9.999, 10},   {33.333333333, 33.33},
        {4.35 * 100, 435}, {1e20, 1e20},  {-0.0, 0},
    };
    for (const auto& [number, expected] : table)
        EXPECT_EQ(TwoPlaces(number), expected) << number;
    EXPECT_FALSE(std::signbit(TwoPlaces(-0.001)));
}

TEST(TwoPlaces, KeepsFifteenDigits) {
    EXPECT_EQ(TwoPlaces(123456789012345678.0), 123456789012346000.0);
    EXPECT_EQ(TwoPlaces(1234567890123.456), 1234567890123.46);
    EXPECT_EQ(TwoPlaces(12345678901234.56), 12345678901234.6);
    EXPECT_EQ(test::ErrorNumberOf([] { return TwoPlaces(std::numeric_limits<double>::infinity()); }), en::overflow);
}

// What must hold whatever the number is.
TEST(Numbers, TextOfANumberReadsBackAsTheNumber) {
    std::vector<double> numbers = cases::MadeDoubles(4000, 7);
    numbers.insert(numbers.end(), cases::doubleEdges.begin(), cases::doubleEdges.end());
    for (const double number : numbers) {
        if (std::fabs(number) < 1e-300 || std::fabs(number) > 1e300)
            continue;
        const std::string text = NumberText(number);
        EXPECT_NEAR(Val(text), number, std::fabs(number) * 1e-14) << text;
        EXPECT_EQ(ToDouble(text), Val(text)) << text;
        EXPECT_EQ(NumberText(Val(text)), text);
    }
}

TEST(Numbers, TwoPlacesIsWithinHalfACentAndStable) {
    for (const double number : cases::MadeDoubles(4000, 8)) {
        const double rounded = TwoPlaces(number);
        EXPECT_LE(std::fabs(rounded - number), 0.005 + std::fabs(number) * 1e-14) << number;
        EXPECT_EQ(TwoPlaces(rounded), rounded) << number;
    }
}

TEST(Numbers, EveryTextIsReadOrRefusedTheSameWayByAll) {
    std::vector<std::string> texts = cases::MadeNumberTexts(4000, 9);
    texts.insert(texts.end(), cases::numberTextEdges.begin(), cases::numberTextEdges.end());
    for (const std::string& text : texts) {
        const auto error = test::ErrorNumberOf([&] { return ToDouble(text); });
        EXPECT_EQ(IsNumeric(text), !error) << text;
        if (!error && text.find('&') == text.npos && std::fabs(ToDouble(text)) < 30000) {
            EXPECT_EQ(ToInt16(text), ToInt16(ToDouble(text))) << text;
        }
    }
}
