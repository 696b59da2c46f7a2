// Whole batches, as a client tool sends them.

#include "tests/sql/Support.h"

#include <string>
#include <variant>

namespace test_sql {
namespace {

TEST(Batch, GivesEachResultSetByItself) {
    const auto db = OpenMemory();
    EXPECT_EQ(Batch(*db, "if 1=1 begin select 3 c select 1 a, 2 b end"), "rows(c) 3; rows(a,b) 1 2");
    EXPECT_EQ(Batch(*db, "select 1 a, 2 b; select 3 c"), "rows(a,b) 1 2; rows(c) 3");
}

TEST(Batch, OpensARecordsetOnTheFirstOfSeveralResultSets) {
    const auto db = OpenMemory();
    const refhost::ResultSet first = db->Query("if 1=1 begin select 3 c select 1 a, 2 b end");
    ASSERT_EQ(first.fields->size(), 1U);
    EXPECT_EQ(first.fields->front().name, "c");
    EXPECT_EQ(first.rowCount, 1U);
    EXPECT_EQ(Answer(*db, "if 1=1 begin select 3 c select 1 a, 2 b end"), "3");
}

TEST(Batch, TellsHowManyRowsAStatementWrote) {
    const auto db = OpenMemory();
    db->Execute("create table t (a int)");
    EXPECT_EQ(Batch(*db, "insert into t values (1), (2) select a from t update t set a = 5 where a = 2 delete t"),
              "2 written; rows(a) 1 | 2; 1 written; 2 written");
}

TEST(Batch, HandsOverWhatCameBeforeAnError) {
    const auto db = OpenMemory();
    EXPECT_EQ(Batch(*db, "select 1 a select * from nowhere"), "rows(a) 1; -2147217865: Invalid object name 'nowhere'.");
}

TEST(Batch, RunsNothingOfABatchThatCannotBeRead) {
    const auto db = OpenMemory();
    db->Execute("create table t (a int)");
    EXPECT_EQ(Batch(*db, "insert into t values (1) selec 1"), "-2147217900: Incorrect syntax near 'selec'.");
    EXPECT_EQ(Answer(*db, "select count(*) from t"), "0");
}

TEST(Batch, IsOneStatementWhereAClassSendsIt) {
    const auto db = OpenMemory();
    EXPECT_EQ(Answer(*db, "select 1 a; select 3 c"), "-2147217900: Incorrect syntax near the keyword 'select'.");
}

} // namespace
} // namespace test_sql
