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

TEST(JsonWriter, PutsCommasBetweenMembersAndValues) {
    std::string json;
    text::JsonWriter writer(json);
    writer.Open('{').Member("text", "a,").Member("number", -2).Member("is", true);
    writer.Name("none").Open('[').Close(']');
    writer.Name("some").Open('[').Text("[").Text("").Word("1.50").Open('{').Close('}').Open('[').Close(']').Close(']');
    writer.Name("inner").Open('{').Member("isNot", false).Close('}').Close('}');
    EXPECT_EQ(json,
              R"({"text":"a,","number":-2,"is":true,"none":[],"some":["[","",1.50,{},[]],"inner":{"isNot":false}})");
}

TEST(JsonWriter, WritesObjectsOneALine) {
    std::string json = "{\"a\":1}\n";
    text::JsonWriter(json).Open('{').Member("b\n", "c").Close('}');
    EXPECT_EQ(json, "{\"a\":1}\n{\"b\\n\":\"c\"}");
}

TEST(JsonWriter, BreaksTheLineBetweenValuesAlone) {
    std::string json;
    text::JsonWriter writer(json);
    writer.Open('[');
    for (const char* const name : {"a", "b", "c,"}) {
        writer.NextLine().Open('{').Member(name, 1).Close('}');
    }
    writer.Close(']');
    EXPECT_EQ(json, "[{\"a\":1},\n{\"b\":1},\n{\"c,\":1}]");
}
