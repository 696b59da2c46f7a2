// What stands between a connection and its database: everything that is asked gets through.
#include "refhost/ado/LossWatch.h"

#include "host/Error.h"
#include "refhost/ado/ForwardingDatabase.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Notes what it is asked, and then fails as a database whose connection is lost where the test says so.
class Asked : public refhost::Database {
public:
    Asked(std::vector<std::string>& log, const bool& lost) : log_(log), lost_(lost) {}

    refhost::ResultSet Query(std::string_view sql) override {
        Note("query " + std::string(sql));
        return {};
    }
    void Execute(std::string_view sql) override { Note("execute " + std::string(sql)); }
    void RunBatch(std::string_view sql, refhost::TimeLimit, const refhost::BatchSink&) override {
        Note("batch " + std::string(sql));
    }
    void BeginTrans() override { Note("begin"); }
    void CommitTrans() override { Note("commit"); }
    void RollbackTrans() override { Note("rollback"); }
    void BeginSeries() override { Note("begin series"); }
    void EndSeries() override { Note("end series"); }

private:
    void Note(const std::string& what) {
        log_.push_back(what);
        if (lost_) {
            throw refhost::ConnectionLost(host::Error(host::error_number::unspecified, "gone"));
        }
    }

    std::vector<std::string>& log_;
    const bool& lost_;
};

using Operation = void (*)(refhost::Database& database);
const std::vector<std::pair<std::string, Operation>> operations = {
    {"query a", [](refhost::Database& database) { database.Query("a"); }},
    {"execute b", [](refhost::Database& database) { database.Execute("b"); }},
    {"batch c", [](refhost::Database& database) { database.RunBatch("c", std::nullopt, [](refhost::BatchAnswer) {}); }},
    {"begin", [](refhost::Database& database) { database.BeginTrans(); }},
    {"commit", [](refhost::Database& database) { database.CommitTrans(); }},
    {"rollback", [](refhost::Database& database) { database.RollbackTrans(); }},
    {"begin series", [](refhost::Database& database) { database.BeginSeries(); }},
    {"end series", [](refhost::Database& database) { database.EndSeries(); }},
};

TEST(LossWatch, HandsEveryOperationOn) {
    bool lost = false;
    std::vector<std::string> log;
    int told = 0;
    const auto database = refhost::TellingOfLoss([&](const std::string&) { return std::make_unique<Asked>(log, lost); },
                                                 [&](const refhost::ConnectionLost&) { ++told; })("");
    for (const auto& [name, operation] : operations) {
        log.clear();
        operation(*database);
        EXPECT_EQ(log, std::vector<std::string>{name});
    }
    EXPECT_EQ(told, 0);
}

TEST(LossWatch, TellsOfALossAtEveryOperation) {
    bool lost = true;
    std::vector<std::string> log;
    int told = 0;
    const auto database = refhost::TellingOfLoss([&](const std::string&) { return std::make_unique<Asked>(log, lost); },
                                                 [&](const refhost::ConnectionLost&) { ++told; })("");
    int expected = 0;
    for (const auto& [name, operation] : operations) {
        EXPECT_THROW(operation(*database), refhost::ConnectionLost) << name;
        EXPECT_EQ(told, ++expected) << name;
    }
}

TEST(ForwardingDatabase, HandsEveryOperationOn) {
    const bool lost = false;
    std::vector<std::string> log;
    refhost::ForwardingDatabase database(std::make_shared<Asked>(log, lost));
    for (const auto& [name, operation] : operations) {
        log.clear();
        operation(database);
        EXPECT_EQ(log, std::vector<std::string>{name});
    }
}

} // namespace
