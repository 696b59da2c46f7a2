// Statements that would run for ever.

#include "tests/sql/Support.h"

#include <chrono>

namespace test_sql {
namespace {

constexpr const char* expired = "-2147467259: Query timeout expired";
/// A hundred rows with themselves, six times over.
constexpr const char* endless = "select count(*) from t a, t b, t c, t d, t e, t f";

class Timeout : public testing::Test {
protected:
    Timeout() : database_({.file = ":memory:", .batchTime = std::chrono::milliseconds(300)}) {
        database_.Execute("create table t (x int)");
        for (int n = 0; n < 100; ++n) {
            database_.Execute("insert into t values (1)");
        }
    }

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
    // Together they take longer than one may.
    for (int n = 0; n < 60; ++n) {
        EXPECT_EQ(Answer(database_, "select count(*) from t a, t b, t c"), "1000000");
    }
}

} // namespace
} // namespace test_sql
