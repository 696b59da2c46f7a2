// Tables for people: what a character takes on a terminal, alignment, narrow terminals, values that would steer one.

#include "cli/Table.h"

#include "cli/DisplayWidth.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace {

using cli::DisplayWidth;
using cli::Printable;
using cli::Table;

TEST(DisplayWidth, CountsEastAsianCharactersTwice) {
    EXPECT_EQ(DisplayWidth("abc"), 3U);
    EXPECT_EQ(DisplayWidth("仓库01"), 6U);
    EXPECT_EQ(DisplayWidth("："), 2U); // fullwidth colon
    EXPECT_EQ(DisplayWidth("ｱ"), 1U);  // halfwidth katakana
    EXPECT_EQ(DisplayWidth("\U00020000"), 2U);
    EXPECT_EQ(DisplayWidth("é“"), 2U); // narrow, and ambiguous
}

TEST(DisplayWidth, GivesCombiningAndInvisibleCharactersNoColumn) {
    EXPECT_EQ(DisplayWidth("e\u0301"), 1U);
    EXPECT_EQ(DisplayWidth("\uFEFFa\u200B"), 1U);
}

TEST(Printable, ShowsControlCharactersAsEscapes) {
    EXPECT_EQ(Printable("a\nb\r\tc"), "a\\nb\\r\\tc");
    EXPECT_EQ(Printable("\x1B[31m\x7F\xC2\x9B"), "\\x1B[31m\\x7F\\x9B");
    EXPECT_EQ(Printable("仓\xFF"), "仓\uFFFD");
    EXPECT_EQ(Printable("\xED\xA0\x80"), "\uFFFD"); // a lone surrogate
}

TEST(Table, AlignsColumnsByWhatTheyTakeOnATerminal) {
    Table table({{"行", Table::Alignment::right}, {"仓库"}, {"name"}});
    table.AddRow({"1", "原料库", "raw"});
    table.AddRow({"12", "b", ""});
    EXPECT_EQ(table.Text(), "行  仓库    name\n"
                            "--  ------  ----\n"
                            " 1  原料库  raw\n"
                            "12  b\n");
}

TEST(Table, StandsWithoutRows) { EXPECT_EQ(Table({{"a"}, {"b"}}).Text(), "a  b\n-  -\n"); }

TEST(Table, RefusesARowOfAnotherLength) {
    Table table({{"a"}, {"b"}});
    EXPECT_THROW(table.AddRow({"1"}), std::invalid_argument);
}

TEST(Table, GoesOnInTheNextLineWhereTheTerminalIsNarrow) {
    Table table({{"n"}, {"message"}});
    table.AddRow({"1", "one two three four"});
    table.AddRow({"2", "仓库编码不合法仓库"});
    EXPECT_EQ(table.Text(12), "n  message\n"
                              "-  ---------\n"
                              "1  one two\n"
                              "   three\n"
                              "   four\n"
                              "2  仓库编码\n"
                              "   不合法仓\n"
                              "   库\n");
}

TEST(Table, NarrowsTheWidestColumnsAlone) {
    Table table({{"code"}, {"long"}, {"longer"}});
    table.AddRow({"140301", "aaaaaaaaaaaaaaaaaaaa", "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbb"});
    EXPECT_EQ(table.Text(30), "code    long        longer\n"
                              "------  ----------  ----------\n"
                              "140301  aaaaaaaaaa  bbbbbbbbbb\n"
                              "        aaaaaaaaaa  bbbbbbbbbb\n"
                              "                    bbbbbbbbbb\n");
}

TEST(Table, StaysReadableOnATerminalThatIsTooNarrow) {
    Table table({{"a"}, {"b"}});
    table.AddRow({"0123456789", "0123456789"});
    EXPECT_EQ(table.Text(3), "a         b\n"
                             "--------  --------\n"
                             "01234567  01234567\n"
                             "89        89\n");
}

} // namespace
