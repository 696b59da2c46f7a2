// `kovra account create` on a server of several databases: over the wire with the real FreeTDS, and behind the tests'
// ODBC driver.

#include "refhost/OpenDatabase.h"
#include "tests/support/Paths.h"
#include "tests/support/Program.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

enum class Way { freeTds, driver };

class AccountOnServer : public testing::TestWithParam<Way> {
protected:
    AccountOnServer() {
        if (GetParam() == Way::freeTds) {
            server_.emplace("", test::TdsServer::Manners{.databases = folder_.path()});
        }
    }

    std::string ConnectionString(const std::string& database) const {
        return (server_ ? server_->ConnectionString()
                        : "Driver=" + test::OdbcDriverPath() + ";Databases=" + folder_.path().string()) +
               (database.empty() ? "" : ";Database=" + database);
    }

    std::unique_ptr<refhost::Database> Open(const std::string& database) const {
        return refhost::OpenDatabase(ConnectionString(database));
    }
    void CreateDatabase(const std::string& name) const { Open("")->Execute("CREATE DATABASE [" + name + "]"); }

    /// Runs the program on a login into `database`, which may be none.
    test::Ended Kovra(const std::string& database, std::vector<std::string> arguments) const {
        test::WriteBytes(folder_.path() / "login.xml", "<login QxDbName=\"" + ConnectionString(database) +
                                                           "\" cAcc_Id=\"001\" cIYear=\"2024\" cUserId=\"demo\" "
                                                           "CurDate=\"2024-01-15\"/>");
        arguments.insert(arguments.begin(), {"--lang", "en"});
        return test::Program(folder_.path(), std::move(arguments)).Wait();
    }
    test::Ended CreateAccount(const std::string& database, const std::vector<std::string>& more) const {
        std::vector<std::string> arguments = {"account", "create", "--login", "login.xml"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Kovra(database, std::move(arguments));
    }

    static std::int64_t Number(refhost::Database& database, const std::string& sql) {
        const refhost::ResultSet result = database.Query(sql);
        EXPECT_EQ(result.cells.size(), 1U) << sql;
        return *result.cells[0].As<std::int64_t>();
    }

    /// Expects the demonstration company in `database`, with nothing of the calendar, which QxSystem has.
    void ExpectCompanyIn(const std::string& database) const {
        const auto account = Open(database);
        EXPECT_GT(Number(*account, "select count(*) from inventory"), 0);
        EXPECT_EQ(Number(*account, "select count(*) from sysobjects where name = 'UA_Period'"), 0);
        EXPECT_EQ(Number(*account, "select count(*) from QxSystem..UA_Period where cAcc_ID = '001'"), 60);
        const auto system = Open("QxSystem");
        EXPECT_EQ(Number(*system, "select count(*) from sysobjects where type = 'U'"), 1);
    }

    static void ExpectToldOf(const test::Ended& ended, const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            EXPECT_NE(ended.error.find(line), std::string::npos) << line << " is not in:\n" << ended.error;
        }
    }

    test::TemporaryFolder folder_;
    std::optional<test::TdsServer> server_;
};

INSTANTIATE_TEST_SUITE_P(Through, AccountOnServer, testing::Values(Way::freeTds, Way::driver),
                         [](const auto& way) { return way.param == Way::freeTds ? "FreeTds" : "Driver"; });

TEST_P(AccountOnServer, MakesBothDatabasesOnAnEmptyServer) {
    const test::Ended ended = CreateAccount("", {"--database", "erp_001", "--demo"});
    EXPECT_EQ(ended.status, 0) << ended.error;
    ExpectToldOf(ended, {"created the database erp_001\n", "created the database QxSystem\n",
                         "made the calendar table UA_Period in QxSystem\n",
                         "now put Database=erp_001 into the login's QxDbName\n"});
    ExpectCompanyIn("erp_001");
}

TEST_P(AccountOnServer, FillsAnEmptySystemDatabase) {
    CreateDatabase("QxSystem");
    const test::Ended ended = CreateAccount("", {"--database", "erp_001", "--demo"});
    EXPECT_EQ(ended.status, 0) << ended.error;
    ExpectToldOf(ended, {"created the database erp_001\n", "the database QxSystem was there already\n",
                         "made the calendar table UA_Period in QxSystem\n"});
    ExpectCompanyIn("erp_001");
}

