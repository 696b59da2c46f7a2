#include "refhost/odbc/SystemDatabase.h"

#include "host/Error.h"
#include "refhost/ado/Connection.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A server as far as its list of databases goes.
class Server : public refhost::Database {
public:
    Server(bool hasSystemDatabase, bool mayCreate, std::vector<std::string>& executed)
        : hasSystemDatabase_(hasSystemDatabase), mayCreate_(mayCreate), executed_(executed) {}

    refhost::ResultSet Query(std::string_view) override { return {}; }
    void Execute(std::string_view sql) override {
        if (sql == "SELECT name FROM QxSystem..sysobjects WHERE 1=2") {
            if (!hasSystemDatabase_) {
                throw host::Error(-2147217865, "Invalid object name 'QxSystem..sysobjects'.");
            }
            return;
        }
        if (!mayCreate_) {
            throw host::Error(-2147217900, "CREATE DATABASE permission denied in database 'master'.");
        }
        executed_.emplace_back(sql);
    }
    void BeginTrans() override {}
    void CommitTrans() override {}
    void RollbackTrans() override {}

private:
    bool hasSystemDatabase_;
    bool mayCreate_;
    std::vector<std::string>& executed_;
};

class SystemDatabase : public testing::Test {
protected:
    void Ensure(bool hasSystemDatabase, bool mayCreate) {
        refhost::Connection connection(
            [&](const std::string&) { return std::make_unique<Server>(hasSystemDatabase, mayCreate, executed_); });
        connection.Open("DSN=any", "", "", host::command_option::unspecified);
        refhost::odbc::EnsureSystemDatabase(connection);
    }

    std::vector<std::string> executed_;
};

TEST_F(SystemDatabase, IsCreatedWhereItIsMissing) {
    Ensure(false, true);
    EXPECT_EQ(executed_, std::vector<std::string>{"CREATE DATABASE QxSystem"});
}

TEST_F(SystemDatabase, IsLeftAloneWhereItIs) {
    Ensure(true, false);
    EXPECT_TRUE(executed_.empty());
}

TEST_F(SystemDatabase, TellsThatTheRightToCreateItIsMissing) {
    try {
        Ensure(false, false);
        FAIL() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), -2147217900);
        EXPECT_EQ(error.description(), "The system database QxSystem is missing, and this login could not create it: "
                                       "CREATE DATABASE permission denied in database 'master'.");
    }
}

} // namespace
