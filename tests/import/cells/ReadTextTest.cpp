#include "import/cells/ReadText.h"

#include <gtest/gtest.h>

namespace {

using importing::Cell;
using importing::Reading;
namespace message = importing::message;

Reading TextTyped(const std::string& text, bool compared = false) {
    return importing::ReadText({Cell::Kind::text, text}, {6, compared});
}

TEST(ReadText, TakesBlanksOffTheEndsAndKeepsWidthAndInnerBlanks) {
    EXPECT_EQ(TextTyped("\u3000Ａ 管 "), Reading::Take("Ａ 管"));
}

TEST(ReadText, CountsCharactersAsTheColumnDoes) {
    EXPECT_EQ(TextTyped("六个汉字以内"), Reading::Take("六个汉字以内"));
    EXPECT_EQ(TextTyped("七个汉字多一个"), Reading::Refuse({message::textLong, {"7", "6"}}));
}

TEST(ReadText, NamesTheCharacterThatTheCodePageLacks) {
    EXPECT_EQ(TextTyped("好\U0001F600"), Reading::Refuse({message::textCodePage, {"\U0001F600"}}));
}

TEST(ReadText, KeepsAQuoteWhereTheClassOnlyStores) { EXPECT_EQ(TextTyped("6' 管"), Reading::Take("6' 管")); }

TEST(ReadText, RefusesAQuoteWhereTheClassCompares) {
    EXPECT_EQ(TextTyped("6' 管", true), Reading::Refuse({message::textQuote, {"6' 管"}}));
}

TEST(ReadText, TakesNumbersAndDatesAsTheirTexts) {
    EXPECT_EQ(importing::ReadText({Cell::Kind::number, "12.5"}, {6, false}), Reading::Take("12.5"));
    EXPECT_EQ(importing::ReadText({Cell::Kind::date, "2024-01-05"}, {10, false}), Reading::Take("2024-01-05"));
}

TEST(ReadText, RefusesAnErrorCell) {
    // As a CSV file has them.
    EXPECT_EQ(importing::ReadText({Cell::Kind::text, "#REF!"}, {6, false}),
              Reading::Refuse({message::cellError, {"#REF!"}}));
    EXPECT_EQ(importing::ReadText({Cell::Kind::text, "=A1"}, {6, false}),
              Reading::Refuse({message::cellNoValue, {"=A1"}}));
    EXPECT_EQ(importing::ReadText({Cell::Kind::error, "#N/A"}, {6, false}),
              Reading::Refuse({message::cellError, {"#N/A"}}));
}

} // namespace
