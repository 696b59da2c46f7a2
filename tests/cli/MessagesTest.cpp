// The language of what the program says, and its numbers.

#include "cli/messages/Messages.h"

#include <gtest/gtest.h>

namespace {

using cli::Language;

TEST(LanguageOfLocale, IsChineseForChineseLocalesAlone) {
    EXPECT_EQ(cli::LanguageOfLocale("zh_CN.UTF-8"), Language::chinese);
    EXPECT_EQ(cli::LanguageOfLocale("zh_CN.GBK"), Language::chinese);
    EXPECT_EQ(cli::LanguageOfLocale("zh"), Language::chinese);
    EXPECT_EQ(cli::LanguageOfLocale("en_US.UTF-8"), Language::english);
    EXPECT_EQ(cli::LanguageOfLocale("C"), Language::english);
    EXPECT_EQ(cli::LanguageOfLocale("zha"), Language::english);
    EXPECT_EQ(cli::LanguageOfLocale(""), Language::english);
}

TEST(LanguageNamed, KnowsTwo) {
    EXPECT_EQ(cli::LanguageNamed("zh"), Language::chinese);
    EXPECT_EQ(cli::LanguageNamed("en"), Language::english);
    EXPECT_FALSE(cli::LanguageNamed("fr"));
    EXPECT_FALSE(cli::LanguageNamed(""));
}

TEST(Grouped, SetsACommaBeforeEachThreeDigits) {
    EXPECT_EQ(cli::Grouped(0), "0");
    EXPECT_EQ(cli::Grouped(999), "999");
    EXPECT_EQ(cli::Grouped(1000), "1,000");
    EXPECT_EQ(cli::Grouped(1234567), "1,234,567");
}

TEST(Count, SaysTheNumberWithItsNoun) {
    const cli::Noun& row = cli::MessagesIn(Language::english).row;
    EXPECT_EQ(cli::Count(1, row), "1 row");
    EXPECT_EQ(cli::Count(0, row), "0 rows");
    EXPECT_EQ(cli::Count(4353, cli::MessagesIn(Language::chinese).row), "4,353 行");
}

} // namespace
