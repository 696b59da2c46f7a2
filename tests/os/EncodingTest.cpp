#include "os/Encoding.h"

#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using os::Decoded;
using namespace std::string_view_literals;

void ExpectDecoded(std::string_view bytes, const std::string& encoding, std::string_view text, std::size_t read) {
    const std::optional<Decoded> decoded = os::Decode(bytes, encoding);
    ASSERT_TRUE(decoded) << encoding;
    EXPECT_EQ(decoded->text, text) << encoding;
    EXPECT_EQ(decoded->read, read) << encoding;
}

// "期初" is C6 DA, B3 F5 in GB 2312 and what extends it.
TEST(Encoding, ChineseIsReadInItsEncodings) {
    for (const char* name : {"GB18030", "GBK", "GB2312", "CP936", "gb18030", "cp936"})
        ExpectDecoded("\xC6\xDA\xB3\xF5 1001"sv, name, "期初 1001", 9);
}

TEST(Encoding, BothOrdersOfUtf16AreRead) {
    ExpectDecoded("\x1F\x67\x31\0"sv, "UTF-16LE", "期1", 4);
    ExpectDecoded("\x67\x1F\0\x31"sv, "utf-16be", "期1", 4);
    // U+20BB7, a pair of surrogates: D842 DFB7.
    ExpectDecoded("\x42\xD8\xB7\xDF"sv, "UTF-16LE", "\xF0\xA0\xAE\xB7", 4);
}

TEST(Encoding, WesternBytesAreLetters) { ExpectDecoded("caf\xE9"sv, "ISO-8859-1", "café", 4); }

TEST(Encoding, EmptyTextIsReadWhole) { ExpectDecoded("", "GBK", "", 0); }

TEST(Encoding, ReadingEndsBeforeWhatIsNotInTheEncoding) {
    ExpectDecoded("A\xFF"
                  "B"sv,
                  "GBK", "A", 1);
    ExpectDecoded("期\xC3("sv, "UTF-8", "期", 3);
    // A surrogate without its other half.
    ExpectDecoded("\x31\0\x42\xD8\x32\0"sv, "UTF-16LE", "1", 2);
}

TEST(Encoding, HalfACharacterAtTheEndIsNotRead) {
    ExpectDecoded("A\xC6"sv, "GBK", "A", 1);
    ExpectDecoded("\x31\0\x32"sv, "UTF-16LE", "1", 2);
}

// Longer than any block that a converter works in, with a character across each likely border.
TEST(Encoding, LongTextIsReadWhole) {
    std::string bytes = "1";
    std::string text = "1";
    for (int i = 0; i < 100'000; ++i) {
        bytes.append("\xC6\xDA");
        text.append("期");
    }
    ExpectDecoded(bytes, "GB18030", text, bytes.size());
}

TEST(Encoding, UnknownNameIsNoEncoding) {
    for (const char* name : {"", "no-such-encoding", "GBK/TRANSLIT", "GBK//IGNORE", "CP", "CP99999"})
        EXPECT_FALSE(os::Decode("1", name)) << name;
}

} // namespace
