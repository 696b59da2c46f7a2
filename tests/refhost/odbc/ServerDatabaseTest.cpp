#include "refhost/odbc/ServerDatabase.h"

#include "host/Error.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A server as far as its list of databases goes.
class Server : public refhost::Database {
public:
    Server(std::vector<std::string> databases, bool mayCreate, std::vector<std::string>& executed)
        : databases_(std::move(databases)), mayCreate_(mayCreate), executed_(executed) {}

    refhost::ResultSet Query(std::string_view sql) override {
        refhost::ResultSet id;
        id.fields = std::make_shared<refhost::Fields>(1);
        const bool known = std::ranges::any_of(
            databases_, [&](const std::string& name) { return sql == "SELECT DB_ID(N'" + name + "') AS id"; });
        id.cells.Add(known ? host::Value(5) : host::Value(host::Null{}));
        id.rowCount = 1;
        return id;
    }
    void Execute(std::string_view sql) override {
        if (!mayCreate_) {
            throw host::Error(-2147217911, "CREATE DATABASE permission denied in database 'master'.", 262);
        }
        executed_.emplace_back(sql);
    }
    void BeginTrans() override {}
    void CommitTrans() override {}
    void RollbackTrans() override {}

private:
    std::vector<std::string> databases_;
    bool mayCreate_;
    std::vector<std::string>& executed_;
};

class ServerDatabase : public testing::Test {
protected:
    bool Ensure(std::vector<std::string> databases, bool mayCreate, std::string_view name) {
        refhost::Connection connection(
            [&](const std::string&) { return std::make_unique<Server>(std::move(databases), mayCreate, executed_); });
        connection.Open("DSN=any", "", "", host::command_option::unspecified);
        return refhost::odbc::EnsureDatabase(connection, name);
    }

    std::vector<std::string> executed_;
};

TEST_F(ServerDatabase, IsCreatedWhereItIsMissing) {
    EXPECT_TRUE(Ensure({"master"}, true, "QxSystem"));
    EXPECT_EQ(executed_, std::vector<std::string>{"CREATE DATABASE [QxSystem]"});
}

TEST_F(ServerDatabase, IsLeftAloneWhereItIs) {
    EXPECT_FALSE(Ensure({"master", "QxSystem"}, false, "QxSystem"));
    EXPECT_TRUE(executed_.empty());
}

TEST_F(ServerDatabase, TakesEveryName) {
    EXPECT_TRUE(Ensure({}, true, "年'账]2024"));
    EXPECT_EQ(executed_, std::vector<std::string>{"CREATE DATABASE [年'账]]2024]"});
}

TEST_F(ServerDatabase, TellsThatTheRightToCreateItIsMissing) {
    try {
        Ensure({}, false, "QxSystem");
        FAIL() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), -2147217911);
        EXPECT_EQ(error.native(), 262);
        EXPECT_EQ(error.description(), "The database QxSystem is missing, and this login could not create it: "
                                       "CREATE DATABASE permission denied in database 'master'.");
    }
}

} // namespace
