#include "text/Json.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

std::string Json(std::string_view text) {
    std::string json = "[";
    text::AppendJsonString(json, text);
    return json;
}

} // namespace

TEST(AppendJsonString, EscapesWhatJsonCannotHold) {
    EXPECT_EQ(Json(""), R"([")"
                        R"(")");
    EXPECT_EQ(Json("仓库 a/b 😀"), R"(["仓库 a/b 😀")");
    EXPECT_EQ(Json("\"\\\n\r\t"), R"(["\"\\\n\r\t")");
    EXPECT_EQ(Json(std::string_view("\0\x1f\x7f", 3)), R"(["\u0000\u001f\u007f")");
}

TEST(AppendJsonString, PutsTheReplacementCharacterForWhatIsNoUtf8) {
    EXPECT_EQ(Json("a\xFFz"), "[\"a\xEF\xBF\xBDz\"");
    EXPECT_EQ(Json("\xED\xA0\x80"), "[\"\xEF\xBF\xBD\"") << "a lone surrogate";
}
