#pragma once

#include "tests/support/TestAccount.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

// A scenario is a folder tests/scenarios/CLASS/NAME of
//   request.xml     the request, handed to CLASS
//   expected.xml    the result document (blanks between elements do not count); empty for an empty result
//   expected.trace  what the class asks of the database, line for line
//   check.sql, expected.rows   optional: a query, and its rows afterwards as JSON lines
//   expected.windows.xml, .trace, .rows   optional: what stands in place of the file without "windows" where MSXML 3
//                   reads the request by other rules than the native documents
//   setup.sql       optional: batches that fill the account behind those of tests/scenarios/CLASS/setup.sql
//   login.xml       optional: the login in place of tests/scenarios/login.xml; its QxDbName names the file account.db
// All of them are UTF-8.
namespace test {

/// Every scenario's folder, in order of their names.
std::vector<std::filesystem::path> ScenarioFolders();

/// "CLASS_NAME", as the name of a test.
std::string ScenarioName(const testing::TestParamInfo<std::filesystem::path>& info);

/// The file of a scenario's login.
std::filesystem::path LoginFile(const std::filesystem::path& folder);

/// Fills the empty account (host's tables made) of a scenario.
/// @param account `Run(batches)` runs T-SQL batches
template <class Account> void SetUp(const Account& account, const std::filesystem::path& folder) {
    for (const std::filesystem::path& place : {folder.parent_path(), folder}) {
        if (std::filesystem::exists(place / "setup.sql")) {
            account.Run(ReadText(place / "setup.sql"));
        }
    }
}

/// What reads the requests of a run.
enum class Documents {
    native,
    msxml,
};

/// The file of a scenario that says what documents of this kind give: "expected.xml", or "expected.windows.xml" for
/// MSXML where the folder has one; likewise "expected.trace" and "expected.rows".
std::filesystem::path ExpectedFile(const std::filesystem::path& folder, const std::string& extension,
                                   Documents documents);

/// Whether the result document that is expected is the empty text.
bool ExpectsEmptyResult(const std::filesystem::path& folder, Documents documents);

/// Holds what was asked of the database, and the account afterwards, against what the scenario expects.
/// @param trace the trace of the scenario's run
/// @param account `Rows(sql)` gives the rows of a query as JSON lines
template <class Account>
void ExpectStatementsAndRows(const std::filesystem::path& folder, const std::filesystem::path& trace,
                             const Account& account, Documents documents) {
    EXPECT_EQ(OwnLines(trace), ReadLines(ExpectedFile(folder, ".trace", documents)));
    if (std::filesystem::exists(folder / "check.sql")) {
        EXPECT_EQ(account.Rows(ReadText(folder / "check.sql")), ReadLines(ExpectedFile(folder, ".rows", documents)));
    }
}

} // namespace test
