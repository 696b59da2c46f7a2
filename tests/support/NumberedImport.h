#pragma once

#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "tests/support/TestAccount.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace test {

/// How an operation that ends a transaction is named.
inline constexpr std::string_view commitTrans = "CommitTrans";

/// An import through one of the classes of numbered rows, documents or entries, each of which is accepted, and what
/// number n must have written by the rules. For tests of what becomes of an import that is cut off, repeated or
/// disturbed.
struct NumberedImport {
    const char* className;
    /// The element of number n.
    std::string (*row)(int n);
    /// What stands around the elements inside the request.
    const char* before = "";
    const char* after = "";
    /// The outcome of number n; of the request when it is written at once.
    std::string (*outcome)(int n);
    /// What the imports wrote, in the order of writing.
    const char* query;
    /// The rows of the query's answer that number n wrote, one JSON object each.
    std::vector<std::string> (*written)(int n);
    /// Queries that find what only a half written document leaves; nothing in a sound account.
    std::vector<const char*> halves;
    /// What the operation begins with that makes a number durable: an insert of its own, or the end of a transaction.
    std::string_view commit;
    /// Whether the request is written as a whole or not at all; else each number is.
    bool atOnce = false;
};

/// One of each class, in the classes' usual order.
const std::array<NumberedImport, 6>& NumberedImports();

/// Those that one account takes side by side: all but the opening balances, which a posted voucher puts an end to.
std::vector<NumberedImport> ImportsBesideEachOther();

/// The demonstration company with what the numbers 0 to `count` - 1 of every import ask for.
class NumberedAccount : public TestAccount {
public:
    explicit NumberedAccount(int count);
};

/// A request of the numbers `first` to `last` - 1.
std::string RequestOf(const NumberedImport& import, int first, int last);
/// The result document when each of them is accepted.
std::string AcceptedResult(const NumberedImport& import, int first, int last);
/// What they write, in order.
std::vector<std::string> WrittenBy(const NumberedImport& import, int first, int last);
/// The rows that the import's queries for half written documents find.
std::vector<std::string> Halves(const NumberedImport& import, const TestAccount& account);

/// Runs a request through the import's class in this process.
std::string Transact(const NumberedImport& import, const TestAccount& account, const std::string& request);
std::string Transact(const NumberedImport& import, refhost::Environment& environment, refhost::Login& login,
                     const std::string& request);

void PrintTo(const NumberedImport& import, std::ostream* out);
/// Names parameterized tests after the class.
std::string NameOfImport(const testing::TestParamInfo<NumberedImport>& parameter);

} // namespace test
