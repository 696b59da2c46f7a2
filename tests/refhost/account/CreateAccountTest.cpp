#include "host/Error.h"
#include "refhost/OpenDatabase.h"
#include "refhost/account/Account.h"
#include "refhost/ado/Connection.h"
#include "tests/support/TestAccount.h"

#include <memory>
#include <string>

#include <gmock/gmock.h>

namespace refhost {

namespace {

class CreateAccountTest : public testing::Test {
protected:
    std::unique_ptr<Connection> OpenFile(const std::string& name) {
        auto connection = std::make_unique<Connection>(OpenOrCreate());
        connection->Open("Provider=KovraAccount;Data Source=" + (folder.path() / name).string(), "", "",
                         host::command_option::unspecified);
        return connection;
    }

    static std::size_t Count(Connection& connection, std::string_view sql) {
        return connection.database().Query(sql).rowCount;
    }

    test::TemporaryFolder folder;
};

TEST_F(CreateAccountTest, WithoutDemoMakesEmptyTables) {
    const auto connection = OpenFile("a.db");
    CreateAccount(*connection, "001", false);
    EXPECT_EQ(Count(*connection, "SELECT cInvCode FROM inventory"), 0U);
    EXPECT_EQ(Count(*connection, "SELECT cAcc_ID FROM QxSystem..UA_Period"), 0U);
    EXPECT_EQ(Count(*connection, "SELECT CardNumber FROM Vouchers_base WHERE CardNumber = N'IA51'"), 1U);
}

TEST_F(CreateAccountTest, RefusesADatabaseThatHoldsAnAccountAndLeavesItWhole) {
    const auto connection = OpenFile("a.db");
    CreateAccount(*connection, "001", true);
    const std::size_t items = Count(*connection, "SELECT cInvCode FROM inventory");
    try {
        CreateAccount(*connection, "001", true);
        FAIL() << "a second account was made";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.description(), "The database holds an account already.");
    }
    EXPECT_EQ(Count(*connection, "SELECT cInvCode FROM inventory"), items);
}

TEST_F(CreateAccountTest, AccountsInOneFolderShareTheCalendar) {
    CreateAccount(*OpenFile("a.db"), "001", true);
    const auto second = OpenFile("b.db");
    CreateAccount(*second, "002", true);
    EXPECT_EQ(Count(*second, "SELECT iId FROM QxSystem..UA_Period WHERE cAcc_ID = N'001'"), 60U);
    EXPECT_EQ(Count(*second, "SELECT iId FROM QxSystem..UA_Period WHERE cAcc_ID = N'002'"), 60U);
}

TEST_F(CreateAccountTest, ReplacesTheCalendarOfAnAccountOfTheSameId) {
    CreateAccount(*OpenFile("a.db"), "001", true);
    const auto second = OpenFile("b.db");
    CreateAccount(*second, "001", true);
    EXPECT_EQ(Count(*second, "SELECT iId FROM QxSystem..UA_Period"), 60U);
}

TEST_F(CreateAccountTest, TakesAnAccountIdWithAnApostrophe) {
    const auto connection = OpenFile("a.db");
    CreateAccount(*connection, "O'1", true);
    EXPECT_EQ(Count(*connection, "SELECT iId FROM QxSystem..UA_Period WHERE cAcc_ID = N'O''1'"), 60U);
}

TEST_F(CreateAccountTest, MakesNothingWhenAStatementFails) {
    const auto connection = OpenFile("a.db");
    connection->Execute("CREATE TABLE ItemBudget (x int)", host::command_option::unspecified);
    EXPECT_THROW(CreateAccount(*connection, "001", true), host::Error);
    EXPECT_THROW(Count(*connection, "SELECT cSysID FROM AccInformation"), host::Error);
    EXPECT_THROW(Count(*connection, "SELECT cAcc_ID FROM QxSystem..UA_Period"), host::Error);

    connection->Execute("DROP TABLE ItemBudget", host::command_option::unspecified);
    CreateAccount(*connection, "001", true);
    EXPECT_EQ(Count(*connection, "SELECT cAcc_ID FROM QxSystem..UA_Period"), 60U);
}

} // namespace

} // namespace refhost
