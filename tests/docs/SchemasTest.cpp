// The schemas take every example and every scenario's request that is meant to be valid, and no other.

#include "tests/docs/Pages.h"
#include "tests/support/Paths.h"
#include "tests/support/ScenarioFolder.h"
#include "tests/support/TestAccount.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <set>

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

/// The requests among the examples, by the class that they are for.
const std::map<std::string, std::string> examples = {
    {"inventory-settings.xml", "ClsInvSubject"},
    {"opposite-settings.xml", "ClsOppSubject"},
    {"standard-cost-settings.xml", "ClsOppSubjectST"},
    {"opening-balances.xml", "ClsKovra"},
    {"provisions.xml", "ClsKovraProof"},
    {"provisions-edit.xml", "ClsKovraProof"},
    {"price-voucher.xml", "ClsPriceJustVou"},
    {"price-voucher-posted.xml", "ClsPriceJustVou"},
    {"price-voucher-refused.xml", "ClsPriceJustVou"},
    {"first/inventory-settings.xml", "ClsInvSubject"},
    {"first/opposite-settings.xml", "ClsOppSubject"},
    {"first/standard-cost-settings.xml", "ClsOppSubjectST"},
    {"first/opening-balances.xml", "ClsKovra"},
    {"first/provisions.xml", "ClsKovraProof"},
    {"first/price-voucher.xml", "ClsPriceJustVou"},
    {"first/two-settings.xml", "ClsInvSubject"},
};

/// Examples that are no requests: a login, the conditions and envelopes of queries.
const std::set<std::string> otherExamples = {
    "login.xml", "stock-changes.xml", "stock-conditions.xml", "stock-issues.xml", "stock-receipts.xml",
};

/// What is not meant to be valid, and why.
const std::map<std::string, std::string> invalid = {
    {"examples/opening-balances.xml", "shows what a misspelt column comes to"},
    {"examples/provisions.xml", "shows a wrong voucher type, a row without item and a provision that is no number"},
    {"tests/scenarios/ClsInvSubject/add/request.xml", "has an element that is no row"},
    {"tests/scenarios/ClsInvSubject/ill-formed/request.xml", "is not well-formed"},
    {"tests/scenarios/ClsInvSubject/unknown-operation/request.xml", "asks for an operation that there is not"},
    {"tests/scenarios/ClsKovra/batches/request.xml", "has a batch of 61 characters"},
    {"tests/scenarios/ClsKovra/column-mapping/request.xml", "spells its columns in capitals"},
    {"tests/scenarios/ClsKovra/dates/request.xml", "has texts that are no dates"},
    {"tests/scenarios/ClsKovra/delete-is-not-offered/request.xml", "asks for an operation that there is not"},
    {"tests/scenarios/ClsKovra/failing-insert/request.xml", "has an unknown column and a text too long"},
    {"tests/scenarios/ClsKovra/ill-formed/request.xml", "is not well-formed"},
    {"tests/scenarios/ClsKovra/no-rows/request.xml", "has an element that is no row"},
    {"tests/scenarios/ClsKovra/numbers/request.xml", "has texts that are read as numbers and are none"},
    {"tests/scenarios/ClsKovra/shelf-life/request.xml", "has texts that are no dates"},
    {"tests/scenarios/ClsKovraProof/add-refusals/request.xml", "lacks heads, numbers and bodies"},
    {"tests/scenarios/ClsKovraProof/edit-deletes-are-final/request.xml", "has a wrong voucher type"},
    {"tests/scenarios/ClsKovraProof/error-stops-the-loop/request.xml", "lacks heads"},
    {"tests/scenarios/ClsKovraProof/month-closed/request.xml", "has a row without item"},
    {"tests/scenarios/ClsKovraProof/operation-not-offered/request.xml", "asks for an operation that there is not"},
    {"tests/scenarios/ClsOppSubject/add/request.xml", "has an element that is no row"},
    {"tests/scenarios/ClsOppSubject/unknown-operation/request.xml", "asks for an operation that there is not"},
    {"tests/scenarios/ClsPriceJustVou/edit/request.xml", "asks for an operation that there is not"},
    {"tests/scenarios/ClsPriceJustVou/refused-row/request.xml", "has a row without price"},
    {"tests/scenarios/ClsPriceJustVou/two-refused-documents/request.xml", "has prices that are none"},
};

