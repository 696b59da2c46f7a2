// Runs every folder of tests/scenarios: tests/scenarios/CLASS/NAME holds
//   setup.sql       batches that fill the empty account (host's tables made)
//   login.xml       the login; its QxDbName names the file account.db
//   request.xml     the request, handed to CLASS
//   expected.xml    the result document (blanks between elements do not count); empty for an empty result
//   expected.trace  what the class asks of the database, line for line
//   check.sql, expected.rows   optional: a query, and its rows afterwards as JSON lines

#include "cli/Classes.h"
#include "refhost/Environment.h"
#include "refhost/Trace.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/Document.h"
#include "refhost/xml/FileText.h"
#include "tests/support/Import.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> ScenarioFolders() {
    std::vector<fs::path> folders;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(KOVRA_SOURCE_DIR "/tests/scenarios")) {
        if (entry.path().filename() == "request.xml") {
            folders.push_back(entry.path().parent_path());
        }
    }
    std::ranges::sort(folders);
    return folders;
}

std::string ScenarioName(const testing::TestParamInfo<fs::path>& info) {
    std::string name = info.param.parent_path().filename().string() + "_" + info.param.filename().string();
    std::ranges::replace_if(
        name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
}

/// The expected document in the form in which a result is written.
std::string ExpectedResult(const fs::path& folder) {
    const std::string text = refhost::xml::ReadXmlFile((folder / "expected.xml").string());
    if (text.find_first_not_of(" \r\n\t") == std::string::npos) {
        return {};
    }
    const std::unique_ptr<host::DOMDocument> document = refhost::xml::CreateDocument();
    EXPECT_TRUE(document->LoadXML(text)) << "expected.xml is not well-formed";
    return document->Xml();
}

/// The same account behind an ODBC driver.
std::unique_ptr<refhost::Database> OpenThroughOdbc(const std::string& connectionString) {
    return refhost::OpenDatabase("Driver=" KOVRA_ODBC_DRIVER ";" + connectionString);
}

class Scenario : public testing::TestWithParam<fs::path> {
protected:
    void Check(const refhost::DatabaseOpener& opener);
};

void Scenario::Check(const refhost::DatabaseOpener& opener) {
    const fs::path folder = GetParam();
    const test::TestAccount account;
    account.Run(refhost::xml::ReadTextFile((folder / "setup.sql").string()));
    fs::current_path(account.folder());

    std::string result;
    {
        refhost::Trace trace("trace.jsonl");
        refhost::Environment environment(&trace, opener);
        refhost::Login login(refhost::xml::ReadXmlFile((folder / "login.xml").string()), environment);
        const std::string request = refhost::xml::ReadXmlFile((folder / "request.xml").string());
        const std::string className = folder.parent_path().filename().string();
        const auto importClass = std::ranges::find(cli::ImportClasses(), className, &cli::ImportClass::name);
        ASSERT_NE(importClass, cli::ImportClasses().end()) << className;
        result = importClass->transact(environment, request, &login);
        trace.Flush();
    }

    EXPECT_EQ(result, ExpectedResult(folder));
    EXPECT_EQ(test::OwnLines("trace.jsonl"), test::ReadLines(folder / "expected.trace"));
    if (fs::exists(folder / "check.sql")) {
        EXPECT_EQ(account.Rows(refhost::xml::ReadTextFile((folder / "check.sql").string())),
                  test::ReadLines(folder / "expected.rows"));
    }
}

TEST_P(Scenario, GivesResultAndStatements) { Check(refhost::OpenExisting()); }

TEST_P(Scenario, GivesTheSameThroughOdbc) { Check(OpenThroughOdbc); }

INSTANTIATE_TEST_SUITE_P(All, Scenario, testing::ValuesIn(ScenarioFolders()), ScenarioName);

} // namespace
