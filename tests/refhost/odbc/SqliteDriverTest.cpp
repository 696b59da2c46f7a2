// The mechanics of the ODBC layer on a real driver that needs no server: SQLite's.

#include "host/Error.h"
#include "refhost/odbc/OdbcDatabase.h"
#include "tests/support/TestAccount.h"
#include "tests/support/ValuesOf.h"

#include <gtest/gtest.h>

namespace {

using host::FieldType;
using host::Null;
using host::Value;

class SqliteDriver : public testing::Test {
protected:
    std::string ConnectionString() const { return "Driver=SQLite3;Database=" + (folder_.path() / "data.db").string(); }
    std::unique_ptr<refhost::Database> Open() const { return refhost::odbc::OpenOdbc(ConnectionString()); }

    /// The only value of a query.
    static Value Single(refhost::Database& database, std::string_view sql) {
        const refhost::ResultSet result = database.Query(sql);
        EXPECT_EQ(result.rowCount, 1U);
        EXPECT_EQ(result.cells.size(), 1U);
        return result.cells.empty() ? Value() : result.cells[0];
    }

    /// The number of the error that `action` raises, or 0.
    template <class Action> static host::Error Raised(const Action& action) {
        try {
            action();
        } catch (const host::Error& error) {
            return error;
        }
        return {0, "no error"};
    }

private:
    test::TemporaryFolder folder_;
};

TEST_F(SqliteDriver, ReadsEveryRowAndColumnInOrder) {
    const auto database = Open();
    database->Execute("create table t(a integer not null, b varchar(20))");
    database->Execute("insert into t values(1, 'one')");
    database->Execute("insert into t values(2, null)");

    const refhost::ResultSet result = database->Query("select a, b from t order by a");

    ASSERT_NE(result.fields, nullptr);
    ASSERT_EQ(result.fields->size(), 2U);
    EXPECT_EQ((*result.fields)[0].name, "a");
    EXPECT_EQ((*result.fields)[0].type, FieldType::integer);
    EXPECT_EQ((*result.fields)[1].name, "b");
    EXPECT_EQ(result.rowCount, 2U);
    const std::vector<Value> expected = {Value(1), Value("one"), Value(2), Value(Null{})};
    EXPECT_EQ(test::ValuesOf(result), expected);
}

TEST_F(SqliteDriver, AnswersAQueryWithoutRowsByItsColumns) {
    const auto database = Open();
    database->Execute("create table t(a integer)");
    const refhost::ResultSet result = database->Query("select a from t");
    ASSERT_NE(result.fields, nullptr);
    EXPECT_EQ(result.rowCount, 0U);
}

TEST_F(SqliteDriver, AnswersAStatementWithoutColumnsByNoFields) {
    const auto database = Open();
    EXPECT_EQ(database->Query("create table t(a integer)").fields, nullptr);
}

TEST_F(SqliteDriver, ReadsTextsLongerThanAnyBufferWhole) {
    const auto database = Open();
    database->Execute("create table t(a text)");
    for (const std::size_t length : {254U, 255U, 256U, 257U, 1020U, 1024U, 1000000U}) {
        const std::string text(length, 'x');
        database->Execute("delete from t");
        database->Execute("insert into t values('" + text + "')");
        EXPECT_EQ(Single(*database, "select a from t"), Value(text)) << length;
    }
}

TEST_F(SqliteDriver, ReadsDoublesDatesAndBytes) {
    const auto database = Open();
    database->Execute("create table t(a double, b timestamp, c blob)");
    database->Execute("insert into t values(2.5, '2023-05-01 06:00:00', x'00FF10')");
    const refhost::ResultSet result = database->Query("select a, b, c from t");
    // 2023-05-01 is day 45047 from 1899-12-30; six o'clock is a quarter of it.
    const std::vector<Value> expected = {Value(2.5), Value(host::Date{45047.25}),
                                         Value(host::Bytes{{0x00, 0xFF, 0x10}})};
    EXPECT_EQ(test::ValuesOf(result), expected);
}

TEST_F(SqliteDriver, CommitsEachStatementByItself) {
    const auto writer = Open();
    const auto reader = Open();
    writer->Execute("create table t(a integer)");
    writer->Execute("insert into t values(1)");
    EXPECT_EQ(Single(*reader, "select count(*) from t"), Value(1));
}

TEST_F(SqliteDriver, KeepsATransactionToItselfUntilItCommits) {
    const auto writer = Open();
    writer->Execute("create table t(a integer)");
    writer->BeginTrans();
    writer->Execute("insert into t values(1)");
    EXPECT_EQ(Single(*Open(), "select count(*) from t"), Value(0));
    writer->CommitTrans();
    EXPECT_EQ(Single(*Open(), "select count(*) from t"), Value(1));
}

TEST_F(SqliteDriver, UndoesARolledBackTransactionAndReturnsToAutocommit) {
    const auto database = Open();
    database->Execute("create table t(a integer)");
    database->BeginTrans();
    database->Execute("insert into t values(1)");
    database->RollbackTrans();
    EXPECT_EQ(Single(*database, "select count(*) from t"), Value(0));
    database->Execute("insert into t values(2)");
    EXPECT_EQ(Single(*Open(), "select count(*) from t"), Value(1));
}

TEST_F(SqliteDriver, RollsAnOpenTransactionBackWhenItCloses) {
    Open()->Execute("create table t(a integer)");
    {
        const auto database = Open();
        database->BeginTrans();
        database->Execute("insert into t values(1)");
    }
    EXPECT_EQ(Single(*Open(), "select count(*) from t"), Value(0));
}

TEST_F(SqliteDriver, RefusesTransactionsOutOfOrder) {
    const auto database = Open();
    EXPECT_EQ(Raised([&] { database->CommitTrans(); }).number(), -2147168242);
    EXPECT_EQ(Raised([&] { database->RollbackTrans(); }).number(), -2147168242);
    database->BeginTrans();
    EXPECT_EQ(Raised([&] { database->BeginTrans(); }).number(), -2147168237);
}

TEST_F(SqliteDriver, ReportsTheDriversMessageWithoutItsPrefixes) {
    const auto database = Open();
    const host::Error error = Raised([&] { database->Execute("select from where"); });
    EXPECT_NE(error.number(), 0);
    EXPECT_FALSE(error.description().starts_with("[")) << error.description();
    EXPECT_NE(error.description().find("syntax error"), std::string::npos) << error.description();
}

TEST_F(SqliteDriver, StaysUsableAfterAnError) {
    const auto database = Open();
    EXPECT_NE(Raised([&] { database->Execute("nonsense"); }).number(), 0);
    database->Execute("create table t(a integer)");
    EXPECT_EQ(Single(*database, "select count(*) from t"), Value(0));
}

} // namespace
