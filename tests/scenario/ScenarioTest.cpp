// Runs every scenario natively: on the embedded database, on the same behind an ODBC driver, and on a server through
// the real FreeTDS. The server is the one that KOVRA_TEST_ODBC names (a connection string; the run makes and drops a
// database for each scenario), else one of the tests' own.

#include "cli/Classes.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/Traced.h"
#include "tests/scenario/ExpectedResult.h"
#include "tests/support/Paths.h"
#include "tests/support/ServerAccount.h"
#include "tests/support/TdsServer.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// The same account behind an ODBC driver.
std::unique_ptr<refhost::Database> OpenThroughOdbc(const std::string& connectionString) {
    return refhost::OpenDatabase("Driver=" + test::OdbcDriverPath() + ";" + connectionString);
}

/// Where a server does otherwise than the scenario says, for a reason of its own: `server-differences.txt` has lines
/// "CLASS/NAME: REASON".
std::string ReasonToDiffer(const fs::path& folder) {
    const std::string name = folder.parent_path().filename().string() + "/" + folder.filename().string() + ": ";
    for (const std::string& line : test::ReadLines(test::SourceFolder() / "tests/scenario/server-differences.txt")) {
        if (line.starts_with(name)) {
            return line.substr(name.size());
        }
    }
    return {};
}

/// Runs a scenario's request. The trace goes to the file "trace.jsonl" of the current folder.
std::string Transact(const fs::path& folder, const refhost::DatabaseOpener& opener) {
    refhost::Trace trace("trace.jsonl");
    refhost::Traced<refhost::Environment> environment(&trace, opener);
    refhost::Login login(test::ReadText(test::LoginFile(folder)), environment);
    const std::string className = folder.parent_path().filename().string();
    const auto importClass = std::ranges::find(cli::ImportClasses(), className, &cli::ImportClass::name);
    if (importClass == cli::ImportClasses().end()) {
        ADD_FAILURE() << className;
        return {};
    }
    std::string result = importClass->transact(environment, test::ReadText(folder / "request.xml"), &login, nullptr);
    trace.Flush();
    return result;
}

class Scenario : public testing::TestWithParam<fs::path> {
protected:
    Scenario() { fs::current_path(account_.folder()); }

    void Check(const refhost::DatabaseOpener& opener) const {
        test::SetUp(account_, GetParam());
        EXPECT_EQ(Transact(GetParam(), opener), test::ExpectedResult(GetParam()));
        ExpectStatementsAndRows(GetParam(), "trace.jsonl", account_, test::Documents::native);
    }

    const test::TestAccount account_;
};

TEST_P(Scenario, GivesResultAndStatements) { Check(refhost::OpenExisting()); }

TEST_P(Scenario, GivesTheSameThroughOdbc) { Check(OpenThroughOdbc); }

TEST_P(Scenario, GivesTheSameOnAServer) {
    const fs::path folder = GetParam();
    const test::TemporaryFolder databases;
    std::optional<test::TdsServer> own;
    const char* server = std::getenv("KOVRA_TEST_ODBC");
    if (server == nullptr) {
        own.emplace("", test::TdsServer::Manners{.databases = databases.path()});
    }
    const test::ServerAccount account(server == nullptr ? own->ConnectionString() : server);
    test::SetUp(account, folder);

    const std::string result = Transact(folder, account.Opener());
    const std::string expected = test::ExpectedResult(folder);
    if (const std::string reason = ReasonToDiffer(folder); !reason.empty()) {
        std::printf("%s\n  expected: %s\n  given: %s\n", reason.c_str(), expected.c_str(), result.c_str());
        EXPECT_NE(result, expected) << "it does not differ any more, and need not be listed";
        return;
    }
    EXPECT_EQ(result, expected);
    ExpectStatementsAndRows(folder, "trace.jsonl", account, test::Documents::native);
}

INSTANTIATE_TEST_SUITE_P(All, Scenario, testing::ValuesIn(test::ScenarioFolders()), test::ScenarioName);

} // namespace
