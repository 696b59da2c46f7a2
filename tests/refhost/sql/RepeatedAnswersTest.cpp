// A look-up of a series that repeats is answered from what it answered before: each must answer what it would if it
// ran.

#include "tests/refhost/sql/Support.h"
#include "tests/support/TestAccount.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace test_sql {
namespace {

using refhost::sql::EmbeddedDatabase;
using refhost::sql::Mode;
using refhost::sql::OpenEmbedded;

constexpr const char* look = "select y from t where x = 1";

void Fill(EmbeddedDatabase& db) {
    db.Execute("create table t (x int, y nvarchar(20))");
    db.Execute("create table u (x int)");
    db.Execute("create view v as select x, y from t");
    db.Execute("insert into t values (1, N'one')");
    db.Execute("insert into t values (2, N'two')");
}

class RepeatedAnswers : public testing::Test {
protected:
    RepeatedAnswers() {
        Fill(*db_);
        db_->BeginSeries();
        // From the second time on an answer is kept.
        for (int time = 1; time <= 2; ++time) {
            EXPECT_EQ(Answer(*db_, look), "'one'");
        }
    }
    /// How many statements SQLite runs for some work.
    int Runs(const std::function<void()>& work) const {
        const auto sum = [this] {
            int runs = 0;
            for (sqlite3_stmt* at = sqlite3_next_stmt(db_->Handle(), nullptr); at != nullptr;
                 at = sqlite3_next_stmt(db_->Handle(), at)) {
                runs += sqlite3_stmt_status(at, SQLITE_STMTSTATUS_RUN, 0);
            }
            return runs;
        };
        const int before = sum();
        work();
        return sum() - before;
    }