/// xmllint's exit statuses: the document is ill-formed, or does not validate. Others tell of the schema or the file.
constexpr int valid = 0;
constexpr int illFormed = 1;
constexpr int notValid = 3;

/// xmllint's exit status for `file` beside the schema, and in `words` what it said.
int Validate(const fs::path& file, const std::string& schema, std::string& words) {
    const test::TemporaryFolder folder;
    const fs::path log = folder.path() / "xmllint.log";
    const std::string line = "xmllint --noout --nonet --schema '" +
                             (test::SourceFolder() / "schemas" / (schema + ".xsd")).string() + "' '" + file.string() +
                             "' >'" + log.string() + "' 2>&1";
    const int status = WEXITSTATUS(std::system(line.c_str()));
    words = test::ReadText(log);
    return status;
}

void ExpectAsMeant(const std::string& file, const std::string& schema) {
    std::string words;
    const int status = Validate(test::SourceFolder() / file, schema, words);
    if (const auto found = invalid.find(file); found != invalid.end()) {
        EXPECT_TRUE(status == notValid || status == illFormed)
            << file << " is valid, though it " << found->second << "\n"
            << words;
    } else {
        EXPECT_EQ(status, valid) << words;
    }
}

/// Folders of scenarios, as "CLASS/NAME".
std::vector<std::string> Scenarios() {
    std::vector<std::string> scenarios;
    for (const fs::path& folder : test::ScenarioFolders()) {
        scenarios.push_back(fs::relative(folder, test::SourceFolder() / "tests/scenarios").string());
    }
    return scenarios;
}

TEST(Schemas, TakeTheExamples) {
    for (const auto& [file, name] : examples) {
        ExpectAsMeant("examples/" + file, name);
    }
}

TEST(Schemas, AreToldOfEveryExample) {
    for (const auto& entry : fs::recursive_directory_iterator(test::SourceFolder() / "examples")) {
        const std::string name = fs::relative(entry.path(), test::SourceFolder() / "examples").string();
        EXPECT_TRUE(entry.path().extension() != ".xml" || examples.contains(name) || otherExamples.contains(name))
            << name;
    }
}

TEST(Schemas, TakeTheRequestsOfScenarios) {
    ASSERT_FALSE(Scenarios().empty());
    for (const std::string& scenario : Scenarios()) {
        ExpectAsMeant("tests/scenarios/" + scenario + "/request.xml", scenario.substr(0, scenario.find('/')));
    }
}

TEST(Schemas, TakeTheResultsOfScenarios) {
    int results = 0;
    for (const std::string& scenario : Scenarios()) {
        const fs::path file = test::SourceFolder() / "tests/scenarios" / scenario / "expected.xml";
        // The empty text after "EMPTY" is no document.
        if (test::ReadText(file).find('<') == std::string::npos) {
            continue;
        }
        std::string words;
        EXPECT_EQ(Validate(file, "result", words), valid) << words;
        ++results;
    }
    EXPECT_GT(results, 0);
}

TEST(Schemas, NameOnlyFilesThatAreThere) {
    for (const auto& [file, reason] : invalid) {
        EXPECT_TRUE(fs::exists(test::SourceFolder() / file)) << file;
    }
}

TEST(Schemas, RefuseAMisspeltElement) {
    const test::TemporaryFolder folder;
    const fs::path file = folder.path() / "request.xml";
    std::ofstream(file) << "<qxinterface roottag=\"subject\" docid=\"\" proc=\"ADD\"><subject><cWhCode>01</cWhCode>"
                           "<cDiffHead>1404</cDiffHead></subject></qxinterface>";
    std::string words;
    EXPECT_EQ(Validate(file, "ClsInvSubject", words), notValid);
    EXPECT_NE(words.find("cDiffHead"), std::string::npos) << words;
}

} // namespace
