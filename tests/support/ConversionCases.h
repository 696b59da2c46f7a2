#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Inputs for the run-time's conversions: edges by hand and texts made from seeds, the same on every platform. The
/// native tests check what must hold of all of them; on Windows they are held against OLE Automation.
namespace cases {

constexpr auto Edges(auto... edges) { return std::array{edges...}; }

/// Edges of numbers written as text.
inline constexpr std::array numberTextEdges =
    Edges("", " ", "0", "-0", "+0", "1", " 12 ", "\t12\t", "1 2", "1,234.5", "1,2,3", "1,", ",1", "1.5,0", "-5", "- 5",
          "5-", "5 -", "+5", "5+", "--5", "++5", "-5-", "(5)", "( 5 )", "(5", "5)", "()", "((5))", "$5", "¥5", "-¥5",
          "¥-5", "¥ 5", "5¥", "¥¥5", "￥5", "-￥1,000", "5￥", "1e3", "1E+3", "1e-3", "1e", "1e+", "e5", "1e3.5", "1d3",
          "1D-3", "1e400", "-1e400", "1e-400", "1e308", "1.8e308", "1.7e308", "&H10", "&hffff", "&HFFFF", "&H10000",
          "&H7FFF", "&H8000", "&HFFFFFFFF", "&H7FFFFFFF", "&O17", "&o177777", "&H", "&HG", "&", ".5", "5.", ".", "-.5",
          "-.", "..5", "1.2.3", "１２", "abc", "12abc", "abc12", "True", "False", "true", "#TRUE#", "#true#", "#FALSE#",
          " True", "True ", "12%", "1/2", "1:2", "0.1", "0.5", "1.5", "2.5", "-0.5", "-1.5", "-2.5", "32767", "32767.4",
          "32767.5", "32768", "-32768", "-32768.5", "-32768.6", "65535", "2147483647", "2147483647.4", "2147483647.5",
          "-2147483648", "-2147483648.5", "-2147483649", "99999999999999999999", "0.30000000000000004",
          "123456789012345", "1234567890123456", "0.000000000000001", "00012", "000", "0x10", "1_000", "12 34");

/// Edges of dates written as text.
inline constexpr std::array dateTextEdges = Edges(
    "", " ", "0", "1", "20230501", "45000", "2023-05-01", "2023/5/1", "2023-5-1", "2023/05/01", "2023.5.1",
    " 2023-5-1 ", "2023 5 1", "2023,5,1", "2023-5-1 ", "2023-5/1", "5/1", "1/5", "13/1", "1/13", "5-2023", "2023-05",
    "2023-13", "13-13", "0-5", "5-0", "13/14/2024", "2024-13-40", "2024-00-10", "2024-10-00", "1/2/3", "31/12/99",
    "99-12-31", "12/31/1999", "31/12/1999", "29-1-1", "30-1-1", "00-1-1", "2023-02-29", "2024-02-29", "1900-02-29",
    "2000-02-29", "2100-02-29", "2023-04-31", "99-2-29", "96-2-29", "100-1-1", "0100-1-1", "0099-1-1", "9999-12-31",
    "10000-1-1", "1899-12-30", "1899-12-29", "1900-1-1", "2023年5月1日", "2023年05月01日", "5月1日", "2023年5月",
    "2023年13月1日", "8:30", "8:30:15", "8:30:15 PM", "8:30 AM", "12:00 AM", "12:00 PM", "12:59 am", "13:00 AM", "0:00",
    "24:00", "23:59:59", "23:59:60", "8:60", "8", "8 AM", "8 PM", "8 a", "8 p", "下午 8:30", "8:30 下午", "上午8:30",
    "2023-5-1 下午 8:30:15", "2023-05-01 8:30", "2023-05-01 08:30:15", "2023-05-01 24:00", "2023-05-01T08:30",
    "2023-05-01T08:30:00Z", "8:30 2023-5-1", "8.30", "12.5", "13.50", "0.0", "1,234", "May 1, 2023", "1 May 2023",
    "1-May-2023", "May 2023", "May 1", "1 May", "May 35", "sept 1 2023", "五月 1 2023", "2023 五月 1", "1 五月",
    "十二月 25 2023", "星期一", "2023-5-1 星期一", "Monday 2023-5-1", "2023-5-1-1", "-2023-5-1", "2023--5-1",
    "2023-5-1-", "2023-5-", "2023-", "abc", "2023-5-1x", "2023-5-1 abc", "2023;5;1", "2023*5*1", "2023\\5\\1",
    "２０２３-5-1", "2013-05-14 02:04:12.017000000", "1 2 3 4", "1.2 3.4", "1.2.3 4 5 6", "1 2 3 4.5.6", "1.2.3",
    "1 2 3 am", "3 am 1 2", "1 am 2", "1 2 am 3", "1:2 3 4", "3 4 1:2", "1 2:3 4", "True", "Null", "#2023-5-1#",
    "1949-01-01", "1949-01-02", "6/30/2011\u30001:20:34", "2173-10-14", "99999999999-1-1");

/// Edges of doubles.
inline constexpr std::array doubleEdges =
    Edges(0.0, -0.0, 1.0, -1.0, 0.1, 0.2, 0.3, 0.1 + 0.2, 0.01, 0.001, 0.0001, 0.00001, 1e-10, 1e-14, 1e-15, 1e-16,
          1.5e-14, 1.5e-15, 75.0 / 999, 75.0 / 1000, 1.0 / 3, 2.0 / 3, 1.0 / 30, 10.0 / 3, 2.675, -2.675, 1.005, 0.125,
          0.005, 0.995, 99.995, 0.004999999999, 123456789012345.0, 1234567890123456.0, 999999999999999.0,
          999999999999999.9, 1e14, 1e15, 1e16, 1e20, 1e22, 1e23, 1e100, 1e300, 12345678901234.5, 1234567.891, 45000.0,
          45000.5, 45000.25, 0.25, 0.5, -0.5, -1.5, 1.5, 2.5, 32767.5, -32768.5, 2147483647.5, -2147483648.5, 2958465.0,
          2958466.0, -657434.0, -657435.0, 20230501.0, 123456789012345678.0, 5e-324, 1.7976931348623157e308);

/// A generator of its own, since the distributions of the standard library differ between platforms.
class Random {
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    /// A whole number from 0 to `count` - 1.
    std::size_t Below(std::size_t count) { return static_cast<std::size_t>(engine_() % count); }
    const char* Pick(std::initializer_list<const char*> texts) { return texts.begin()[Below(texts.size())]; }
    std::string Digits(std::size_t most) {
        std::string digits;
        for (std::size_t left = 1 + Below(most); left > 0; --left)
            digits += static_cast<char>('0' + Below(10));
        return digits;
    }

private:
    std::mt19937_64 engine_;
};

/// Texts that are numbers or nearly so.
inline std::vector<std::string> MadeNumberTexts(std::size_t count, std::uint64_t seed) {
    Random random(seed);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i) {
        std::string text = random.Pick({"", "", "", " ", "-", "- ", "+", "(", "¥"});
        text += random.Digits(6);
        if (random.Below(4) == 0)
            text += "," + random.Digits(3);
        if (random.Below(2) == 0)
            text += "." + random.Digits(8);
        if (random.Below(5) == 0)
            text += random.Pick({"e", "E", "e+", "e-"}) + random.Digits(2);
        text += random.Pick({"", "", "", "", " ", "-", ")", "x", "%"});
        texts.push_back(std::move(text));
    }
    return texts;
}