/// The second account of a server: the first one's periods stay, and those of its own number are replaced.
TEST_P(AccountOnServer, KeepsACalendarThatIsThere) {
    ASSERT_EQ(CreateAccount("", {"--database", "erp_001", "--demo"}).status, 0);
    const auto system = Open("QxSystem");
    system->Execute("insert into UA_Period (cAcc_ID, iYear, iId, dBegin) values ('007', 2024, 1, '2024-01-01')");
    system->Execute("insert into UA_Period (cAcc_ID, iYear, iId, dBegin) values ('001', 1999, 1, '1999-01-01')");

    const test::Ended ended = CreateAccount("", {"--database", "erp_002", "--demo"});
    EXPECT_EQ(ended.status, 0) << ended.error;
    ExpectToldOf(ended, {"created the database erp_002\n", "the database QxSystem was there already\n",
                         "QxSystem had a calendar table UA_Period already: it was kept\n"});
    ExpectCompanyIn("erp_002");
    EXPECT_EQ(Number(*system, "select count(*) from UA_Period where cAcc_ID = '007'"), 1);
    EXPECT_EQ(Number(*system, "select count(*) from UA_Period where iYear = 1999"), 0);
}

TEST_P(AccountOnServer, IsMadeInADatabaseThatIsThere) {
    CreateDatabase("erp_001");
    const test::Ended ended = CreateAccount("", {"--database", "erp_001", "--demo"});
    EXPECT_EQ(ended.status, 0) << ended.error;
    ExpectToldOf(ended, {"the database erp_001 was there already\n", "created the database QxSystem\n"});
    ExpectCompanyIn("erp_001");
}

TEST_P(AccountOnServer, IsMadeInTheLoginsDatabaseWhereNoneIsNamed) {
    CreateDatabase("erp_001");
    const test::Ended ended = CreateAccount("erp_001", {"--demo"});
    EXPECT_EQ(ended.status, 0) << ended.error;
    ExpectToldOf(ended, {"created the database QxSystem\n"});
    EXPECT_EQ(ended.error.find("erp_001"), std::string::npos) << ended.error;
    ExpectCompanyIn("erp_001");
}

TEST_P(AccountOnServer, IsNotMadeInTheServersOwnDatabase) {
    const test::Ended ended = CreateAccount("", {"--demo"});
    EXPECT_EQ(ended.status, 2) << ended.error;
    ExpectToldOf(ended, {"no account is made in the server's own database master: give --database NAME"});
    EXPECT_FALSE(exists(folder_.path() / "QxSystem.db"));
}

TEST_P(AccountOnServer, LeavesAnAccountThatIsThereAsItIs) {
    ASSERT_EQ(CreateAccount("", {"--database", "erp_001"}).status, 0);
    const auto account = Open("erp_001");
    account->Execute("insert into Warehouse (cWhCode) values ('99')");
    const test::Ended ended = CreateAccount("", {"--database", "erp_001", "--demo"});
    EXPECT_EQ(ended.status, 1);
    ExpectToldOf(ended, {"The database holds an account already."});
    EXPECT_EQ(Number(*account, "select count(*) from Warehouse"), 1);
    EXPECT_EQ(Number(*account, "select count(*) from QxSystem..UA_Period"), 0);
}

/// The way of the documentation, from an empty server on.
TEST_P(AccountOnServer, TakesTheFirstImport) {
    ASSERT_EQ(CreateAccount("", {"--database", "erp_001", "--demo"}).status, 0);
    const test::Ended ended = Kovra("erp_001", {"transact", "--class", "ClsInvSubject", "--login", "login.xml",
                                                (test::SourceFolder() / "examples/inventory-settings.xml").string()});
    EXPECT_NE(ended.output.find("code=\"0\" dsc=\"ok\""), std::string::npos) << ended.output << ended.error;
    EXPECT_GT(Number(*Open("erp_001"), "select count(*) from IA_HeadSet"), 0);
}

TEST(AccountOnServerWithoutTheRight, SaysSoAndChangesNothing) {
    const test::TemporaryFolder folder;
    const test::TdsServer server("", {.databases = folder.path(), .mayCreate = false});
    test::WriteBytes(folder.path() / "login.xml",
                     "<login QxDbName=\"" + server.ConnectionString() + "\" cAcc_Id=\"001\"/>");
    const test::Ended ended = test::Program(folder.path(), {"--lang", "en", "account", "create", "--login", "login.xml",
                                                            "--database", "erp_001", "--demo"})
                                  .Wait();
    EXPECT_EQ(ended.status, 1);
    EXPECT_NE(ended.error.find("-2147217911: The database erp_001 is missing, and this login could not create it: "
                               "CREATE DATABASE permission denied in database 'master'."),
              std::string::npos)
        << ended.error;
    EXPECT_FALSE(exists(folder.path() / "erp_001.db"));
    EXPECT_FALSE(exists(folder.path() / "QxSystem.db"));
}

} // namespace
