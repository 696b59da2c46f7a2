#include "ModPub/Text.h"

#include <string_view>

#include <gtest/gtest.h>

using namespace ModPub;
using namespace std::literals;

TEST(Trim, TakesBlanksOnly) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim("\ta\n"), "\ta\n");
    EXPECT_EQ(Trim("\u3000a\u00A0"), "\u3000a\u00A0");
}

TEST(UpperCase, MapsLettersOfEveryScriptItKnows) {
    EXPECT_EQ(UpperCase("cInvCode_9仓库"), "CINVCODE_9仓库");
    EXPECT_EQ(UpperCase("éàþ÷ß"), "ÉÀÞ÷ß");
    EXPECT_EQ(UpperCase("ÿāĺżž"), "ŸĀĹŻŽ");
    EXPECT_EQ(UpperCase("αωςάέίόύώ"), "ΑΩΣΆΈΊΌΎΏ");
    EXPECT_EQ(UpperCase("яёҕӂӏ"), "ЯЁҔӁӀ");
    EXPECT_EQ(UpperCase("ａｚＡ"), "ＡＺＡ");
}

TEST(LowerCase, MapsLettersOfEveryScriptItKnows) {
    EXPECT_EQ(LowerCase("CINVCODE_9仓库"), "cinvcode_9仓库");
    EXPECT_EQ(LowerCase("ÉÀÞ×"), "éàþ×");
    EXPECT_EQ(LowerCase("ŸĀĹŻŽ"), "ÿāĺżž");
    EXPECT_EQ(LowerCase("ΑΩΣΆΈΊΌΎΏ"), "αωσάέίόύώ");
    EXPECT_EQ(LowerCase("ЯЁҔӁӀ"), "яёҕӂӏ");
    EXPECT_EQ(LowerCase("ＡＺａ"), "ａｚａ");
}

TEST(UpperCase, LeavesWhatHasNoSingleCounterpart) {
    for (const auto text : {"ĸŉſ"sv, "µß"sv, "𝒳😀"sv, "仓库"sv}) {
        EXPECT_EQ(UpperCase(text), text);
        EXPECT_EQ(LowerCase(text), text);
    }
}

TEST(UpperCase, PassesInvalidBytesThrough) {
    EXPECT_EQ(UpperCase("a\xFF\xC3"), "A\xFF\xC3");
    EXPECT_EQ(UpperCase("\xED\xA0\x80z"), "\xED\xA0\x80Z");
    EXPECT_EQ(UpperCase("\xEF\xBDz"), "\xEF\xBDZ");
    EXPECT_EQ(UpperCase("\xE0\x81\xA1"), "\xE0\x81\xA1") << "an overlong a is no letter";
    EXPECT_EQ(UpperCase("\xC1\xA1"), "\xC1\xA1");
}
