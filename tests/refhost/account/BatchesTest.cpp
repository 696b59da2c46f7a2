#include "refhost/account/Batches.h"

#include <gmock/gmock.h>

namespace refhost {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SplitBatches, OneStatementWithoutGoIsOneBatch) { EXPECT_THAT(SplitBatches("select 1"), ElementsAre("select 1")); }

TEST(SplitBatches, CutsAtLinesThatHoldGoAlone) {
    EXPECT_THAT(SplitBatches("select 1\nGO\nselect 2\nselect 3\nGO\n"),
                ElementsAre("select 1\n", "select 2\nselect 3\n"));
}

TEST(SplitBatches, TakesGoInAnyLetterCaseWithBlanksAndCarriageReturns) {
    EXPECT_THAT(SplitBatches("a\r\n go \r\nb\r\n\tGo\r\nc\r\ngO"), ElementsAre("a\r\n", "b\r\n", "c\r\n"));
}

TEST(SplitBatches, LeavesGoInsideALineAlone) {
    EXPECT_THAT(SplitBatches("select GO\nGO 2\nGOTO\n"), ElementsAre("select GO\nGO 2\nGOTO\n"));
}

TEST(SplitBatches, DropsBatchesOfWhiteSpace) {
    EXPECT_THAT(SplitBatches(""), IsEmpty());
    EXPECT_THAT(SplitBatches("GO\n\n  \nGO\r\n\r\nGO"), IsEmpty());
    EXPECT_THAT(SplitBatches("GO\nGO\na"), ElementsAre("a"));
}

} // namespace

} // namespace refhost
