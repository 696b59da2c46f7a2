#include "tests/reliability/Soundness.h"

#include "refhost/sql/functions/Functions.h"
#include "tests/support/Program.h"

#include <array>
#include <stdexcept>

#include <gtest/gtest.h>
#include <unistd.h>

namespace test {
namespace {

std::string IntegrityOf(const std::filesystem::path& file) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const refhost::sql::DatabaseHandle db(opened);
    if (code != SQLITE_OK) {
        return sqlite3_errmsg(opened);
    }
    // The indexes order by the account database's own collations.
    refhost::sql::Runtime runtime(opened);
    RegisterFunctions(opened, runtime);
    refhost::sql::Command check(opened, "PRAGMA integrity_check");
    return check.Step() ? check.Text(0) : "no answer";
}

} // namespace

void ExpectIntegrity(const TestAccount& account) {
    EXPECT_EQ(IntegrityOf(account.file()), "ok");
    EXPECT_EQ(IntegrityOf(account.folder() / "QxSystem.db"), "ok");
}

int WholeNumbers(const NumberedImport& import, const TestAccount& account) {
    ExpectIntegrity(account);
    EXPECT_EQ(Halves(import, account), std::vector<std::string>());
    const std::vector<std::string> rows = account.Rows(import.query);
    const int present = static_cast<int>(rows.size() / import.written(0).size());
    EXPECT_EQ(rows, WrittenBy(import, 0, present));
    return present;
}

std::string TransactApart(const NumberedImport& import, const TestAccount& account, const std::string& request,
                          const std::function<void()>& before) {
    std::array<int, 2> ends = {};
    if (pipe(ends.data()) != 0) {
        throw std::runtime_error("no pipe");
    }
    Process process([&] {
        close(ends[0]);
        before();
        const std::string result = Transact(import, account, request);
        return write(ends[1], result.data(), result.size()) == static_cast<ssize_t>(result.size()) ? 0 : 1;
    });
    close(ends[1]);
    std::string result;
    std::array<char, 4096> block = {};
    for (ssize_t size = 0; (size = read(ends[0], block.data(), block.size())) > 0;) {
        result.append(block.data(), static_cast<std::size_t>(size));
    }
    close(ends[0]);
    EXPECT_EQ(process.Wait().status, 0);
    return result;
}

int AcceptedNumbers(const NumberedImport& import, const std::string& result, int count) {
    int accepted = 0;
    for (int n = 0; n < count; ++n) {
        const std::string outcome = import.outcome(n);
        const std::string key = outcome.substr(0, outcome.find("\" code="));
        const std::size_t first = result.find(key);
        accepted += first != std::string::npos && result.compare(first, outcome.size(), outcome) == 0 ? 1 : 0;
    }
    return accepted;
}

void ExpectCanGoOn(const NumberedImport& import, const TestAccount& account, int present, int count) {
    if (present < count) {
        EXPECT_EQ(Transact(import, account, RequestOf(import, present, count)), AcceptedResult(import, present, count));
    }
    EXPECT_EQ(WholeNumbers(import, account), count);
}

} // namespace test
