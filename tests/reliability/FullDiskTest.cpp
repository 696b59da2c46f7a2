// Databases that cannot be written, or no further: what is not written is not told of as accepted, and nothing is
// damaged.

#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "refhost/sql/types/Errors.h"
#include "tests/reliability/Soundness.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Program.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace test {
namespace {

namespace fs = std::filesystem;

constexpr int count = 40;
/// By how much the room grows from one run to the next.
const double step = sanitized ? 2 : 1.3;

/// Lets no file of this process grow beyond `bytes`; to be called in a process of the test's own.
void LimitFiles(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, RLIM_INFINITY};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
        throw std::runtime_error("no limit of files");
    }
}

class FullDisk : public testing::TestWithParam<NumberedImport> {};

/// There is room for a little more at each run, until there is enough.
TEST_P(FullDisk, WritesWhatIsAcceptedAndNoMore) {
    const NumberedImport& import = GetParam();
    const NumberedAccount original(count);
    int failed = 0;
    int present = 0;
    for (double room = 1000; present < count && !HasFailure(); room *= step) {
        const TestAccount account(original);
        const std::string result =
            TransactApart(import, account, RequestOf(import, 0, count), [&] { LimitFiles(static_cast<rlim_t>(room)); });
        present = WholeNumbers(import, account);
        if (import.atOnce) {
            EXPECT_TRUE(present == 0 || present == count) << present;
            EXPECT_EQ(result == AcceptedResult(import, 0, count), present == count) << result;
        } else {
            EXPECT_EQ(AcceptedNumbers(import, result, count), present) << result;
        }
        failed += present < count ? 1 : 0;
        ExpectCanGoOn(import, account, present, count);
    }
    EXPECT_GT(failed, 3);
    std::printf("reliability: %s: %d imports that ran out of room survived\n", import.className, failed);
}

/// In namespaces of this process's own, mounts a disk of so many kilobytes at the folder; false where the system does
/// not let us.
bool MountSmallDisk(const fs::path& folder, int kilobytes) {
    const uid_t user = getuid();
    const gid_t group = getgid();
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        return false;
    }
    WriteBytes("/proc/self/setgroups", "deny");
    WriteBytes("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
    WriteBytes("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    const std::string size = "size=" + std::to_string(kilobytes) + "k";
    return mount("none", folder.c_str(), "tmpfs", 0, size.c_str()) == 0;
}

/// The account lies on a disk that is too small for the import, until it is large enough.
TEST_P(FullDisk, LeavesTheAccountOfASmallDiskWhole) {
    const NumberedImport& import = GetParam();
    constexpr int enough = 50;
    constexpr int notMounted = 51;
    const NumberedAccount original(count);
    std::uintmax_t size = 0;
    for (const fs::directory_entry& file : fs::directory_iterator(original.folder())) {
        size += file.file_size();
    }
    const TemporaryFolder disk;
    const fs::path outside = fs::temp_directory_path();
    int failed = 0;
    int status = 0;
    for (double room = 10; status == 0; room *= step) {
        Process process([&] {
            if (!MountSmallDisk(disk.path(), static_cast<int>(static_cast<double>(size) / 1000 + room))) {
                return notMounted;
            }
            setenv("TMPDIR", disk.path().c_str(), 1);
            const TestAccount account(original);
            const std::string result = Transact(import, account, RequestOf(import, 0, count));
            // Where there is no room even to read, what is left is looked at elsewhere.
            setenv("TMPDIR", outside.c_str(), 1);
            const TestAccount copy(account);
            const int present = WholeNumbers(import, copy);
            EXPECT_EQ(import.atOnce ? (result == AcceptedResult(import, 0, count) ? count : 0)
                                    : AcceptedNumbers(import, result, count),
                      present)
                << result;
            ExpectCanGoOn(import, copy, present, count);
            if (testing::Test::HasFailure()) {
                return 1;
            }
            return present == count ? enough : 0;
        });
        status = process.Wait().status;
        failed += status == 0 ? 1 : 0;
    }
    if (status == notMounted) {
        GTEST_SKIP() << "no disk can be mounted here";
    }
    EXPECT_EQ(status, enough);
    EXPECT_GT(failed, 3);
    std::printf("reliability: %s: %d imports on a small disk survived\n", import.className, failed);
}

INSTANTIATE_TEST_SUITE_P(Imports, FullDisk, testing::ValuesIn(NumberedImports()), NameOfImport);

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
        while (inserted < 10'000 && ErrorNumberOf([&] { database->Execute(insert); }) == 0) {
            ++inserted;
        }
        LimitFiles(RLIM_INFINITY);
        EXPECT_LT(inserted, 10'000);
        EXPECT_EQ(ErrorNumberOf([&] { database->Execute(insert); }), host::error_number::unspecified);
        EXPECT_EQ(ErrorNumberOf([&] { database->Query("select count(*) from t"); }), host::error_number::unspecified);
        EXPECT_EQ(ErrorNumberOf([&] { database->BeginTrans(); }), refhost::transactionOpen);
        EXPECT_EQ(ErrorNumberOf([&] { database->CommitTrans(); }), host::error_number::unspecified);
        EXPECT_EQ(ErrorNumberOf([&] { database->RollbackTrans(); }), 0);
        EXPECT_EQ(ErrorNumberOf([&] { database->Execute(insert); }), 0);
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
        EXPECT_EQ(ErrorNumberOf([&] { database->CommitTrans(); }), host::error_number::unspecified);
        LimitFiles(RLIM_INFINITY);
        EXPECT_EQ(ErrorNumberOf([&] { database->RollbackTrans(); }), 0);
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(process.Wait().status, 0);
    EXPECT_TRUE(account.Rows("select x from t").empty());
}

} // namespace
} // namespace test
