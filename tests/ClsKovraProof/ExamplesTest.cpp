#include "ClsKovraProof/ClsKovraProof.h"
#include "cli/Commands.h"
#include "refhost/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "refhost/eai/Login.h"
#include "refhost/xml/FileText.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

const std::string examples = (test::SourceFolder() / "examples" / "").string();

/// The example files on the demonstration company, which they name `demo.db` in the current folder.
class Examples : public testing::Test {
protected:
    Examples() {
        std::filesystem::current_path(folder.path());
        refhost::Connection connection(refhost::OpenOrCreate());
        connection.Open("Provider=KovraAccount;Data Source=demo.db", "", "", host::command_option::unspecified);
        refhost::CreateAccount(connection, "001", true);
    }
    ~Examples() override { std::filesystem::current_path(before); }

    /// Codes and keys of the outcomes.
    static std::vector<std::string> Transact(const std::string& file) {
        refhost::Environment environment;
        refhost::Login login(refhost::xml::ReadXmlFile(examples + "login.xml"), environment);
        const std::string result =
            kovra::ClsKovraProof(environment).Transact(refhost::xml::ReadXmlFile(examples + file), &login);
        const auto document = environment.CreateDOMDocument();
        EXPECT_TRUE(document->LoadXML(result)) << result;
        std::vector<std::string> outcomes;
        for (const host::DOMNodePtr& item : document->SelectNodes("//item")) {
            outcomes.push_back(item->GetAttribute("key").value_or("") + " " + item->GetAttribute("code").value_or(""));
        }
        return outcomes;
    }
    static std::string Query(const std::string& envelope, const std::string& conditions) {
        // The account is looked for beside the login.
        std::filesystem::copy_file(examples + "login.xml", "login.xml",
                                   std::filesystem::copy_options::overwrite_existing);
        testing::internal::CaptureStdout();
        cli::RunQuery({.login = "login.xml",
                       .conditions = conditions.empty() ? "" : examples + conditions,
                       .trace = {},
                       .envelope = examples + envelope});
        return testing::internal::GetCapturedStdout();
    }

    std::filesystem::path before = std::filesystem::current_path();
    test::TemporaryFolder folder;
};

TEST_F(Examples, SaveAndRefuseProvisionsAsTheySay) {
    EXPECT_THAT(Transact("provisions.xml"),
                testing::ElementsAre("DJ202401001 0", "DJ202401001 101", "DJ202401002 101", "DJ202401003 101",
                                     "DJ202401004 101", "DJ202401005 101", "DJ202401006 101"));
    EXPECT_THAT(Transact("provisions-edit.xml"), testing::ElementsAre("DJ202401001 0"));
}

TEST_F(Examples, FindStockDocuments) {
    const std::string issues = Query("stock-issues.xml", "stock-conditions.xml");
    for (const char* code : {"CX0005", "CX0007", "CX0009", "CX0011"}) {
        EXPECT_THAT(issues, testing::HasSubstr("<cCode>" + std::string(code) + "</cCode>"));
    }
    EXPECT_THAT(issues, testing::Not(testing::HasSubstr("CX0003")));
    EXPECT_THAT(issues, testing::Not(testing::HasSubstr("CX0006")));
    EXPECT_THAT(Query("stock-receipts.xml", ""), testing::HasSubstr("<cCode>CR0001</cCode>"));
    EXPECT_THAT(Query("stock-receipts.xml", "stock-changes.xml"), testing::HasSubstr("<storein>"));
}

} // namespace
