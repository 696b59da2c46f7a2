#pragma once

#include "ClsKovra/ClsKovra.h"
#include "refhost/eai/Login.h"
#include "refhost/trace/Trace.h"
#include "tests/support/FaultyEnvironment.h"
#include "tests/support/TestAccount.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace test {

/// One call of `AddResultItem`.
struct Outcome {
    std::string key;
    long code = 0;
    std::string description;

    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome);

/// An account whose inventory ledger starts on 2023-01-01 and is open for opening balances, valued by warehouse:
/// warehouse 01 has the full-month average, 02 planned price, 03 retail price, 04 individual pricing. Item A1 is an
/// ordinary one, P1 has the planned or retail price 2.5.
class OpeningTest : public testing::Test {
protected:
    OpeningTest();
    ~OpeningTest() override;

    /// Imports `rows` (XML of row elements named "row") and returns the result text.
    std::string Import(std::string_view rows, std::string_view proc = "ADD");
    /// Imports one row and returns its only outcome.
    Outcome ImportOne(std::string_view row);
    /// Hands a request text to `Transact` as it stands.
    std::string Transact(std::string_view request);

    /// The trace lines of the class itself in the last call, the connection's first.
    std::vector<std::string> Lines() const;
    /// The trace lines of the rows in the last call: what follows the connection and the ledger's seven statements.
    std::vector<std::string> RowLines() const;

    /// Fails the next statement of the class (not of the host) that holds `piece`, after letting `skip` such pass.
    void FailStatement(std::string piece, int skip = 0);

    TestAccount account;
    /// Further attributes of the login.
    std::string loginXml = account.LoginXml();
    /// Runs before each operation of the integration helper.
    std::function<void(std::string_view operation)> beforeHelper;
    /// Every outcome appended in the last call.
    std::vector<Outcome> outcomes;
    /// Every message shown to the user in the last call.
    std::vector<std::string> shown;
    /// Runs on the instance after the call.
    std::function<void(kovra::ClsKovra& instance)> afterwards;

private:
    class Environment;
    Faults MakeFaults() const;

    std::function<void(std::string_view sql)> beforeStatement_;
};

/// The trace line of a look-up.
std::string Opened(std::string_view sql);
/// The trace line of the insert.
std::string Inserted(std::string_view sql);
/// The line of a failed operation.
std::string Failed(std::string line, host::ErrorNumber number);

/// What injected faults raise.
inline constexpr host::ErrorNumber faultNumber = -2147467259;
inline constexpr std::string_view faultText = "[DBNETLIB]ConnectionWrite (send()).";

} // namespace test