/// Texts that are dates or nearly so.
inline std::vector<std::string> MadeDateTexts(std::size_t count, std::uint64_t seed) {
    Random random(seed);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = [&](std::size_t below) { return std::to_string(random.Below(below)); };
        std::string text;
        if (random.Below(8) == 0)
            text = number(26) + ":" + number(62) + " ";
        const std::string separator = random.Pick({"-", "/", "-", "/", " ", "."});
        const std::string year = random.Below(3) == 0 ? number(130) : std::to_string(1890 + random.Below(220));
        switch (random.Below(5)) {
        case 0:
            text += number(14) + separator + number(33) + separator + year;
            break;
        case 1:
            text += number(33) + separator + number(14);
            break;
        default:
            text += year + separator + number(14) + separator + number(33);
            break;
        }
        if (random.Below(4) == 0) {
            text += " " + number(26) + ":" + number(62);
            if (random.Below(2) == 0)
                text += ":" + number(62);
            text += random.Pick({"", "", " am", " PM"});
        }
        texts.push_back(std::move(text));
    }
    return texts;
}

/// Amounts as they come out of multiplications and divisions, and numbers of every size.
inline std::vector<double> MadeDoubles(std::size_t count, std::uint64_t seed) {
    Random random(seed);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < count; ++i) {
        const double cents = static_cast<double>(random.Below(10'000'000)) / 100;
        const auto divisor = static_cast<double>(1 + random.Below(999));
        double number = cents;
        switch (random.Below(4)) {
        case 0:
            number = cents / divisor;
            break;
        case 1:
            number = cents * divisor;
            break;
        case 2:
            number = std::stod(random.Digits(9) + "." + random.Digits(9) + "e" + std::to_string(random.Below(40)));
            break;
        default:
            break;
        }
        numbers.push_back(random.Below(4) == 0 ? -number : number);
    }
    return numbers;
}

} // namespace cases
