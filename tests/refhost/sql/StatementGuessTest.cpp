// Statements that follow each other in an order that repeats are recognised without being read: each must mean the same
// as it does alone.

#include "tests/refhost/sql/Support.h"

#include <string>
#include <vector>

namespace test_sql {
namespace {

class StatementGuess : public testing::Test {
protected:
    StatementGuess() {
        Run({"create table t (id int, a nvarchar(20), d decimal(9,2))", "insert into t values (7, N'x''y', 1.5)",
             "insert into t values (77, 'line', 2)", "insert into t values (2147483647, 'big', 3)"});
    }
    void Run(const std::vector<std::string>& statements) {
        for (const std::string& statement : statements) {
            db_->Execute(statement);
        }
    }
    /// Has the two shapes follow each other until they are expected.
    void Expect() {
        for (int i = 0; i < 4; ++i) {
            ASSERT_EQ(Answer(*db_, "select id from t where a = N'none'"), "");
            ASSERT_EQ(Answer(*db_, "select a from t where id = 5"), "");
        }
    }
    /// The answer to a statement where one of the first shape is expected.
    std::string First(const std::string& statement) {
        Expect();
        return Answer(*db_, statement);
    }
    /// Where one of the second is.
    std::string Second(const std::string& statement) {
        Expect();
        EXPECT_EQ(Answer(*db_, "select id from t where a = N'none'"), "");
        return Answer(*db_, statement);
    }

    std::unique_ptr<refhost::sql::EmbeddedDatabase> db_ =
        refhost::sql::OpenEmbedded("Provider=KovraAccount;Data Source=:memory:", refhost::sql::Mode::open);
};

TEST_F(StatementGuess, FindsEachStatementsOwnValues) {
    EXPECT_EQ(First("select id from t where a = N'line'"), "77");
    EXPECT_EQ(Second("select a from t where id = 77"), "'line'");
    EXPECT_EQ(Second("select a from t where id = 007"), "'x'y'");
}

TEST_F(StatementGuess, DoubledQuotesAndContinuedLinesAreReadAsTheyMean) {
    EXPECT_EQ(First("select id from t where a = N'x''y'"), "7");
    EXPECT_EQ(First("select id from t where a = N'li\\\nne'"), "77");
}

TEST_F(StatementGuess, AnUnclosedQuoteIsAnErrorStill) {
    EXPECT_NE(First("select id from t where a = N'line").find("Unclosed quotation mark"), std::string::npos);
}

TEST_F(StatementGuess, NumbersOfAnotherKindAreNoWholeNumbers) {
    EXPECT_EQ(Second("select a from t where id = 7.0"), "'x'y'");
    EXPECT_EQ(Second("select a from t where id = 77e0"), "'line'");
    EXPECT_EQ(Second("select a from t where id = 0x4D"), "'line'");
    EXPECT_EQ(Second("select a from t where id = 2147483647"), "'big'");
    EXPECT_EQ(Second("select a from t where id = 99999999999"), "");
}

TEST_F(StatementGuess, WhatStandsBehindIsPartOfTheStatement) {
    EXPECT_EQ(Second("select a from t where id = 7 or id = 77"), "'x'y' | 'line'");
    EXPECT_EQ(First("select id from t where a = N'line' or 1 = 1"), "7 | 77 | 2147483647");
}

TEST_F(StatementGuess, AnotherSpellingOfTheTextIsAnotherStatement) {
    EXPECT_EQ(First("select id from t where a = 'line'"), "77");
    EXPECT_EQ(First("select id as b from t where a = N'line'"), "77");
}

TEST_F(StatementGuess, ValuesThatShapeATranslationAreCompared) {
    for (int i = 0; i < 4; ++i) {
        ASSERT_EQ(Answer(*db_, "select top 1 id from t order by 1"), "7");
        ASSERT_EQ(Answer(*db_, "select 1"), "1");
    }
    EXPECT_EQ(Answer(*db_, "select top 1 a from t order by 1"), "'big'");
    EXPECT_EQ(Answer(*db_, "select 1"), "1");
    EXPECT_EQ(Answer(*db_, "select top 2 id from t order by 1"), "7 | 77");
    EXPECT_EQ(Answer(*db_, "select 2"), "2");
}

TEST_F(StatementGuess, DefinitionsInBetweenAreNoticed) {
    Expect();
    Run({"drop table t", "create table t (a int, id nvarchar(9))", "insert into t values (1, '5')"});
    EXPECT_EQ(Answer(*db_, "select a from t where id = 5"), "1");
    EXPECT_EQ(Answer(*db_, "select a from t where id = 5"), "1");
}

} // namespace
} // namespace test_sql
