// What a row asks of the system when its account is a file.

#include "bench/imports/FileAccount.h"
#include "bench/imports/RunImport.h"
#include "bench/imports/SystemCalls.h"
#include "refhost/OpenDatabase.h"
#include "tests/support/TestAccount.h"

#include <gtest/gtest.h>

namespace test_cost {
namespace {

bench::SystemCalls CallsOf(std::size_t rows) {
    const test::TemporaryFolder folder;
    const bench::Import import = bench::InventorySettings();
    const bench::FileAccount account(folder.path());
    account.Fill(import.account(rows));
    const std::string request = import.request(rows);
    const bench::SystemCalls before = bench::CountedSystemCalls();
    RunImport(import, request, account.connectionString(), refhost::OpenExisting());
    return bench::CountedSystemCalls() - before;
}

TEST(FileCost, AnInventorySetting) {
    constexpr int rows = 200;
    const bench::SystemCalls calls = CallsOf(2 * rows) - CallsOf(rows);
    // All rows share a lock for reading; the write takes and gives back the right to write.
    EXPECT_LE(calls.locks, 2 * rows);
    // One piece of the log for a commit, and what is read and written when pages divide.
    EXPECT_LE(calls.writes, rows + rows / 10);
    EXPECT_LE(calls.reads, rows / 2);
    // Pages of 1 KB, each with its heading: the row's, the three indexes' and that of identity numbers, and every
    // twentieth time, when one of the four divides, three more for each; what closing moves into the database is
    // counted too.
    EXPECT_LE(calls.bytesWritten, std::int64_t{rows} * 7 * (1024 + 24));
    // The disk does not wait for rows.
    EXPECT_EQ(calls.syncs, 0);
}

} // namespace
} // namespace test_cost
