// Connections side by side: who waits for whom, and what a waiting one is told.

#include "tests/refhost/sql/DatabaseFiles.h"
#include "tests/refhost/sql/Support.h"

namespace test_sql {
namespace {

using refhost::sql::EmbeddedDatabase;

class Together : public DatabaseFiles {
protected:
    Together() {
        for (auto* db : {one_.get(), two_.get(), other_.get()}) {
            sqlite3_busy_timeout(db->Handle(), 0); // whoever would wait is told at once
        }
        one_->Execute("create table t (id int identity(1,1) primary key, x int not null)");
        one_->Execute("create table QxSystem..s (x int)");
        other_->Execute("create table t (x int)");
    }

    static constexpr const char* locked = "-2147217871: Lock request time out period exceeded.";

    std::unique_ptr<EmbeddedDatabase> one_ = Create("a.db");
    std::unique_ptr<EmbeddedDatabase> two_ = Create("a.db");
    /// Another account, with the same system database.
    std::unique_ptr<EmbeddedDatabase> other_ = Create("b.db");
};

TEST_F(Together, OneAccountDoesNotWaitForAnother) {
    one_->BeginTrans();
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (1)"), "");
    other_->BeginTrans();
    EXPECT_EQ(Answer(*other_, "insert into t values (1)"), "");
    EXPECT_EQ(Answer(*other_, "create table u (x int)"), "");
    EXPECT_EQ(Answer(*other_, "insert into QxSystem..s values (1)"), "");
    // The system database is written by one at a time.
    EXPECT_EQ(Answer(*one_, "insert into QxSystem..s values (2)"), locked);
    EXPECT_EQ(Answer(*one_, "select count(*) from QxSystem..s"), "0");
    other_->CommitTrans();
    one_->CommitTrans();
    EXPECT_EQ(Answer(*one_, "insert into QxSystem..s values (2)"), "");
    EXPECT_EQ(Answer(*one_, "select x from QxSystem..s"), "1 | 2");
}

TEST_F(Together, ATransactionTakesTheRightToWriteItsAccountAtOnce) {
    one_->BeginTrans();
    EXPECT_EQ(Answer(*two_, "begin tran"), locked);
    EXPECT_EQ(Answer(*two_, "insert into t (x) values (1)"), locked);
    EXPECT_EQ(Answer(*two_, "create table u (x int)"), locked);
    EXPECT_EQ(Answer(*two_, "select x from t"), "");
    one_->CommitTrans();
    EXPECT_EQ(Answer(*two_, "begin tran"), "");
    EXPECT_EQ(Answer(*two_, "rollback tran"), "");
}

TEST_F(Together, WhatATransactionReadOfTheSystemDatabaseMayNotChangeBeforeItWritesThere) {
    one_->BeginTrans();
    EXPECT_EQ(Answer(*one_, "select count(*) from QxSystem..s"), "0");
    EXPECT_EQ(Answer(*other_, "insert into QxSystem..s values (1)"), "");
    EXPECT_EQ(Answer(*one_, "insert into QxSystem..s values (2)"),
              "-2147467259: Transaction (Process ID 0) was deadlocked on lock resources with another process and has "
              "been chosen as the deadlock victim. Rerun the transaction.");
    one_->RollbackTrans();
    EXPECT_EQ(Answer(*one_, "insert into QxSystem..s values (2)"), "");
}

TEST_F(Together, IdentityNumbersNeverComeBack) {
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (1), (1)"), "");
    one_->BeginTrans();
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (2)"), "");
    EXPECT_EQ(Answer(*one_, "select @@identity"), "3m");
    one_->RollbackTrans();
    EXPECT_EQ(Answer(*two_, "insert into t (x) values (4)"), "");
    EXPECT_EQ(
        Answer(*two_, "insert into t (x) values (null)"),
        "-2147217873: Cannot insert the value NULL into column 'x', table 'a.dbo.t'; column does not allow nulls. "
        "INSERT fails.");
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (6), (7), (null), (9)").substr(0, 11), "-2147217873");
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (9)"), "");
    EXPECT_EQ(Answer(*two_, "select id, x from t"), "1 1 | 2 1 | 4 4 | 9 9");
}

TEST_F(Together, IdentityNumbersOfFailedInsertsAndSavepointsDoNotComeBackEither) {
    one_->BeginTrans();
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (null)").substr(0, 11), "-2147217873");
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (2)"), "");
    EXPECT_EQ(Answer(*one_, "save transaction s"), "");
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (3)"), "");
    EXPECT_EQ(Answer(*one_, "rollback transaction s"), "");
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (4)"), "");
    EXPECT_EQ(Answer(*one_, "select id, x from t"), "2 2 | 4 4");
    EXPECT_EQ(Answer(*one_, "create table gone (id int identity(5,1), x int)"), "");
    EXPECT_EQ(Answer(*one_, "insert into gone (x) values (1)"), "");
    one_->RollbackTrans();
    EXPECT_EQ(Answer(*one_, "insert into t (x) values (5)"), "");
    EXPECT_EQ(Answer(*one_, "select id, x from t"), "5 5");
    EXPECT_EQ(Answer(*one_, "create table gone (id int identity(5,1), x int)"), "");
    EXPECT_EQ(Answer(*one_, "insert into gone (x) values (1)"), "");
    EXPECT_EQ(Answer(*one_, "select id from gone"), "5");
}

TEST_F(Together, IdentityNumbersEndWithTheirType) {
    for (const char* type : {"tinyint", "smallint", "int"}) {
        const std::string table = std::string("u_") + type;
        const std::string last = std::string(type) == "tinyint" ? "255"
                                 : std::string(type) == "int"   ? "2147483647"
                                                                : "32767";
        one_->Execute("create table " + table + " (id " + type + " identity(1,1), x int)");
        one_->Execute("set identity_insert " + table + " on");
        EXPECT_EQ(Answer(*one_, "insert into " + table + " (id, x) values (" + last + ", 1)"), "");
        one_->Execute("set identity_insert " + table + " off");
        EXPECT_EQ(Answer(*one_, "insert into " + table + " (x) values (2)"),
                  std::string("-2147217833: Arithmetic overflow error converting IDENTITY to data type ") + type + ".");
        EXPECT_EQ(Answer(*one_, "truncate table " + table), "");
        EXPECT_EQ(Answer(*one_, "insert into " + table + " (x) values (2)"), "");
        EXPECT_EQ(Answer(*one_, "select id from " + table), "1");
    }
}

TEST_F(Together, TruncatingBeginsAtTheSeedAgain) {
    one_->Execute("create table u (id int identity(100,1), x int)");
    one_->Execute("insert into u (x) values (1)");
    one_->Execute("truncate table u");
    one_->Execute("insert into u (x) values (1)");
    EXPECT_EQ(Answer(*one_, "select id from u"), "100");
}

TEST_F(Together, NoTextOfSqliteReachesTheCaller) {
    std::string unions = "select 1";
    for (int i = 0; i < 600; ++i) {
        unions += " union all select 1";
    }
    std::string joins = "select 1 from t t0";
    for (int i = 1; i < 70; ++i) {
        joins += fmt::format(" cross join t t{}", i);
    }
    EXPECT_EQ(Answer(*one_, unions), "-2147467259: The embedded account database joins at most 500 queries by UNION, "
                                     "and takes at most 500 rows of a VALUES clause. Split the statement.");
    EXPECT_EQ(Answer(*one_, joins), "-2147467259: The embedded account database joins at most 64 tables in one query.");
    EXPECT_EQ(Answer(*one_, "select count(*) from t where sum(x) > 1").substr(0, 60),
              std::string("-2147217900: An aggregate may not appear in the WHERE clause unless").substr(0, 60));
    std::string nested = "1";
    for (int i = 0; i < 2000; ++i) {
        nested = "(" + nested + "+1)";
    }
    EXPECT_EQ(
        Answer(*one_, "select " + nested),
        "-2147217900: Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into "
        "smaller queries.");
}

} // namespace
} // namespace test_sql
