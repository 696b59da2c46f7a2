#include "text/CodePage936.h"

#include <gtest/gtest.h>

namespace {

// The code page holds simplified and traditional characters, Greek, Cyrillic, full-width signs, the letters of pinyin
// and the euro sign, but no other accents.
TEST(CodePage936, HoldsItsCharactersAlone) {
    for (const char32_t there : {U'A', U'~', U'期', U'國', U'α', U'я', U'é', U'１', U'、', U'€', U'\u9FA5'})
        EXPECT_TRUE(text::InCodePage936(there)) << static_cast<unsigned>(there);
    for (const char32_t absent :
         {U'\u0080', U'ñ', U'ç', U'한', U'\u9FA6', U'\uFFFD', U'\U0001F600', U'\U00020BB7', U'\U000E0041'})
        EXPECT_FALSE(text::InCodePage936(absent)) << static_cast<unsigned>(absent);
}

TEST(CodePage936, TellsWhereTheFirstCharacterStandsThatItLacks) {
    EXPECT_EQ(text::FirstOutsideCodePage936(""), std::string_view::npos);
    EXPECT_EQ(text::FirstOutsideCodePage936("A仓库"), std::string_view::npos);
    EXPECT_EQ(text::FirstOutsideCodePage936("A仓ñç"), 4U);
    EXPECT_EQ(text::FirstOutsideCodePage936("A仓\xFF"), 4U) << "a byte that begins no character";
}

TEST(CodePage936, PutsAQuestionMarkForEachUnitThatItLacks) {
    EXPECT_EQ(text::ThroughCodePage936("A仓库€"), "A仓库€");
    EXPECT_EQ(text::ThroughCodePage936("mañana 😀 \xED\xA0\x80 \xFF."), "ma?ana ?? ? ?.");
}

} // namespace
