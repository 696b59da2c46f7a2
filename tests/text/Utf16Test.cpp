#include "text/Utf16.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

using text::FromUtf16;
using text::ToUtf16;
using text::Utf16Length;

TEST(Utf16, EveryTextComesBackAsItWas) {
    for (const std::u16string_view units :
         {u"", u"abc", u"仓库", u"\xD83D\xDE00", u"a\xD800z", u"\xDC00\xD800", u"\xD800\xD800\xDC00", u"\xFFFF"})
        EXPECT_EQ(ToUtf16<char16_t>(FromUtf16(units)), units);
    EXPECT_EQ(FromUtf16(std::u16string_view(u"\xD83D\xDE00")), "😀");
    EXPECT_EQ(ToUtf16<char16_t>("a\xFFz"), u"a\xFFFDz");
}

/// ASCII goes over in blocks; what is beside it stands wherever it may stand in one.
TEST(Utf16, OtherCharactersStandAnywhereAmongAscii) {
    for (std::size_t before = 0; before <= 17; ++before) {
        for (std::size_t behind = 0; behind <= 17; ++behind) {
            const std::string ahead(before, 'a');
            const std::string after(behind, 'z');
            const std::u16string wideAhead(before, u'a');
            const std::u16string wideAfter(behind, u'z');
            EXPECT_EQ(ToUtf16<char16_t>(ahead + "仓" + after), wideAhead + u"仓" + wideAfter);
            EXPECT_EQ(ToUtf16<char16_t>(ahead + "😀é" + after), wideAhead + u"😀é" + wideAfter);
            EXPECT_EQ(ToUtf16<char16_t>(ahead + "\xE4" + after), wideAhead + u"\xFFFD" + wideAfter);
        }
    }
}

TEST(Utf16Length, CountsUnits) {
    EXPECT_EQ(Utf16Length(""), 0u);
    EXPECT_EQ(Utf16Length("abc"), 3u);
    EXPECT_EQ(Utf16Length("仓库é"), 3u);
    EXPECT_EQ(Utf16Length("😀"), 2u);
    EXPECT_EQ(Utf16Length("\xED\xA0\x80"), 1u) << "a lone surrogate";
    EXPECT_EQ(Utf16Length("\x80\xFF"), 2u);
    EXPECT_EQ(Utf16Length("\xE4z"), 2u);
}
