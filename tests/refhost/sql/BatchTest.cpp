// Whole batches, as a client tool sends them.

#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/TestAccount.h"

#include <array>
#include <chrono>
#include <string>
#include <variant>

namespace test_sql {
namespace {

class Batches : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, Batches, testing::ValuesIn(BatchPlaces()), PlaceName);

TEST_P(Batches, GivesEachResultSetByItself) {
    CheckBatches(std::array{Case{"if 1=1 begin select 3 c select 1 a, 2 b end", "rows(c) 3; rows(a,b) 1 2"}});
    CheckBatches(std::array{Case{"select 1 a, 2 b; select 3 c", "rows(a,b) 1 2; rows(c) 3"}});
}

TEST(Batch, OpensARecordsetOnTheFirstOfSeveralResultSets) {
    const auto db = OpenMemory();
    const refhost::ResultSet first = db->Query("if 1=1 begin select 3 c select 1 a, 2 b end");
    ASSERT_EQ(first.fields->size(), 1U);
    EXPECT_EQ(first.fields->front().name, "c");
    EXPECT_EQ(first.rowCount, 1U);
    EXPECT_EQ(Answer(*db, "if 1=1 begin select 3 c select 1 a, 2 b end"), "3");
}

TEST_P(Batches, TellsHowManyRowsAStatementWrote) {
    Db().Execute("create table t (a int)");
    CheckBatches(
        std::array{Case{"insert into t values (1), (2) select a from t update t set a = 5 where a = 2 delete t",
                        "2 written; rows(a) 1 | 2; 1 written; 2 written"}});
}

TEST_P(Batches, HandsOverWhatCameBeforeAnError) {
    CheckBatches(
        std::array{Case{"select 1 a select * from nowhere", "rows(a) 1; -2147217865: Invalid object name 'nowhere'."}});
}

TEST_P(Batches, RunsNothingOfABatchThatCannotBeRead) {
    Db().Execute("create table t (a int)");
    CheckBatches(std::array{Case{"insert into t values (1) selec 1", "-2147217900: Incorrect syntax near 'selec'."}});
    EXPECT_EQ(Answer(Db(), "select count(*) from t"), "0");
}

TEST(Batch, IsOneStatementWhereAClassSendsIt) {
    const auto db = OpenMemory();
    EXPECT_EQ(Answer(*db, "select 1 a; select 3 c"), "-2147217900: Incorrect syntax near the keyword 'select'.");
}

TEST_P(Batches, DeclaresAndSetsVariables) {
    CheckBatches(std::array{
        Case{"declare @a int = 2, @b nvarchar(3) set @b = N'abcdef' select @a + 1 x, @b y, @B z",
             "rows(x,y,z) 3 'abc' 'abc'"}, // a variable cuts silently
        Case{"declare @a int select @a x", "rows(x) Null"},
        Case{"declare @a int set @a = 3; set @a += 4; select @a x", "rows(x) 7"},
        Case{"declare @d decimal(10,2) = '12.345' select @d x", "rows(x) 12.35m"},
        Case{"select @a", "-2147217900: Must declare the scalar variable \"@a\"."},
        Case{"select 1 x select @a", "-2147217900: Must declare the scalar variable \"@a\"."}, // nothing runs
        Case{"declare @a int declare @A int",
             "-2147217900: The variable name '@A' has already been declared. Variable names must be unique within "
             "a query batch or stored procedure."},
        Case{"declare @a int = 'x' select 1 x",
             "-2147217913: Conversion failed when converting the varchar value 'x' to data type int."},
        // A declaration holds for the whole batch, whether its branch is reached or not.
        Case{"if 1 = 0 declare @a int = 5 select @a x", "rows(x) Null"},
    });
}

TEST_P(Batches, VariablesStandInEveryStatement) {
    CheckBatches(std::array{
        Case{"create table t (id int identity(1,1) primary key, name nvarchar(10), n decimal(10,2))", ""},
        Case{"declare @n nvarchar(10) = N'甲' insert into t (name, n) values (@n, 1.5), (N'乙', 2)", "2 written"},
        Case{"declare @n nvarchar(10) = N'甲' select id from t where name = @n", "rows(id) 1"},
        Case{"declare @n int = 1 update t set n += @n where id = @n select n from t where id = @n",
             "1 written; rows(n) 2.50m"},
        Case{"declare @n int = 1 select top (@n) name from t order by id desc", "rows(name) '乙'"},
        Case{"declare @n int = 1 select left(name, @n) x, count(*) c from t group by left(name, @n) order by "
             "1",
             "rows(x,c) '甲' 1 | '乙' 1"}, // by pinyin
        Case{"declare @n int = 2 delete t where id = @n select count(*) c from t", "1 written; rows(c) 1"},
    });
}

TEST_P(Batches, SelectSetsVariables) {
    CheckBatches(std::array{
        Case{"create table t (a int, b nvarchar(5))", ""},
        Case{"insert into t values (1, 'x'), (2, 'y'), (3, 'z')", "3 written"},
        Case{"declare @a int, @b nvarchar(5) select @a = a, @b = b from t where a = 2 select @a a, @b b",
             "rows(a,b) 2 'y'"},
        Case{"declare @a int = 9 select @a = a from t where a = 7 select @a a", "rows(a) 9"}, // no row: kept
        Case{"declare @s nvarchar(20) = '' select @s = @s + b from t select @s s", "rows(s) 'xyz'"},
        Case{"declare @s nvarchar(20) = '' select @s = @s + b from t order by a",
             "-2147467259: The embedded database does not carry a variable from row to row of a sorted "
             "query. Use STRING_AGG."},
        Case{"declare @n int = 0 select @n += a from t select @n n, @@rowcount r", "rows(n,r) 6 3"},
        Case{"declare @a int select @a = a, b from t",
             "-2147217900: A SELECT statement that assigns a value to a variable must not be combined with "
             "data-retrieval operations."},
    });
}

TEST_P(Batches, BranchesAndLoops) {
    CheckBatches(std::array{
        Case{"if 1 = 2 print 'a' else print 'b'", "says b"},
        Case{"if 1 = 1 begin print 'a' print 'b' end else begin print 'c' end print 'd'", "says a; says b; says d"},
        Case{"declare @i int = 0 while @i < 3 begin set @i = @i + 1 print @i end", "says 1; says 2; says 3"},
        Case{"declare @i int = 0 while 1 = 1 begin set @i += 1 if @i = 2 continue if @i > 3 break print @i end "
             "print 'end'",
             "says 1; says 3; says end"},
        Case{"print 'a' return print 'b'", "says a"},
        Case{"begin print 'a'; begin print 'b' end end;", "says a; says b"},
        Case{"if exists (select 1) print 'yes'; else print 'no'", "says yes"},
        Case{"print 1 + 1; print N'中' + N'文'", "says 2; says 中文"},
    });
}

TEST_P(Batches, CountsRowsAndErrors) {
    CheckBatches(std::array{
        Case{"create table t (id int identity(1,1), a int not null)", ""},
        Case{"insert into t values (1), (2), (3) select @@rowcount r, @@identity i", "3 written; rows(r,i) 3 3m"},
        Case{"update t set a = 5 where id > 1 if @@rowcount = 2 print 'two'", "2 written; says two"},
        Case{"select a from t where id = 7 select @@rowcount r", "rows(a); rows(r) 0"},
        Case{"declare @x int set @x = 1 select @@rowcount r", "rows(r) 1"},
        Case{"set nocount on delete t select @@rowcount r set nocount off", "rows(r) 3"},
        Case{"select @@trancount n begin tran select @@trancount n begin tran select @@trancount n rollback select "
             "@@trancount n",
             "rows(n) 0; rows(n) 1; rows(n) 2; rows(n) 0"},
    });
}

TEST_P(Batches, GoesOnBehindAViolationAndEndsAfterAFailedConversion) {
    CheckBatches(std::array{
        Case{"create table t (a int not null, b nvarchar(2))", ""},
        Case{"insert into t values (Null, 'x') print 'next'",
             "-2147217873: Cannot insert the value NULL into column 'a', table 'account.dbo.t'; column does not "
             "allow "
             "nulls. INSERT fails.; says next"},
        Case{"insert into t values (1, 'xyz') print 'next'",
             "-2147217833: String or binary data would be truncated.; says next"},
        Case{"select 1 / 0 x print @@error", "-2147467259: Divide by zero error encountered.; says 8134"},
        Case{"select cast('x' as int) x print 'next'",
             "-2147217913: Conversion failed when converting the varchar value 'x' to data type int."},
        Case{"select nowhere from t print 'next'", "-2147217900: Invalid column name 'nowhere'."},
        Case{"set xact_abort on begin tran insert into t values (1, 'a') insert into t values (Null, 'x') print "
             "'next'",
             "1 written; -2147217873: Cannot insert the value NULL into column 'a', table 'account.dbo.t'; column "
             "does "
             "not allow nulls. INSERT fails."},
        Case{"set xact_abort off select @@trancount n, (select count(*) from t) c", "rows(n,c) 0 0"},
    });
    // A class's IF … BEGIN … END goes on likewise, and fails with its first error.
    Check(
        std::array{Case{"if 1 = 1 begin insert into t values (Null, 'x') insert into t values (5, 'y') end",
                        "-2147217873: Cannot insert the value NULL into column 'a', table 'account.dbo.t'; column does "
                        "not allow nulls. INSERT fails."}});
    EXPECT_EQ(Answer(Db(), "select a from t"), "5");
}

TEST_P(Batches, GoesOnBehindAProcedureThatIsNotThere) {
    CheckBatches(std::array{
        Case{"exec nowhere select 1 as a", "-2147217900: Could not find stored procedure 'nowhere'.; rows(a) 1"}});
}

TEST_P(Batches, TryCatches) {
    CheckBatches(std::array{
        Case{"create table t (a int not null)", ""},
        Case{"begin try print 'a' insert into t values (Null) print 'b' end try begin catch print "
             "error_message() end catch print 'c'",
             "says a; says Cannot insert the value NULL into column 'a', table 'account.dbo.t'; column does not "
             "allow "
             "nulls. INSERT fails.; says c"},
        Case{"begin try select cast('x' as int) x end try begin catch print 'caught' end catch; print 'on'",
             "says caught; says on"},
        Case{"begin try print 'a' end try begin catch print 'b' end catch print error_message()", "says a; says "},
        Case{"begin try begin try raiserror('inner', 16, 1) end try begin catch throw end catch end try begin "
             "catch print error_message() end catch",
             "says inner"},
        Case{"begin try throw 50001, 'mine', 1 end try begin catch print 'got ' + error_message() end catch",
             "says got mine"},
        Case{"begin try raiserror('a', 16, 1) end try begin catch print error_number() end catch", "says 50000"},
        Case{"begin try throw 50001, 'a', 1 end try begin catch print error_number() end catch", "says 50001"},
        Case{"begin try select 1 / 0 x end try begin catch print error_number() end catch", "says 8134"},
        // Names that do not resolve are caught by no TRY of their own text, but by that of one which runs it.
        Case{"begin try select * from nowhere end try begin catch print 'caught' end catch",
             "-2147217865: Invalid object name 'nowhere'."},
        Case{"begin try exec('select * from nowhere') end try begin catch print 'caught' end catch", "says caught"},
    });
}

TEST_P(Batches, RaisesErrorsAndMessages) {
    CheckBatches(std::array{
        Case{"raiserror('rows: %d of %s, 100%%', 10, 1, 5, 'ten') print 'next'",
             "says rows: 5 of ten, 100%; says next"},
        Case{"raiserror('wrong', 16, 1) print 'next'", "-2147217900: wrong; says next"},
        Case{"throw 50000, 'wrong', 1; print 'next'", "-2147217900: wrong"},
    });
}

TEST_P(Batches, RunsTexts) {
    CheckBatches(std::array{
        Case{"create table t (a int)", ""},
        Case{"declare @s nvarchar(50) = 'select 1 x' exec(@s + ' union select 2')", "rows(x) 1 | 2"},
        Case{"exec sp_executesql N'insert into t values (@a); select @a + @b s', N'@a int, @b int', @a = 3, @b = 4",
             "1 written; rows(s) 7"},
        Case{"exec sp_executesql N'select @p p', N'@p nvarchar(5)', N'it''s'", "rows(p) 'it's'"},
        Case{"declare @n int exec sp_executesql N'select @x = count(*) from t', N'@x int output', @n output select "
             "@n n",
             "rows(n) 1"},
        Case{"declare @a int = 1 exec('select @a')", "-2147217900: Must declare the scalar variable \"@a\"."},
        Case{"exec sp_nowhere 1, 'x'", "-2147217900: Could not find stored procedure 'sp_nowhere'."},
        Case{"exec sp_executesql N'select @a', N'@a int'",
             "-2147217900: The parameterized query '(@a int)select @a' expects the parameter '@a', which was not "
             "supplied."},
    });
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

TEST_P(Batches, TransactionsNestAndHaveNames) {
    CheckBatches(std::array{
        Case{"create table t (a int)", ""},
        Case{"begin tran outside insert into t values (1) begin tran inside insert into t values (2) commit tran "
             "inside select @@trancount n commit select count(*) c from t",
             "1 written; 1 written; rows(n) 1; rows(c) 2"},
        Case{"begin tran a save tran s delete t rollback tran s select count(*) c, @@trancount n from t rollback "
             "tran a select @@trancount n",
             "2 written; rows(c,n) 2 1; rows(n) 0"},
        Case{"begin tran rollback tran nowhere",
             "-2147217900: Cannot roll back nowhere. No transaction or savepoint of that name was found."},
        Case{"rollback", ""},
        Case{"begin tran save tran a save tran b rollback tran a rollback tran b",
             "-2147217900: Cannot roll back b. No transaction or savepoint of that name was found."},
        Case{"rollback", ""},
        Case{"commit", "-2147217900: The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    });
}

TEST_P(Batches, UsesAnotherDatabase) {
    if (GetParam() == Place::server) {
        GTEST_SKIP() << "the system database of a server is no place for tables of a test";
    }
    CheckBatches(std::array{
        Case{"create table QxSystem..p (x int) insert into QxSystem..p values (1)", "1 written"},
        Case{"use QxSystem select x from p select db_name() n",
             "says Changed database context to 'QxSystem'.; rows(x) 1; rows(n) 'QxSystem'"},
        Case{"select x from p use account select x from p",
             "rows(x) 1; says Changed database context to 'account'.; -2147217865: Invalid object name 'p'."},
        Case{"use nowhere",
             "-2147217900: Database 'nowhere' does not exist. Make sure that the name is entered correctly."},
    });
}

TEST_P(Batches, ADefinitionIsAloneInItsBatchWhereTheServerWantsIt) {
    CheckBatches(std::array{Case{"select 1 a create view v as select 1 x",
                                 "-2147217900: 'CREATE VIEW' must be the first statement in a query batch."}});
    CheckBatches(std::array{Case{"declare @a int create table t (x int default @a)",
                                 "-2147217900: Variables are not allowed in the CREATE TABLE statement."}});
}

} // namespace
} // namespace test_sql
