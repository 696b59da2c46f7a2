// Runs every scenario natively.

#include "cli/Classes.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/Traced.h"
#include "refhost/xml/Document.h"
#include "tests/support/Paths.h"
#include "tests/support/ScenarioFolder.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// The expected document in the form in which a result is written.
std::string ExpectedResult(const fs::path& folder) {
    if (test::ExpectsEmptyResult(folder)) {
        return {};
    }
    const std::unique_ptr<host::DOMDocument> document = refhost::xml::CreateDocument();
    EXPECT_TRUE(document->LoadXML(test::ReadText(folder / "expected.xml"))) << "expected.xml is not well-formed";
    return document->Xml();
}

/// The same account behind an ODBC driver.
std::unique_ptr<refhost::Database> OpenThroughOdbc(const std::string& connectionString) {
    return refhost::OpenDatabase("Driver=" + test::OdbcDriverPath() + ";" + connectionString);
}

class Scenario : public testing::TestWithParam<fs::path> {
protected:
    void Check(const refhost::DatabaseOpener& opener);
};

void Scenario::Check(const refhost::DatabaseOpener& opener) {
    const fs::path folder = GetParam();
    const test::TestAccount account;
    account.Run(test::ReadText(folder / "setup.sql"));
    fs::current_path(account.folder());

    std::string result;
    {
        refhost::Trace trace("trace.jsonl");
        refhost::Traced<refhost::Environment> environment(&trace, opener);
        refhost::Login login(test::ReadText(folder / "login.xml"), environment);
        const std::string request = test::ReadText(folder / "request.xml");
        const std::string className = folder.parent_path().filename().string();
        const auto importClass = std::ranges::find(cli::ImportClasses(), className, &cli::ImportClass::name);
        ASSERT_NE(importClass, cli::ImportClasses().end()) << className;
        result = importClass->transact(environment, request, &login, nullptr);
        trace.Flush();
    }

    EXPECT_EQ(result, ExpectedResult(folder));
    test::ExpectStatementsAndRows(folder, "trace.jsonl", account);
}

TEST_P(Scenario, GivesResultAndStatements) { Check(refhost::OpenExisting()); }

TEST_P(Scenario, GivesTheSameThroughOdbc) { Check(OpenThroughOdbc); }

INSTANTIATE_TEST_SUITE_P(All, Scenario, testing::ValuesIn(test::ScenarioFolders()), test::ScenarioName);

} // namespace
