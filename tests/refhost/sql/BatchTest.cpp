// Whole batches, as a client tool sends them.

#include "tests/refhost/sql/Support.h"
#include "tests/support/TestAccount.h"

#include <array>
#include <chrono>
#include <string>
#include <variant>

namespace test_sql {
namespace {

TEST(Batch, OpensARecordsetOnTheFirstOfSeveralResultSets) {
    const auto db = OpenMemory();
    const refhost::ResultSet first = db->Query("if 1=1 begin select 3 c select 1 a, 2 b end");
    ASSERT_EQ(first.fields->size(), 1U);
    EXPECT_EQ(first.fields->front().name, "c");
    EXPECT_EQ(first.rowCount, 1U);
    EXPECT_EQ(Answer(*db, "if 1=1 begin select 3 c select 1 a, 2 b end"), "3");
}

TEST(Batch, RunsNoStatementTwiceWhenDefinitionsMove) {
    test::TemporaryFolder folder;
    const std::string text = "Provider=KovraAccount;Data Source=" + (folder.path() / "account.db").string();
    const auto first = refhost::sql::OpenEmbedded(text, refhost::sql::Mode::create);
    const auto second = refhost::sql::OpenEmbedded(text, refhost::sql::Mode::open);
    first->Execute("create table t (a int)");
    first->Execute("create table other (a int)");
    int answers = 0;
    // Between the rounds of the loop another session changes the table that its plans were made for.
    first->RunBatch("declare @i int = 0 while @i < 4 begin set @i += 1 insert into other values (@i) insert into t (a) "
                    "values (@i) end",
                    std::nullopt, [&](const refhost::BatchAnswer& answer) {
                        EXPECT_NE(std::get_if<refhost::RowsWritten>(&answer), nullptr);
                        second->Execute("alter table t add c" + std::to_string(++answers) + " int");
                    });
    EXPECT_EQ(answers, 8);
    EXPECT_EQ(Answer(*first, "select a from other"), "1 | 2 | 3 | 4");
    EXPECT_EQ(Answer(*first, "select a from t"), "1 | 2 | 3 | 4");
}

TEST(Batch, EndsWhenItsTimeIsOver) {
    // A clock that goes on with each look at it, however long the machine takes.
    std::chrono::steady_clock::time_point now;
    refhost::sql::EmbeddedDatabase db(
        {.file = ":memory:", .clock = [&now] { return now += std::chrono::milliseconds(1); }});
    EXPECT_EQ(Batch(db, "print 'a' while 1 = 1 begin declare @a int set @a = 1 end", std::chrono::milliseconds(100)),
              "says a; -2147217871: Query timeout expired");
}

TEST(Batch, IsWholeOnlyFromAClientTool) {
    const auto db = OpenMemory();
    db->Execute("create table t (a int)");
    for (const char* sql : {"declare @a int", "print 'a'", "while 1 = 1 delete t", "begin delete t end",
                            "exec('delete t')", "begin try delete t end try begin catch end catch", "use account",
                            "set @a = 1", "raiserror('a', 16, 1)", "return"}) {
        EXPECT_EQ(Answer(*db, sql).substr(0, 34), "-2147217900: Incorrect syntax near") << sql;
    }
    EXPECT_EQ(Answer(*db, "select @a"), "-2147217900: Must declare the scalar variable \"@a\".");
}

// A driver manager takes none of these.
TEST(Batch, OfNothingAnswersNothing) {
    const auto db = OpenMemory();
    RunCases(*db, std::array{Case{"", ""}, Case{"  ;", ""}});
}

} // namespace
} // namespace test_sql
