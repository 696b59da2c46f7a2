#include "tests/reliability/Soundness.h"

#include "cli/Classes.h"
#include "refhost/sql/Runtime.h"

#include <algorithm>

#include <gtest/gtest.h>

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

std::string Transact(const NumberedImport& import, const TestAccount& account, const std::string& request) {
    refhost::Environment environment;
    refhost::Login login(account.LoginXml(), environment);
    return Transact(import, environment, login, request);
}

std::string Transact(const NumberedImport& import, refhost::Environment& environment, refhost::Login& login,
                     const std::string& request) {
    const std::vector<cli::ImportClass>& classes = cli::ImportClasses();
    return std::ranges::find(classes, import.className, &cli::ImportClass::name)
        ->transact(environment, request, &login);
}

void ExpectCanGoOn(const NumberedImport& import, const TestAccount& account, int present, int count) {
    if (present < count) {
        EXPECT_EQ(Transact(import, account, RequestOf(import, present, count)), AcceptedResult(import, present, count));
    }
    EXPECT_EQ(WholeNumbers(import, account), count);
}

} // namespace test
