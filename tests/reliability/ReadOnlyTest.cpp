// Accounts that may be read only.

#include "tests/reliability/Soundness.h"
#include "tests/support/Program.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace test {
namespace {

namespace fs = std::filesystem;

constexpr int numbers = 3;

/// Goes on as somebody who owns nothing, where this process may do that; root may write everything.
void BecomeNobody() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && (setresgid(nobody, nobody, nobody) != 0 || setresuid(nobody, nobody, nobody) != 0)) {
        throw std::runtime_error("cannot become nobody");
    }
}

void Protect(const TestAccount& account, fs::perms folder, fs::perms files) {
    for (const fs::directory_entry& file : fs::directory_iterator(account.folder())) {
        fs::permissions(file, files);
    }
    fs::permissions(account.folder(), folder);
}

constexpr fs::perms readable = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
constexpr fs::perms writable = readable | fs::perms::owner_write | fs::perms::others_write;
constexpr fs::perms enterable = fs::perms::owner_exec | fs::perms::others_exec;

class ReadOnly : public testing::TestWithParam<NumberedImport> {
protected:
    /// Imports under the permissions; nothing is accepted, and everything goes well without them afterwards.
    void ExpectRefusal(fs::perms folder, fs::perms files) {
        const NumberedImport& import = GetParam();
        const NumberedAccount account(numbers);
        const std::string before = ReadBytes(account.file());
        Protect(account, folder, files);
        const std::string result = TransactApart(import, account, RequestOf(import, 0, numbers), BecomeNobody);
        EXPECT_NE(result, "");
        EXPECT_EQ(AcceptedNumbers(import, result, numbers), 0) << result;
        Protect(account, writable | enterable, writable);
        EXPECT_TRUE(ReadBytes(account.file()) == before) << "the file changed";
        ExpectCanGoOn(import, account, 0, numbers);
    }
};

TEST_P(ReadOnly, FilesGiveAnErrorResult) { ExpectRefusal(writable | enterable, readable); }

TEST_P(ReadOnly, FolderGivesAnErrorResult) { ExpectRefusal(readable | enterable, readable); }

TEST_P(ReadOnly, FolderAroundWritableFilesGivesAnErrorResult) { ExpectRefusal(readable | enterable, writable); }

TEST_P(ReadOnly, UnreadableFilesGiveAnErrorResult) { ExpectRefusal(writable | enterable, fs::perms::none); }

INSTANTIATE_TEST_SUITE_P(Imports, ReadOnly, testing::ValuesIn(NumberedImports()), NameOfImport);

} // namespace
} // namespace test
