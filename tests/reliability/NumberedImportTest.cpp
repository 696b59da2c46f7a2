#include "tests/reliability/Soundness.h"

#include <gtest/gtest.h>

namespace test {
namespace {

class Undisturbed : public testing::TestWithParam<NumberedImport> {};

/// Every other test of this program takes what is left of an import for a part of this.
TEST_P(Undisturbed, WritesEveryNumber) {
    const NumberedAccount account(20);
    const NumberedImport& import = GetParam();
    EXPECT_EQ(Transact(import, account, RequestOf(import, 0, 20)), AcceptedResult(import, 0, 20));
    EXPECT_EQ(WholeNumbers(import, account), 20);
}

INSTANTIATE_TEST_SUITE_P(Imports, Undisturbed, testing::ValuesIn(NumberedImports()), NameOfImport);

} // namespace
} // namespace test
