#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/ErrorOf.h"

#include <array>

namespace test_sql {
namespace {

class Integrity : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, Integrity, testing::ValuesIn(Places()), PlaceName);

TEST_P(Integrity, DefinitionsRollBackWithTheirTransaction) {
    Db().Execute("create table kept (x int)");
    Db().BeginTrans();
    EXPECT_EQ(Answer(Db(), "create table t (x int)"), "");
    EXPECT_EQ(Answer(Db(), "insert into t values (1)"), "");
    EXPECT_EQ(Answer(Db(), "alter table kept add y int"), "");
    EXPECT_EQ(Answer(Db(), "insert into kept (y) values (1)"), "");
    EXPECT_EQ(Answer(Db(), "select * from t"), "1");
    EXPECT_EQ(Answer(Db(), "drop table kept"), "");
    Db().RollbackTrans();
    EXPECT_EQ(Answer(Db(), "select * from t"), "-2147217865: Invalid object name 't'.");
    EXPECT_EQ(Answer(Db(), "select * from kept"), "");
    EXPECT_EQ(Answer(Db(), "select y from kept"), "-2147217900: Invalid column name 'y'.");
    // The same shapes on a table of another form.
    EXPECT_EQ(Answer(Db(), "create table t (x nvarchar(5))"), "");
    EXPECT_EQ(Answer(Db(), "insert into t values (1)"), "");
    EXPECT_EQ(Answer(Db(), "select * from t"), "'1'");
    EXPECT_EQ(Answer(Db(), "drop table t"), "");
    EXPECT_EQ(Answer(Db(), "create table t (x int)"), "");
    EXPECT_EQ(Answer(Db(), "insert into t values (1)"), "");
    EXPECT_EQ(Answer(Db(), "select * from t"), "1");
}

TEST_P(Integrity, TransactionsRollBackToTheirSavepoints) {
    Db().Execute("create table t (x int)");
    EXPECT_EQ(Answer(Db(), "save transaction s"),
              "-2147217900: Cannot issue SAVE TRANSACTION when there is no active transaction.");
    Db().BeginTrans();
    EXPECT_EQ(Answer(Db(), "insert into t values (1)"), "");
    EXPECT_EQ(Answer(Db(), "SAVE TRANSACTION [o'ne \"two\"]"), "");
    EXPECT_EQ(Answer(Db(), "insert into t values (2)"), "");
    EXPECT_EQ(Answer(Db(), "alter table t add y int"), "");
    EXPECT_EQ(Answer(Db(), "select y from t where x = 2"), "Null");
    EXPECT_EQ(Answer(Db(), "save tran inner_one"), "");
    EXPECT_EQ(Answer(Db(), "delete t"), "");
    EXPECT_EQ(Answer(Db(), "rollback tran inner_one"), "");
    EXPECT_EQ(Answer(Db(), "select count(*) from t"), "2");
    EXPECT_EQ(Answer(Db(), "ROLLBACK TRANSACTION [o'ne \"two\"]"), "");
    EXPECT_EQ(Answer(Db(), "select * from t"), "1");
    EXPECT_EQ(Answer(Db(), "select y from t"), "-2147217900: Invalid column name 'y'.");
    EXPECT_EQ(Answer(Db(), "rollback transaction nosuch"),
              "-2147217900: Cannot roll back nosuch. No transaction or savepoint of that name was found.");
    // The transaction itself is open still.
    EXPECT_EQ(Answer(Db(), "insert into t values (3)"), "");
    Db().CommitTrans();
    EXPECT_EQ(Answer(Db(), "select count(*) from t"), "2");
    Db().BeginTrans();
    EXPECT_NE(Answer(Db(), "rollback transaction inner_one"), "");
    EXPECT_EQ(Answer(Db(), "save"), "-2147217900: Incorrect syntax near 'save'.");
    EXPECT_EQ(Answer(Db(), "save transaction"), "-2147217900: Incorrect syntax near 'transaction'.");
    Db().RollbackTrans();
}

TEST(Transactions, OpenOnce) {
    const auto db = OpenMemory();
    EXPECT_EQ(test::ErrorNumberOf([&] { db->CommitTrans(); }), -2147168242);
    EXPECT_EQ(test::ErrorNumberOf([&] { db->RollbackTrans(); }), -2147168242);
    db->BeginTrans();
    EXPECT_EQ(test::ErrorNumberOf([&] { db->BeginTrans(); }), -2147168237);
    db->Execute("create table t (x int)");
    // A failed statement leaves the transaction open.
    EXPECT_EQ(test::ErrorNumberOf([&] { db->Execute("insert into t values ('x')"); }), -2147217913);
    db->Execute("insert into t values (1)");
    db->CommitTrans();
    EXPECT_EQ(Answer(*db, "select * from t"), "1");
    EXPECT_EQ(Answer(*db, "begin tran"), "");
    EXPECT_EQ(Answer(*db, "delete t"), "");
    EXPECT_EQ(Answer(*db, "rollback tran"), "");
    EXPECT_EQ(Answer(*db, "select * from t"), "1");
}

TEST_P(Integrity, FailedStatementsWriteNothing) {
    Db().Execute("create table t (x int not null primary key)");
    EXPECT_NE(Answer(Db(), "insert into t values (1), (2), (1)"), "");
    EXPECT_EQ(Answer(Db(), "select count(*) from t"), "0");
    EXPECT_NE(Answer(Db(), "create table u (a int, constraint PK primary key (nosuch))"), "");
    EXPECT_EQ(Answer(Db(), "select count(*) from sysobjects where name = 'u'"), "0");
}

} // namespace
} // namespace test_sql
