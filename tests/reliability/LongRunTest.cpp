// Many calls in one process.

#include "tests/reliability/Soundness.h"

#include <cstdio>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>
#include <malloc.h>

namespace test {
namespace {

struct Held {
    /// Bytes of the heap in use.
    std::size_t memory;
    /// Open files.
    long files;
};

Held Hold() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    const struct mallinfo2 heap = mallinfo2();
    return {heap.uordblks + heap.hblkhd, std::distance(begin(descriptors), end(descriptors))};
}

// Under a sanitizer its own leak check watches the heap.
const int calls = sanitized ? 50 : 300;
const int warmUp = sanitized ? 20 : 100;

TEST(LongRunItself, SeesWhatIsHeld) {
    const Held before = Hold();
    const std::vector<char> block(1'000'000, 'x');
    std::FILE* const file = std::tmpfile();
    const Held after = Hold();
    EXPECT_EQ(after.files, before.files + 1);
    EXPECT_TRUE(sanitized || after.memory >= before.memory + block.size());
    std::fclose(file);
}

class LongRun : public testing::TestWithParam<NumberedImport> {};

/// Every call imports one number more, refuses it once more and answers an ill-formed text.
TEST_P(LongRun, HoldsNothingAfterACall) {
    const NumberedImport& import = GetParam();
    const NumberedAccount account(calls);
    Held before = {};
    for (int n = 0; n < calls; ++n) {
        if (n == warmUp) {
            before = Hold();
        }
        ASSERT_EQ(Transact(import, account, RequestOf(import, n, n + 1)), AcceptedResult(import, n, n + 1));
        if (n % 10 == 0) {
            ASSERT_NE(Transact(import, account, RequestOf(import, n, n + 1)), "");
            ASSERT_NE(Transact(import, account, "<qxinterface roottag=\"row\""), "");
        }
    }
    const Held after = Hold();
    EXPECT_EQ(after.files, before.files);
    // Less than 41 bytes a call.
    constexpr std::size_t slack = 8 * 1024;
    EXPECT_TRUE(sanitized || after.memory < before.memory + slack) << after.memory - before.memory;
    std::printf("reliability: %s: %d calls in one process, %zd bytes more held, %ld files more open\n",
                import.className, calls, static_cast<ssize_t>(after.memory - before.memory),
                after.files - before.files);
}

INSTANTIATE_TEST_SUITE_P(Imports, LongRun, testing::ValuesIn(NumberedImports()), NameOfImport);

} // namespace
} // namespace test
