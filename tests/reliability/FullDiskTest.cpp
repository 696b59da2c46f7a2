// Databases that cannot be written, or no further: what is not written is not told of as accepted, and nothing is
// damaged.

#include "refhost/sql/EmbeddedDatabase.h"
#include "refhost/sql/Errors.h"
#include "tests/reliability/Program.h"
#include "tests/reliability/Soundness.h"

#include <csignal>
#include <cstdio>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace test {
namespace {

namespace fs = std::filesystem;

constexpr int count = 40;

/// Lets no file of this process grow beyond `bytes`; to be called in a process of the test's own.
void LimitFiles(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, RLIM_INFINITY};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
        throw std::runtime_error("no limit of files");
    }
}

/// Runs the import in a process of its own after `before`; the result it returned.
std::string TransactAfter(const std::function<void()>& before, const NumberedImport& import,
                          const TestAccount& account) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const std::string request = RequestOf(import, 0, count);
    Process process([&] {
        close(ends[0]);
        before();
        const std::string result = Transact(import, account, request);
        return write(ends[1], result.data(), result.size()) == static_cast<ssize_t>(result.size()) ? 0 : 1;
    });
    close(ends[1]);
    std::string result;
    char block[4096];
    for (ssize_t size = 0; (size = read(ends[0], block, sizeof block)) > 0;) {
        result.append(block, static_cast<std::size_t>(size));
    }
    close(ends[0]);
    EXPECT_EQ(process.Wait().status, 0);
    return result;
}

/// How many of the numbers the result tells of as accepted: where a row has two outcomes, the first counts.
int Accepted(const NumberedImport& import, const std::string& result) {
    int accepted = 0;
    for (int n = 0; n < count; ++n) {
        const std::string outcome = import.outcome(n);
        const std::string key = outcome.substr(0, outcome.find("\" code="));
        const std::size_t first = result.find(key);
        accepted += first != std::string::npos && result.compare(first, outcome.size(), outcome) == 0 ? 1 : 0;
    }
    return accepted;
}

class FullDisk : public testing::TestWithParam<NumberedImport> {};

/// There is room for a little more at each run, until there is enough.
TEST_P(FullDisk, WritesWhatIsAcceptedAndNoMore) {
    const NumberedImport& import = GetParam();
    const NumberedAccount original(count);
    int failed = 0;
    int present = 0;
    for (double room = 1000; present < count && !HasFailure(); room *= 1.3) {
        const TestAccount account(original);
        const std::string result = TransactAfter([&] { LimitFiles(static_cast<rlim_t>(room)); }, import, account);
        present = WholeNumbers(import, account);
        if (import.atOnce) {
            EXPECT_TRUE(present == 0 || present == count) << present;
            EXPECT_EQ(result == AcceptedResult(import, 0, count), present == count) << result;
        } else {
            EXPECT_EQ(Accepted(import, result), present) << result;
        }
        failed += present < count ? 1 : 0;
        ExpectCanGoOn(import, account, present, count);
    }
    EXPECT_GT(failed, 3);
    std::printf("reliability: %s: %d imports that ran out of room survived\n", import.className, failed);
}

INSTANTIATE_TEST_SUITE_P(Imports, FullDisk, testing::ValuesIn(NumberedImports()), NameOfImport);

/// The number of the error that `work` ends in, or 0.
host::ErrorNumber ErrorOf(const std::function<void()>& work) {
    try {
        work();
        return 0;
    } catch (const host::Error& error) {
        return error.number();
    }
}

TEST(FullDiskInATransaction, NothingRunsOutsideOfItUntilItIsRolledBack) {
    const TestAccount account;
    account.Run("create table t (x nvarchar(4000))");
    const std::string insert = "insert into t values ('" + std::string(4000, 'x') + "')";
    Process process([&] {
        const std::unique_ptr<refhost::sql::EmbeddedDatabase> database =
            refhost::sql::OpenEmbedded(account.connectionString(), refhost::sql::Mode::open);
        database->BeginTrans();
        LimitFiles(100'000);
        // More than is kept in memory.
        int inserted = 0;
        while (inserted < 10'000 && ErrorOf([&] { database->Execute(insert); }) == 0) {
            ++inserted;
        }
        LimitFiles(RLIM_INFINITY);
        EXPECT_LT(inserted, 10'000);
        EXPECT_EQ(ErrorOf([&] { database->Execute(insert); }), host::error_number::unspecified);
        EXPECT_EQ(ErrorOf([&] { database->Query("select count(*) from t"); }), host::error_number::unspecified);
        EXPECT_EQ(ErrorOf([&] { database->BeginTrans(); }), refhost::sql::transactionOpen);
        EXPECT_EQ(ErrorOf([&] { database->CommitTrans(); }), host::error_number::unspecified);
        EXPECT_EQ(ErrorOf([&] { database->RollbackTrans(); }), 0);
        EXPECT_EQ(ErrorOf([&] { database->Execute(insert); }), 0);
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(process.Wait().status, 0);
    EXPECT_EQ(account.Rows("select x from t").size(), 1U);
}

TEST(FullDiskInATransaction, ACommitThatFailsIsRolledBack) {
    const TestAccount account;
    account.Run("create table t (x int)");
    Process process([&] {
        const std::unique_ptr<refhost::sql::EmbeddedDatabase> database =
            refhost::sql::OpenEmbedded(account.connectionString(), refhost::sql::Mode::open);
        database->BeginTrans();
        database->Execute("insert into t values (1)");
        LimitFiles(0);
        EXPECT_EQ(ErrorOf([&] { database->CommitTrans(); }), host::error_number::unspecified);
        LimitFiles(RLIM_INFINITY);
        EXPECT_EQ(ErrorOf([&] { database->RollbackTrans(); }), 0);
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(process.Wait().status, 0);
    EXPECT_TRUE(account.Rows("select x from t").empty());
}

} // namespace
} // namespace test
