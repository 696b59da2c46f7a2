// Statements that would run for ever.

#include "tests/refhost/sql/Support.h"

#include <chrono>

namespace test_sql {
namespace {

constexpr const char* expired = "-2147217871: Query timeout expired";
/// A hundred rows with themselves, six times over.
constexpr const char* endless = "select count(*) from t a, t b, t c, t d, t e, t f";

constexpr std::chrono::nanoseconds batchTime = std::chrono::milliseconds(300);

class Timeout : public testing::Test {
protected:
    Timeout()
        : database_({.file = ":memory:",
                     .batchTime = std::chrono::duration_cast<std::chrono::milliseconds>(batchTime),
                     .clock = [this] { return Look(); }}) {
        database_.Execute("create table t (x int)");
        for (int n = 0; n < 100; ++n) {
            database_.Execute("insert into t values (1)");
        }
    }

    /// A clock that goes on by a step with each look at it, however long the machine takes.
    std::chrono::steady_clock::time_point Look() {
        ++looks_;
        return now_ += step_;
    }

    int looks_ = 0;
    std::chrono::nanoseconds step_ = batchTime / 5;
    std::chrono::steady_clock::time_point now_;
    refhost::sql::EmbeddedDatabase database_;
};

TEST_F(Timeout, EndsAQuery) {
    EXPECT_EQ(Answer(database_, endless), expired);
    EXPECT_EQ(
        Answer(database_, "select x from t where exists (" + std::string(endless) + ") and x > (" + endless + ")"),
        expired);
    EXPECT_EQ(Answer(database_, "if (" + std::string(endless) + ") > 0 delete t"), expired);
    EXPECT_EQ(Answer(database_, "select count(*) from t"), "100");
}

TEST_F(Timeout, EndsAWriteAndTakesItBack) {
    const std::string condition = " where (" + std::string(endless) + ") > 0";
    EXPECT_EQ(Answer(database_, "delete t" + condition), expired);
    EXPECT_EQ(Answer(database_, "update t set x = 2" + condition), expired);
    EXPECT_EQ(Answer(database_, "insert into t select x from t" + condition), expired);
    EXPECT_EQ(Answer(database_, "select count(*), max(x) from t"), "100 1");
}

TEST_F(Timeout, LeavesATransactionToBeRolledBack) {
    database_.BeginTrans();
    database_.Execute("insert into t values (2)");
    EXPECT_EQ(Answer(database_, endless), expired);
    database_.RollbackTrans();
    EXPECT_EQ(Answer(database_, "select count(*) from t"), "100");
}

TEST_F(Timeout, CountsForEachBatch) {
    constexpr const char* lasting = "select count(*) from t a, t b, t c";
    step_ = {};
    looks_ = 0;
    ASSERT_EQ(Answer(database_, lasting), "1000000");
    ASSERT_GT(looks_, 10);

    // Two of them together take longer than one may.
    step_ = batchTime * 2 / 3 / looks_;
    const auto begin = now_;
    EXPECT_EQ(Answer(database_, lasting), "1000000");
    EXPECT_EQ(Answer(database_, lasting), "1000000");
    EXPECT_GT(now_ - begin, batchTime);
}

} // namespace
} // namespace test_sql
