#include "text/Utf8.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using text::AppendUtf8;
using text::IsUtf8;
using text::ReadUtf8;

struct Sample {
    std::string bytes;
    char32_t codePoint;
};

const Sample samples[] = {
    {std::string(1, '\0'), 0},
    {"\x7F", 0x7F},
    {"\xC2\x80", 0x80},
    {"\xDF\xBF", 0x7FF},
    {"\xE0\xA0\x80", 0x800},
    {"\xE4\xBB\x93", 0x4ED3},
    {"\xED\x9F\xBF", 0xD7FF},
    {"\xEE\x80\x80", 0xE000},
    {"\xEF\xBF\xBF", 0xFFFF},
    {"\xF0\x90\x80\x80", 0x10000},
    {"\xF4\x8F\xBF\xBF", 0x10FFFF},
};

// Bytes that begin no character: lone continuations, overlong forms, what lies above U+10FFFF, sequences cut short.
const std::string broken[] = {
    "\x80", "\xBF", "\xC0\x80", "\xC1\xBF",  "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
    "\xFF", "\xC2", "\xE4\xBB", "\xE4\xBBz", "\xF0\x90\x80", "\xF0\x90z\x80"};

} // namespace

TEST(Utf8, ReadsAndWritesTheBoundsOfEveryLength) {
    for (const Sample& sample : samples) {
        const text::Utf8Character character = ReadUtf8("x" + sample.bytes + "z", 1);
        EXPECT_TRUE(character.valid);
        EXPECT_EQ(character.codePoint, sample.codePoint);
        EXPECT_EQ(character.length, sample.bytes.size());
        std::string written;
        AppendUtf8(written, sample.codePoint);
        EXPECT_EQ(written, sample.bytes);
        EXPECT_TRUE(IsUtf8(sample.bytes));
    }
}

TEST(Utf8, ABrokenByteStandsAlone) {
    for (const std::string& bytes : broken) {
        const text::Utf8Character character = ReadUtf8(bytes, 0);
        EXPECT_FALSE(character.valid) << testing::PrintToString(bytes);
        EXPECT_EQ(character.codePoint, U'\xFFFD');
        EXPECT_EQ(character.length, 1u);
        EXPECT_FALSE(IsUtf8(bytes)) << testing::PrintToString(bytes);
        EXPECT_FALSE(IsUtf8("eight by" + bytes + "eight by")) << testing::PrintToString(bytes);
    }
}

TEST(Utf8, SurrogatesAreCharactersButNoUtf8) {
    for (const auto& [bytes, codePoint] : {Sample{"\xED\xA0\x80", 0xD800}, Sample{"\xED\xBF\xBF", 0xDFFF}}) {
        const text::Utf8Character character = ReadUtf8(bytes, 0);
        EXPECT_TRUE(character.valid);
        EXPECT_EQ(character.codePoint, codePoint);
        EXPECT_FALSE(IsUtf8(bytes));
    }
}

TEST(Utf8, NoCharacterIsCutThrough) {
    EXPECT_EQ(text::CutUtf8("仓库", 6), "仓库");
    EXPECT_EQ(text::CutUtf8("仓库", 5), "仓");
    EXPECT_EQ(text::CutUtf8("仓库", 3), "仓");
    EXPECT_EQ(text::CutUtf8("仓库", 2), "");
    EXPECT_EQ(text::CutUtf8("ab", 100), "ab");
    EXPECT_EQ(text::CutUtf8("", 1), "");
}

TEST(Utf8, AsciiIsToldFromEverythingElse) {
    for (const std::string text : {"", "x", "eight by", "more than eight"}) {
        EXPECT_TRUE(text::IsAscii(text));
        EXPECT_FALSE(text::IsAscii(text + "é"));
        EXPECT_FALSE(text::IsAscii("\x80" + text));
    }
}
