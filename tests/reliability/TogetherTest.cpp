// Several processes that import into one account at once.

#include "tests/reliability/Soundness.h"
#include "tests/support/Program.h"

#include <algorithm>
#include <cstdio>

#include <gtest/gtest.h>

namespace test {
namespace {

const int processes = sanitized ? 4 : 8;

/// A process that imports the numbers `first` to `last` - 1, so many with each call, and must be told that each was
/// accepted.
Process Importer(const NumberedImport& import, const TestAccount& account, int first, int last, int withEachCall) {
    return Process([=, &import, &account] {
        for (int n = first; n < last; n += withEachCall) {
            EXPECT_EQ(Transact(import, account, RequestOf(import, n, n + withEachCall)),
                      AcceptedResult(import, n, n + withEachCall));
        }
        return testing::Test::HasFailure() ? 1 : 0;
    });
}

/// Expects that all numbers below `count` are there, in whatever order.
void ExpectAll(const NumberedImport& import, const TestAccount& account, int count) {
    ExpectIntegrity(account);
    EXPECT_EQ(Halves(import, account), std::vector<std::string>());
    std::vector<std::string> present = account.Rows(import.query);
    std::vector<std::string> expected = WrittenBy(import, 0, count);
    std::ranges::sort(present);
    std::ranges::sort(expected);
    EXPECT_EQ(present, expected);
}

class Together : public testing::TestWithParam<NumberedImport> {
protected:
    static void ImportTogether(int each, int withEachCall) {
        const NumberedImport& import = GetParam();
        const NumberedAccount account(processes * each);
        std::vector<Process> importers;
        for (int n = 0; n < processes; ++n) {
            importers.push_back(Importer(import, account, n * each, (n + 1) * each, withEachCall));
        }
        for (Process& importer : importers) {
            EXPECT_EQ(importer.Wait().status, 0);
        }
        ExpectAll(import, account, processes * each);
        std::printf("reliability: %s: %d processes at once, %d calls, %d numbers arrived\n", import.className,
                    processes, processes * each / withEachCall, processes * each);
    }
};

TEST_P(Together, EveryRowOfOneLargeRequestEachArrives) {
    const int each = GetParam().commit == commitTrans ? 10 : 100;
    ImportTogether(each, each);
}

/// Each call opens the account and closes it, so that the log is made and taken away all the time.
TEST_P(Together, EveryRowOfManySmallRequestsArrives) { ImportTogether(20, 1); }

INSTANTIATE_TEST_SUITE_P(Imports, Together, testing::ValuesIn(NumberedImports()), NameOfImport);

TEST(AllTogether, EveryClassImportsBesideOthers) {
    constexpr int rounds = 4;
    constexpr int each = 10;
    const NumberedAccount account(rounds * each);
    const std::vector<NumberedImport> imports = ImportsBesideEachOther();
    std::vector<Process> importers;
    for (int round = 0; round < rounds; ++round) {
        for (const NumberedImport& import : imports) {
            importers.push_back(Importer(import, account, round * each, (round + 1) * each, each));
        }
    }
    for (Process& importer : importers) {
        EXPECT_EQ(importer.Wait().status, 0);
    }
    ExpectIntegrity(account);
    for (const NumberedImport& import : imports) {
        EXPECT_EQ(Halves(import, account), std::vector<std::string>());
        // Other classes write into the same tables.
        std::vector<std::string> present = account.Rows(import.query);
        std::vector<std::string> expected = WrittenBy(import, 0, rounds * each);
        std::ranges::sort(present);
        std::ranges::sort(expected);
        EXPECT_TRUE(std::ranges::includes(present, expected)) << import.className;
    }
}

} // namespace
} // namespace test
