#pragma once

#include "tests/support/TestAccount.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

// A scenario is a folder tests/scenarios/CLASS/NAME of
//   setup.sql       batches that fill the empty account (host's tables made)
//   login.xml       the login; its QxDbName names the file account.db
//   request.xml     the request, handed to CLASS
//   expected.xml    the result document (blanks between elements do not count); empty for an empty result
//   expected.trace  what the class asks of the database, line for line
//   check.sql, expected.rows   optional: a query, and its rows afterwards as JSON lines
// All of them are UTF-8.
namespace test {

/// Every scenario's folder, in order of their names.
std::vector<std::filesystem::path> ScenarioFolders();

/// "CLASS_NAME", as the name of a test.
std::string ScenarioName(const testing::TestParamInfo<std::filesystem::path>& info);

/// Whether `expected.xml` says that the result is the empty text.
bool ExpectsEmptyResult(const std::filesystem::path& folder);

/// Holds what was asked of the database, and the account afterwards, against what the scenario expects.
/// @param trace the trace of the scenario's run
void ExpectStatementsAndRows(const std::filesystem::path& folder, const std::filesystem::path& trace,
                             const TestAccount& account);

} // namespace test
