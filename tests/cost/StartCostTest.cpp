// What a program takes before it does anything: above all the libraries that the system loads for it.

#include "tests/support/Program.h"
#include "tests/support/TestAccount.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace test_cost {
namespace {

/// Workbooks are written with libxlsxwriter, which brings libcrypto: a quarter of the time that a start with both
/// takes.
TEST(StartCost, LoadsNothingThatOnlyWorkbooksNeed) {
    const test::TemporaryFolder folder;
    // The system's loader then tells what it would load, and runs nothing.
    const test::Ended ended =
        test::Program(folder.path(), {"transact"}, [] { setenv("LD_TRACE_LOADED_OBJECTS", "1", 1); }).Wait();
    EXPECT_NE(ended.output.find("libsqlite3.so"), std::string::npos) << ended.output;
    EXPECT_EQ(ended.output.find("libxlsxwriter.so"), std::string::npos) << ended.output;
    EXPECT_EQ(ended.output.find("libcrypto.so"), std::string::npos) << ended.output;
}

} // namespace
} // namespace test_cost
