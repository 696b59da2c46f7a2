// One JSON object of texts, numbers and words.

#include "text/JsonObject.h"

#include "text/Json.h"

#include <gtest/gtest.h>

namespace {

using Members = std::map<std::string, std::string, std::less<>>;
using text::ReadJsonObject;

TEST(ReadJsonObject, ReadsTextsNumbersAndWords) {
    EXPECT_EQ(ReadJsonObject("{}"), Members());
    EXPECT_EQ(ReadJsonObject(R"({"op":"Open","cursor":-3,"host":true})"),
              (Members{{"op", "Open"}, {"cursor", "-3"}, {"host", "true"}}));
    EXPECT_EQ(ReadJsonObject(" { \"a\" : \"b\" , \"c\" : 1.5 } \r\n"), (Members{{"a", "b"}, {"c", "1.5"}}));
}

TEST(ReadJsonObject, ReadsEscapes) {
    EXPECT_EQ(ReadJsonObject(R"({"a":"\"\\\/\b\f\n\r\t"})"), (Members{{"a", "\"\\/\b\f\n\r\t"}}));
    EXPECT_EQ(ReadJsonObject(R"({"a":"\u4ed3\uD840\uDC00"})"), (Members{{"a", "仓\xF0\xA0\x80\x80"}}));
    // A surrogate alone keeps its three-byte form, and what follows it stands for itself.
    EXPECT_EQ(ReadJsonObject(R"({"a":"\ud840\u0041"})"), (Members{{"a", "\xED\xA1\x80"
                                                                        "A"}}));
}

TEST(ReadJsonObject, ReadsWhatIsWritten) {
    const std::string written = "仓库 \"01\"\\\r\n\t\x01";
    std::string json = "{\"a\":";
    text::AppendJsonString(json, written);
    EXPECT_EQ(ReadJsonObject(json + "}"), (Members{{"a", written}}));
}

TEST(ReadJsonObject, RefusesEverythingElse) {
    for (const char* wrong :
         {"", "a", "{", "{\"a\"}", "{\"a\":}", "{\"a\":1", "{\"a\":1}x", "{\"a\":\"b}", R"({"a":"\x"})",
          R"({"a":"\u12"})", R"({"a":"\)", "{\"a\":{}}", "{\"a\":[1]}", "{a:1}", "{\"a\":1,}"}) {
        EXPECT_FALSE(ReadJsonObject(wrong)) << wrong;
    }
}

} // namespace
