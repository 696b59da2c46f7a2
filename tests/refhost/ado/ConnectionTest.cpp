// What a connection does with the transaction that it is released in.

#include "refhost/ado/Connection.h"

#include "host/Error.h"

#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A database that notes what it is asked and fails to roll back in one of several ways.
class Rolling : public refhost::Database {
public:
    using Fail = void (*)();

    Rolling(std::vector<std::string>& log, Fail fail) : log_(log), fail_(fail) {}
    ~Rolling() override { log_.emplace_back("closed"); }
    Rolling(const Rolling&) = delete;
    Rolling& operator=(const Rolling&) = delete;

    refhost::ResultSet Query(std::string_view) override { return {}; }
    void Execute(std::string_view) override {}
    void BeginTrans() override { log_.emplace_back("begin"); }
    void CommitTrans() override { log_.emplace_back("commit"); }
    void RollbackTrans() override {
        log_.emplace_back("rollback");
        fail_();
    }

private:
    std::vector<std::string>& log_;
    Fail fail_;
};

TEST(ConnectionRelease, RollsBackAndClosesWhateverTheRollbackThrows) {
    const std::vector<Rolling::Fail> fails = {
        [] {},
        [] { throw host::Error(host::error_number::unspecified, "no more"); },
        [] { throw std::bad_alloc(); },
    };
    for (const Rolling::Fail fail : fails) {
        std::vector<std::string> log;
        {
            refhost::Connection connection([&](const std::string&) { return std::make_unique<Rolling>(log, fail); });
            connection.Open("", "", "", host::command_option::unspecified);
            connection.BeginTrans();
        }
        EXPECT_EQ(log, (std::vector<std::string>{"begin", "rollback", "closed"}));
    }
}

TEST(ConnectionRelease, LeavesAnEndedTransactionAlone) {
    std::vector<std::string> log;
    {
        refhost::Connection connection([&](const std::string&) { return std::make_unique<Rolling>(log, [] {}); });
        connection.Open("", "", "", host::command_option::unspecified);
        connection.BeginTrans();
        connection.CommitTrans();
    }
    EXPECT_EQ(log, (std::vector<std::string>{"begin", "commit", "closed"}));
}

} // namespace
