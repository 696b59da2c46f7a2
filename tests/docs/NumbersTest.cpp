// What the pages say of the numbers of opening balances is how they are read.

#include "ModPub/Numbers.h"

#include "tests/docs/Pages.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <regex>

#include <gtest/gtest.h>

namespace {

/// The pieces of `cell` that `pattern` captures.
std::vector<std::string> Captured(const std::string& cell, const std::regex& pattern) {
    std::vector<std::string> pieces;
    for (std::sregex_iterator at(cell.begin(), cell.end(), pattern), end; at != end; ++at) {
        pieces.push_back((*at)[1]);
    }
    return pieces;
}

class PageOfNumbers : public testing::TestWithParam<std::string> {};

TEST_P(PageOfNumbers, ReadsThemAsTheClassDoes) {
    static const std::regex written("`([^`]+)`");
    static const std::regex read("([-0-9.]+)");
    int compared = 0;
    for (const std::string& line :
         test::Lines(test::ReadText(test::SourceFolder() / "docs" / GetParam() / "first-import.md"))) {
        const std::vector<std::string> cells = test::TableCells(line);
        if (cells.size() != 3 || !cells[0].starts_with("`") || cells[0].starts_with("`Cls")) {
            continue;
        }
        const std::vector<std::string> texts = Captured(cells[0], written);
        const std::vector<std::string> numbers = Captured(cells[1], read);
        ASSERT_TRUE(numbers.size() == 1 || numbers.size() == texts.size()) << line;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            EXPECT_EQ(ModPub::NumberText(ModPub::Val(texts[i])), numbers[numbers.size() == 1 ? 0 : i]) << texts[i];
            ++compared;
        }
    }
    EXPECT_GT(compared, 0);
}

INSTANTIATE_TEST_SUITE_P(Docs, PageOfNumbers, testing::Values("zh", "en"), [](const auto& page) { return page.param; });

} // namespace
