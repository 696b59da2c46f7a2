#include "cli/Nearest.h"

#include <gtest/gtest.h>

namespace {

TEST(Nearest, FindsTheNameThatWasMeant) {
    const std::vector<std::string> names = {"cInvCode", "cDifHead", "iQuantity", "ID"};
    EXPECT_EQ(cli::Nearest("cDiffHead", names), "cDifHead");
    EXPECT_EQ(cli::Nearest("iquantity", names), "iQuantity");
    EXPECT_EQ(cli::Nearest("cInvoiceCode", names), "");
    EXPECT_EQ(cli::Nearest("cMemo", names), "");
    EXPECT_EQ(cli::Nearest("IX", names), "");
}

} // namespace