    std::unique_ptr<EmbeddedDatabase> db_ = OpenMemory();
};

TEST_F(RepeatedAnswers, ALookUpThatRepeatsIsNotRun) {
    EXPECT_EQ(Runs([&] {
                  EXPECT_EQ(Answer(*db_, look), "'one'");
                  EXPECT_EQ(Answer(*db_, look), "'one'");
              }),
              0);
}

TEST_F(RepeatedAnswers, ALookUpRunsTwiceBeforeItsAnswerIsKept) {
    const auto ask = [this] { EXPECT_EQ(Answer(*db_, "select y from t where x = 2"), "'two'"); };
    EXPECT_EQ(Runs(ask), 1);
    EXPECT_EQ(Runs(ask), 1);
    EXPECT_EQ(Runs(ask), 0);
    EXPECT_EQ(Runs(ask), 0);
}

TEST_F(RepeatedAnswers, OtherValuesHaveAnswersOfTheirOwn) {
    for (int time = 1; time <= 3; ++time) {
        EXPECT_EQ(Answer(*db_, look), "'one'");
        EXPECT_EQ(Answer(*db_, "select y from t where x = 2"), "'two'");
        EXPECT_EQ(Answer(*db_, "select y from t where x = 3"), "");
        EXPECT_EQ(Answer(*db_, "select x from t where y = N'one'"), "1");
        EXPECT_EQ(Answer(*db_, "select x from t where y = N'two'"), "2");
    }
}

TEST_F(RepeatedAnswers, AWriteToTheTableIsSeen) {
    const std::vector<Case> cases = {
        {look, "'one'"},
        {"insert into t values (1, N'uno')", ""},
        {look, "'one' | 'uno'"},
        {"update t set y = N'un' where y = N'uno'", ""},
        {look, "'one' | 'un'"},
        {"delete from t where y = N'un'", ""},
        {look, "'one'"},
        {"insert into t (x, y) output inserted.x values (1, N'eins')", "1"},
        {look, "'one' | 'eins'"},
        {"merge t using (select 1 as x) s on t.x = s.x and t.y = N'eins' when matched then update set y = N'uno';", ""},
        {look, "'one' | 'uno'"},
        {"if exists (select 1 from t) begin delete from t where y = N'uno' end", ""},
        {look, "'one'"},
        {"truncate table t", ""},
        {look, ""},
    };
    RunCases(*db_, cases);
}

TEST_F(RepeatedAnswers, WhatAddsUpRowsIsKeptLikeThem) {
    db_->Execute("create table stock (quantity float)");
    db_->Execute("insert into stock values (1.5)");
    db_->Execute("insert into stock values (2)");
    const auto ask = [this](const char* answer) {
        EXPECT_EQ(Answer(*db_, "select sum(quantity), max(quantity), min(quantity) from stock"), answer);
    };
    for (int time = 1; time <= 2; ++time) {
        ask("3.5r 2r 1.5r");
    }
    EXPECT_EQ(Runs([&] { ask("3.5r 2r 1.5r"); }), 0);
    EXPECT_EQ(Answer(*db_, "insert into stock values (4)"), "");
    ask("7.5r 4r 1.5r");
}

TEST_F(RepeatedAnswers, AWriteThroughAViewAndAReadThroughOneAreSeen) {
    const char* throughView = "select y from v where x = 1";
    for (int time = 1; time <= 3; ++time) {
        EXPECT_EQ(Answer(*db_, throughView), "'one'");
    }
    EXPECT_EQ(Answer(*db_, "insert into t values (1, N'uno')"), "");
    EXPECT_EQ(Answer(*db_, throughView), "'one' | 'uno'");
    EXPECT_EQ(Answer(*db_, look), "'one' | 'uno'");
    EXPECT_EQ(Answer(*db_, "insert into v values (1, N'un')"), "");
    EXPECT_EQ(Answer(*db_, look), "'one' | 'uno' | 'un'");
}

TEST_F(RepeatedAnswers, AnInsertIntoAnotherTableLeavesTheAnswer) {
    EXPECT_EQ(Answer(*db_, "insert into u values (1)"), "");
    EXPECT_EQ(Answer(*db_, look), "'one'");
    EXPECT_EQ(Runs([&] {
                  EXPECT_EQ(Answer(*db_, "insert into u values (1)"), "");
                  EXPECT_EQ(Answer(*db_, look), "'one'");
              }),
              1);
}

TEST_F(RepeatedAnswers, ARollbackIsSeen) {
    db_->BeginTrans();
    db_->Execute("insert into t values (1, N'uno')");
    EXPECT_EQ(Answer(*db_, look), "'one' | 'uno'");
    db_->RollbackTrans();
    EXPECT_EQ(Answer(*db_, look), "'one'");
    db_->Execute("begin tran");
    db_->Execute("save tran s");
    db_->Execute("insert into t values (1, N'uno')");
    EXPECT_EQ(Answer(*db_, look), "'one' | 'uno'");
    db_->Execute("rollback tran s");
    EXPECT_EQ(Answer(*db_, look), "'one'");
    db_->Execute("commit tran");
}

TEST_F(RepeatedAnswers, AChangeOfTheTableItselfIsSeen) {
    EXPECT_EQ(Answer(*db_, "select * from t where x = 1"), "1 'one'");
    db_->Execute("alter table t add z int");
    EXPECT_EQ(Answer(*db_, "select * from t where x = 1"), "1 'one' Null");
}

TEST_F(RepeatedAnswers, WhatChangesByItselfIsAskedEachTime) {
    EXPECT_NE(Answer(*db_, "select newid()"), Answer(*db_, "select newid()"));
    EXPECT_EQ(Answer(*db_, "select @@rowcount"), "1");
    EXPECT_EQ(Answer(*db_, "select y from t"), "'one' | 'two'");
    EXPECT_EQ(Answer(*db_, "select @@rowcount"), "2");
    EXPECT_EQ(Answer(*db_, look), "'one'");
    EXPECT_EQ(Answer(*db_, "select y from t"), "'one' | 'two'");
    EXPECT_EQ(Answer(*db_, "select @@rowcount"), "2");
}

TEST(RepeatedAnswersOnAFile, WhatOthersWriteIsSeen) {
    const test::TemporaryFolder folder;
    const std::string connection = "Provider=KovraAccount;Data Source=" + (folder.path() / "a.db").string();
    for (const char* commit : {"", ";Commit=Grouped"}) {
        const auto db = OpenEmbedded(connection + commit, Mode::create);
        const auto other = OpenEmbedded(connection, Mode::create);
        if (*commit == '\0') {
            Fill(*db);
        }
        db->BeginSeries();
        for (int time = 1; time <= 3; ++time) {
            EXPECT_EQ(Answer(*db, look), "'one'");
        }
        EXPECT_EQ(Answer(*other, "update t set y = N'uno' where x = 1"), "");
        EXPECT_EQ(Answer(*db, look), "'uno'");
        EXPECT_EQ(Answer(*other, "update t set y = N'un' where x = 1"), "");
        db->BeginTrans();
        EXPECT_EQ(Answer(*db, look), "'un'");
        db->CommitTrans();
        EXPECT_EQ(Answer(*other, "update t set y = N'one' where x = 1"), "");
        // Opens a group where there are any.
        EXPECT_EQ(Answer(*db, "insert into u values (1)"), "");
        EXPECT_EQ(Answer(*db, look), "'one'");
        EXPECT_EQ(Answer(*other, "delete from u"), "");
        db->EndSeries();
    }
}

} // namespace
} // namespace test_sql
