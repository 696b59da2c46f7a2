#pragma once

#include "tests/support/NumberedImport.h"
#include "tests/support/Sanitized.h"

#include <functional>
#include <string>

namespace test {

/// Expects that SQLite finds no damage in the account's files.
void ExpectIntegrity(const TestAccount& account);

/// How many numbers of the import stand in the account. Expects that they are the first ones, in order and each whole,
/// and that nothing is damaged.
int WholeNumbers(const NumberedImport& import, const TestAccount& account);

/// Runs a request through the import's class in a process of its own, where `before` runs first.
std::string TransactApart(const NumberedImport& import, const TestAccount& account, const std::string& request,
                          const std::function<void()>& before);

/// How many of the numbers below `count` the result tells of as accepted: of a row with two outcomes the first counts.
int AcceptedNumbers(const NumberedImport& import, const std::string& result, int count);

/// Expects that the numbers from `present` to `count` - 1 can be imported and all are there then.
void ExpectCanGoOn(const NumberedImport& import, const TestAccount& account, int present, int count);

} // namespace test
