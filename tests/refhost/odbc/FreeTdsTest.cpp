// What a user meets who cannot reach a SQL Server, on the real FreeTDS driver.

#include "host/Error.h"
#include "refhost/odbc/OdbcDatabase.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"
#include "tests/support/ValuesOf.h"

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

host::Error ConnectError(const std::string& connectionString, refhost::odbc::TimeLimits limits = {}) {
    try {
        refhost::odbc::OpenOdbc(connectionString, limits);
    } catch (const host::Error& error) {
        return error;
    }
    return {0, "connected"};
}

TEST(FreeTds, ReportsAServerThatNobodyListensOn) {
    // Port 1 of this machine: nobody listens there.
    const host::Error error =
        ConnectError("Driver=FreeTDS;Server=127.0.0.1;Port=1;TDS_Version=7.4;Uid=u;Pwd=verysecret");
    EXPECT_EQ(error.number(), host::error_number::unspecified);
    EXPECT_FALSE(error.description().empty());
    EXPECT_FALSE(error.description().starts_with("[")) << error.description();
    EXPECT_EQ(error.description().find("verysecret"), std::string::npos) << error.description();
}

TEST(FreeTds, ReportsADriverThatIsNotInstalled) {
    const host::Error error = ConnectError("Driver=No Such Driver;Server=127.0.0.1;Pwd=verysecret");
    EXPECT_EQ(error.number(), host::error_number::unspecified);
    EXPECT_NE(error.description().find("No Such Driver"), std::string::npos) << error.description();
    EXPECT_EQ(error.description().find("verysecret"), std::string::npos) << error.description();
}

TEST(FreeTds, ReportsADataSourceThatIsNotDefined) {
    const host::Error error = ConnectError("DSN=no-such-source");
    EXPECT_EQ(error.number(), host::error_number::unspecified);
    EXPECT_NE(error.description().find("Data source name not found"), std::string::npos) << error.description();
}

TEST(FreeTds, ReportsARefusedLoginWithTheServersOwnText) {
    const test::TdsServer server({}, {.refuseLogin = true});
    const host::Error error = ConnectError(server.ConnectionString());
    EXPECT_EQ(error.number(), -2147217843);
    EXPECT_EQ(error.description(), "Login failed for user 'kovra'.");
}

TEST(FreeTds, ReportsALostConnectionAndStaysSound) {
    const test::TdsServer server({}, {.hangUpAt = "select 1"});
    const std::unique_ptr<refhost::Database> database = refhost::odbc::OpenOdbc(server.ConnectionString());
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            database->Execute("select 1");
            FAIL() << "a statement without a server";
        } catch (const host::Error& error) {
            EXPECT_EQ(error.number(), host::error_number::unspecified);
            EXPECT_FALSE(error.description().empty());
        }
    }
}

TEST(FreeTds, EndsALoginThatNobodyAnswers) {
    const test::TdsServer server({}, {.muteLogin = true});
    const host::Error error = ConnectError(server.ConnectionString(), {.connect = std::chrono::seconds(1)});
    EXPECT_EQ(error.number(), host::error_number::unspecified);
    EXPECT_EQ(error.description(), "Timeout expired");
}

TEST(FreeTds, CancelsAStatementThatHasHadItsTime) {
    const test::TestAccount account;
    const test::TdsServer server(account.connectionString(), {.muteAt = "endless"});
    const std::unique_ptr<refhost::Database> database =
        refhost::odbc::OpenOdbc(server.ConnectionString(), {.statement = std::chrono::seconds(1)});
    try {
        database->Execute("select 'endless'");
        FAIL() << "answered";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), -2147217871);
        EXPECT_EQ(error.description(), "Timeout expired");
    }
    EXPECT_EQ(server.Cancelled(), 1);
    // The connection goes on. This statement has as long as it likes.
    std::vector<host::Value> cells;
    database->RunBatch("select 7 as n", std::nullopt, [&](const refhost::BatchAnswer& answer) {
        if (const auto* rows = std::get_if<refhost::ResultSet>(&answer))
            cells = test::ValuesOf(*rows);
    });
    EXPECT_EQ(cells, std::vector<host::Value>{host::Value(7)});
}

} // namespace
