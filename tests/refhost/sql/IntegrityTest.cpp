#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/ErrorOf.h"

#include <array>

namespace test_sql {
namespace {

class Integrity : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, Integrity, testing::ValuesIn(Places()), PlaceName);

TEST_P(Integrity, ConstraintsAreNamedAsTheServerNamesThem) {
    Check(std::array{
        Case{"create table t (id int not null, code nvarchar(5) null, n int constraint CK_n check (n > 0), d "
             "nvarchar(3) "
             "not null default N'dd', constraint PK_t primary key (id), constraint UQ_t unique (code, n))",
             ""},
        Case{"insert into t (id, code, n) values (1, 'a', 1)", ""},
        Case{"insert into t (id, code, n) values (1, 'b', 1)",
             "-2147217873: Violation of PRIMARY KEY constraint 'PK_t'. Cannot insert duplicate key in object "
             "'dbo.t'. The "
             "duplicate key value is (1)."},
        Case{"insert into t (id, code, n) values (2, 'A ', 1)",
             "-2147217873: Violation of UNIQUE KEY constraint 'UQ_t'. Cannot insert duplicate key in object "
             "'dbo.t'. The "
             "duplicate key value is (A , 1)."},
        Case{"insert into t (code) values ('c')", "-2147217873: Cannot insert the value NULL into column 'id', "
                                                  "table 'account.dbo.t'; column does not allow nulls. "
                                                  "INSERT fails."},
        Case{"update t set id = Null",
             "-2147217873: Cannot insert the value NULL into column 'id', table 'account.dbo.t'; "
             "column does not allow nulls. "
             "UPDATE fails."},
        Case{"insert into t (id, n) values (3, 0)", "-2147217873: The INSERT statement conflicted with the CHECK "
                                                    "constraint \"CK_n\". The conflict occurred in "
                                                    "database \"account\", table \"dbo.t\", column 'n'."},
        Case{"insert into t (id, n) values (3, Null)", ""},
        // One Null equals another in a unique key.
        Case{"insert into t (id, n) values (4, Null)", "-2147217873: Violation of UNIQUE KEY constraint 'UQ_t'. "
                                                       "Cannot insert duplicate key in object 'dbo.t'. The "
                                                       "duplicate key value is (<NULL>, <NULL>)."},
        Case{"create unique index ix on t (d)", "-2147217873: The CREATE UNIQUE INDEX statement terminated because "
                                                "a duplicate key was found for the object "
                                                "name 'dbo.t' and the index name 'ix'."},
        Case{"select id, d from t", "1 'dd' | 3 'dd'"},
        Case{"create table t (x int)", "-2147217900: There is already an object named 't' in the database."},
        Case{"create table u (x int, X int)", "-2147217900: Column names in each table must be unique. Column name "
                                              "'X' in table 'u' is specified more than "
                                              "once."},
        Case{"drop table nosuch", "-2147217865: Cannot drop the table 'nosuch', because it does not exist or you "
                                  "do not have permission."},
        Case{"insert into t (id, id) values (1, 2)", "-2147217900: The column name 'id' is specified more than "
                                                     "once in the SET clause or column list of an INSERT. "
                                                     "A column cannot be assigned more than one value in the same "
                                                     "clause. Modify the clause to make sure that a "
                                                     "column is updated only once. If this statement updates or "
                                                     "inserts columns to a view, column aliasing can "
                                                     "conceal the duplication in your code."},
        Case{"insert into t (id, code) values (1)", "-2147217900: There are more columns in the INSERT statement "
                                                    "than values specified in the VALUES clause. The "
                                                    "number of values in the VALUES clause must match the number "
                                                    "of columns specified in the INSERT statement."},
        Case{"insert into t values (1)",
             "-2147217900: Column name or number of supplied values does not match table definition."},
    });
}

TEST_P(Integrity, IdentityNumbersNeverReturn) {
    Check(std::array{
        Case{"create table t (id int identity(1,1) not null primary key, x int)", ""},
        Case{"insert into t (x) values (1), (2)", ""},
        Case{"select @@identity, scope_identity()", "2m 2m"},
        Case{"delete t where id = 2", ""},
        Case{"insert into t values (3)", ""},
        Case{"select id, x from t", "1 1 | 3 3"},
        Case{"insert into t (id, x) values (9, 9)",
             "-2147217873: Cannot insert explicit value for identity column in table 't' when IDENTITY_INSERT "
             "is set to OFF."},
        Case{"set identity_insert t on", ""},
        Case{"insert into t (id, x) values (9, 9)", ""},
        Case{"insert into t (id, x) values (9, 9)",
             "-2147217873: Violation of PRIMARY KEY constraint 'PK__t__75D7831F'. Cannot insert duplicate key in "
             "object 'dbo.t'. The duplicate key value is (9)."},
        Case{"set identity_insert t off", ""},
        Case{"insert into t default values", ""},
        Case{"select id from t order by id", "1 | 3 | 9 | 10"},
        Case{"update t set id = 5", "-2147217900: Cannot update identity column 'id'."},
        Case{"create table s (id int identity(100,1), x int)", ""},
        Case{"insert into s (x) values (1)", ""},
        Case{"select id from s", "100"},
    });
}

TEST_P(Integrity, RowVersionsChangeWithEveryWrite) {
    Check(std::array{
        Case{"create table t (id int, x int, ts timestamp)", ""},
        Case{"create table u (id int, ts rowversion)", ""},
        Case{"insert into t (id) values (1), (2)", ""},
        Case{"insert into u (id) select id from t", ""},
        Case{"select id, ts from t", "1 0x00000000000007D1 | 2 0x00000000000007D2"},
        Case{"select id, ts from u", "1 0x00000000000007D3 | 2 0x00000000000007D4"},
        Case{"update t set x = 1 where id = 1", ""},
        Case{"update t set x = 1 where id = 7", ""},
        Case{"select id, ts from t", "1 0x00000000000007D5 | 2 0x00000000000007D2"},
        Case{"select id from t where ts > 0x00000000000007D2", "1"},
        Case{"select cast(ts as bigint), cast(ts as money) from t where id = 2", "2002 0.2002m"},
        Case{"insert into t (id, ts) values (3, 0x01)",
             "-2147217900: Cannot insert an explicit value into a timestamp column. Use INSERT with a column list "
             "to exclude the timestamp column, or insert a DEFAULT into the timestamp column."},
        Case{"insert into t values (3, 3, default)", ""},
        Case{"update t set ts = 0x01", "-2147217900: Cannot update a timestamp column."},
    });
}

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
