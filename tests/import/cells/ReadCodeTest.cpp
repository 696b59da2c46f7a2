#include "import/cells/ReadCode.h"

#include <gtest/gtest.h>

namespace {

using importing::Cell;
using importing::EditDistance;
using importing::KnownCodes;
using importing::Reading;
namespace message = importing::message;

class ReadCode : public testing::Test {
protected:
    ReadCode() {
        known_.Add("01", "成品库");
        known_.Add("A10", "钢管");
        known_.Add("1001", "轴承");
        known_.Add("6900000000012", "条码货");
    }

    Reading Read(const std::string& text, bool fix = false) const {
        return importing::ReadCode({Cell::Kind::text, text}, {20, &known_, fix});
    }
    Reading ReadNumberCell(const std::string& text) const {
        return importing::ReadCode({Cell::Kind::number, text}, {20, &known_, false});
    }

    KnownCodes known_;
};

TEST_F(ReadCode, TakesBlanksOffTheEnds) { EXPECT_EQ(Read(" 1001\u3000"), Reading::Take("1001")); }

TEST_F(ReadCode, TakesFullWidthDigits) { EXPECT_EQ(Read("１００１"), Reading::Take("1001")); }

TEST_F(ReadCode, SpellsTheCodeAsTheAccountDoes) { EXPECT_EQ(Read("a10"), Reading::Take("A10")); }

TEST_F(ReadCode, TakesANumberCell) { EXPECT_EQ(ReadNumberCell("6900000000012"), Reading::Take("6900000000012")); }

TEST_F(ReadCode, ProposesTheCodeWithItsLeadingZeros) {
    EXPECT_EQ(Read("1"), Reading::Refuse({message::codeLeadingZeros, {"1", "01"}}, "01"));
    EXPECT_EQ(ReadNumberCell("1"), Reading::Refuse({message::codeLeadingZeros, {"1", "01"}}, "01"));
}

TEST_F(ReadCode, MendsLeadingZerosWhenAskedTo) { EXPECT_EQ(Read("1", true), Reading::Take("01")); }

TEST_F(ReadCode, RefusesANumberCellWhereBothCodesExist) {
    known_.Add("1", "另一库");
    EXPECT_EQ(ReadNumberCell("1"), Reading::Refuse({message::codeLeadingZerosAmbiguous, {"1", "01"}}));
}

TEST_F(ReadCode, TakesATextWhereBothCodesExist) {
    known_.Add("1", "另一库");
    EXPECT_EQ(Read("1"), Reading::Take("1"));
    EXPECT_EQ(Read("01"), Reading::Take("01"));
}

TEST_F(ReadCode, ProposesNoCodeOfSeveralWithOtherLeadingZeros) {
    known_.Add("001", "第三库");
    EXPECT_EQ(Read("1", true).refusal->message, message::codeUnknownNear);
}

TEST_F(ReadCode, ProposesTheDigitForTheLetterO) {
    EXPECT_EQ(Read("1OO1"), Reading::Refuse({message::codeDigitForLetter, {"1OO1", "1001"}}, "1001"));
    EXPECT_EQ(Read("A1O"), Reading::Refuse({message::codeDigitForLetter, {"A1O", "A10"}}, "A10"));
}

TEST_F(ReadCode, NamesTheNearestCode) {
    EXPECT_EQ(Read("1007"), Reading::Refuse({message::codeUnknownNear, {"1007", "1001", "轴承"}}, "1001"));
}

TEST_F(ReadCode, RefusesACodeThatIsNearNone) {
    EXPECT_EQ(Read("ZZZZZZ"), Reading::Refuse({message::codeUnknown, {"ZZZZZZ"}}));
}

TEST_F(ReadCode, RefusesAnExponent) {
    EXPECT_EQ(Read("6.9E+12"), Reading::Refuse({message::codeExponent, {"6.9E+12"}}));
    EXPECT_EQ(ReadNumberCell("6.9E+15"), Reading::Refuse({message::codeExponent, {"6.9E+15"}}));
}

TEST_F(ReadCode, RefusesAQuote) { EXPECT_EQ(Read("A'10"), Reading::Refuse({message::codeQuote, {"A'10"}})); }

TEST_F(ReadCode, RefusesWhatIsLongerThanTheColumn) {
    const std::string longCode(21, '7');
    EXPECT_EQ(Read(longCode), Reading::Refuse({message::codeLong, {longCode, "20"}}));
    EXPECT_EQ(Read(std::string(20, '7')).refusal->message, message::codeUnknown);
}

TEST_F(ReadCode, RefusesAnErrorCell) {
    EXPECT_EQ(importing::ReadCode({Cell::Kind::error, "#N/A"}, {20, &known_, false}),
              Reading::Refuse({message::cellError, {"#N/A"}}));
}

TEST_F(ReadCode, TakesAnEmptyCell) { EXPECT_EQ(Read("  "), Reading::Take("")); }

TEST_F(ReadCode, TakesAnythingWhereTheAccountHasNoList) {
    EXPECT_EQ(importing::ReadCode({Cell::Kind::text, "X-9"}, {20, nullptr, false}), Reading::Take("X-9"));
}

TEST(EditDistance, CountsCharactersNotBytes) {
    EXPECT_EQ(EditDistance("仓库编码", "仓库编号", 3), 1U);
    EXPECT_EQ(EditDistance("kitten", "sitting", 3), 3U);
    EXPECT_EQ(EditDistance("", "ab", 3), 2U);
}

TEST(EditDistance, StopsBehindItsLimit) { EXPECT_EQ(EditDistance("abcdef", "uvwxyz", 2), 3U); }

} // namespace
