// Threads that import at once, each through instances of its own, as a server's callers do.

#include "tests/support/NumberedImport.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include <gtest/gtest.h>

namespace test {
namespace {

/// Threads of each class.
constexpr int threadsOfAClass = 2;
/// Numbers that a thread imports, a few with each call.
constexpr int each = 12;
constexpr int withEachCall = 4;

void ImportNumbers(const NumberedImport& import, const TestAccount& account, int first) {
    for (int n = first; n < first + each; n += withEachCall) {
        EXPECT_EQ(Transact(import, account, RequestOf(import, n, n + withEachCall)),
                  AcceptedResult(import, n, n + withEachCall));
    }
    EXPECT_TRUE(Transact(import, account, "<row").starts_with("<error code=\"100\" "));
    EXPECT_TRUE(Transact(import, account, "<a proc=\"NONE\"/>").starts_with("<error code=\"710\" "));
}

/// Runs threads of each import, each with the first of its numbers.
template <class Imports, class Work> void RunThreads(const Imports& imports, const Work& work) {
    std::vector<std::thread> threads;
    for (int n = 0; n < threadsOfAClass; ++n) {
        for (const NumberedImport& import : imports) {
            threads.emplace_back([&work, &import, n] { work(import, n * each); });
        }
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::printf("threads: %zu at once\n", threads.size());
}

/// Expects the numbers below `count` among what is there; other classes write into the same tables.
void ExpectWritten(const NumberedImport& import, const TestAccount& account, int first, int last) {
    std::vector<std::string> present = account.Rows(import.query);
    std::vector<std::string> expected = WrittenBy(import, first, last);
    std::ranges::sort(present);
    std::ranges::sort(expected);
    EXPECT_TRUE(std::ranges::includes(present, expected)) << import.className;
    EXPECT_EQ(Halves(import, account), std::vector<std::string>());
}

TEST(Threads, ImportIntoAccountsOfTheirOwn) {
    const NumberedAccount original(threadsOfAClass * each);
    RunThreads(NumberedImports(), [&](const NumberedImport& import, int first) {
        const TestAccount account(original);
        ImportNumbers(import, account, first);
        ExpectWritten(import, account, first, first + each);
    });
}

TEST(Threads, ImportIntoOneAccount) {
    const NumberedAccount account(threadsOfAClass * each);
    const std::vector<NumberedImport> imports = ImportsBesideEachOther();
    RunThreads(imports, [&](const NumberedImport& import, int first) { ImportNumbers(import, account, first); });
    for (const NumberedImport& import : imports) {
        ExpectWritten(import, account, 0, threadsOfAClass * each);
    }
}

} // namespace
} // namespace test
