// `kovra account create` against a server whose databases are there.

#include "refhost/OpenDatabase.h"
#include "tests/support/Program.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(AccountOnServer, IsMadeInTheDatabasesThatAreThereAndSaysSo) {
    const test::TemporaryFolder folder;
    const std::string file = "Provider=KovraAccount;Data Source=" + (folder.path() / "account.db").string();
    refhost::OpenEmbeddedDatabase(file, refhost::OpenMode::create);
    const test::TdsServer server(file, {});
    test::WriteBytes(folder.path() / "login.xml",
                     "<login QxDbName=\"" + server.ConnectionString() + "\" cAcc_Id=\"001\"/>");
    const std::vector<std::string> create = {"--lang", "en", "account", "create", "--login", "login.xml", "--demo"};

    test::Ended ended = test::Program(folder.path(), create).Wait();
    EXPECT_EQ(ended.status, 0) << ended.error;
    EXPECT_NE(ended.error.find("the database QxSystem was there already"), std::string::npos) << ended.error;
    EXPECT_NE(ended.error.find("made the calendar table UA_Period in QxSystem"), std::string::npos) << ended.error;
    const auto database = refhost::OpenEmbeddedDatabase(file);
    EXPECT_EQ(database->Query("select * from QxSystem..UA_Period").rowCount, 60U);
    EXPECT_EQ(database->Query("select name from sysobjects where name = 'UA_Period'").rowCount, 0U);
    EXPECT_GT(database->Query("select * from inventory").rowCount, 0U);

    ended = test::Program(folder.path(), create).Wait();
    EXPECT_EQ(ended.status, 1);
    EXPECT_NE(ended.error.find("The database holds an account already."), std::string::npos) << ended.error;
}

} // namespace
