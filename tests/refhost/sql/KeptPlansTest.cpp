// Plans that outlive the making or dropping of a table, and those that must not.

#include "tests/refhost/sql/Support.h"
#include "tests/support/TestAccount.h"

namespace test_sql {
namespace {

using refhost::sql::EmbeddedDatabase;

class KeptPlans : public testing::Test {
protected:
    KeptPlans() {
        Run("create table t (n int, c nvarchar(10))");
        Run("insert into t values (1, N'a')");
    }

    void Run(std::string_view sql) { db_->Execute(sql); }
    std::string Asked(std::string_view sql) { return Answer(*db_, sql); }
    /// How many translations `sql` takes.
    std::size_t Translations(std::string_view sql) {
        const std::size_t before = db_->TranslationCount();
        Run(sql);
        return db_->TranslationCount() - before;
    }

    std::unique_ptr<EmbeddedDatabase> db_ = OpenMemory();
};

TEST_F(KeptPlans, OfOtherTablesStay) {
    const std::string insert = "insert into t values (2, N'b')";
    const std::string question = "select count(*) from t where n > 1";
    Run(insert);
    EXPECT_EQ(Translations(question), 1U);
    for (const char* const definition :
         {"create table work (n int)", "drop table work", "create table #work (n int)", "drop table #work"}) {
        Run(definition);
        EXPECT_EQ(Translations(insert), 0U) << definition;
        EXPECT_EQ(Translations(question), 0U) << definition;
    }
    EXPECT_EQ(Asked(question), "5");
}

TEST_F(KeptPlans, OfTheTableGo) {
    const std::string question = "select * from work";
    Run("create table work (n int)");
    Run("insert into work values (1)");
    EXPECT_EQ(Asked(question), "1");
    Run("drop table WORK");
    EXPECT_EQ(Asked(question), "-2147217865: Invalid object name 'work'.");
    Run("create table [dbo].[Work] (a nvarchar(5), b int)");
    Run("insert into work values (N'x', 2)");
    EXPECT_EQ(Asked(question), "'x' 2");
}

TEST_F(KeptPlans, OfATableThatAppearsAfterItWasMissedAreMade) {
    EXPECT_EQ(Asked("select n from #work"), "-2147217865: Invalid object name '#work'.");
    Run("create table #work (n int)");
    EXPECT_EQ(Asked("select n from #work"), "");
}

TEST_F(KeptPlans, OfAJoinGoWithEitherTable) {
    const std::string question = "select t.c, w.d from t join work w on w.n = t.n";
    Run("create table work (n int, d int)");
    Run("insert into work values (1, 7)");
    EXPECT_EQ(Asked(question), "'a' 7");
    Run("drop table work");
    Run("create table work (d nvarchar(5), n int)");
    Run("insert into work values (N'new', 1)");
    EXPECT_EQ(Asked(question), "'a' 'new'");
}

TEST_F(KeptPlans, OfASubqueryGo) {
    const std::string question = "select n from t where exists (select * from work where work.c = t.c)";
    Run("create table work (c nvarchar(10))");
    Run("insert into work values (N'a')");
    EXPECT_EQ(Asked(question), "1");
    Run("drop table work");
    EXPECT_EQ(Asked(question), "-2147217865: Invalid object name 'work'.");
}

TEST_F(KeptPlans, OfAViewGo) {
    Run("create table work (n int)");
    Run("create view v as select n from work");
    Run("insert into work values (1)");
    EXPECT_EQ(Asked("select n from v"), "1");
    Run("insert into v values (2)");
    Run("drop table work");
    Run("create table work (a nvarchar(5), n int)");
    EXPECT_EQ(Asked("select n from v"), "");
    Run("insert into v values (3)");
    EXPECT_EQ(Asked("select a, n from work"), "Null 3");
    EXPECT_EQ(Asked("select n from v"), "3");
}

TEST_F(KeptPlans, OfATableThatAnotherRefersToGo) {
    Run("create table parent (n int primary key)");
    Run("insert into parent values (1), (2)");
    Run("delete parent where n = 2");
    Run("create table child (n int, constraint fk foreign key (n) references parent (n))");
    Run("insert into child values (1)");
    EXPECT_EQ(Asked("delete parent where n = 1").substr(0, 12), "-2147217873:");
    EXPECT_EQ(Asked("select count(*) from parent"), "1");
    Run("drop table child");
    EXPECT_EQ(Asked("delete parent where n = 1"), "");
    EXPECT_EQ(Asked("select count(*) from parent"), "0");
}

TEST_F(KeptPlans, GoWithARolledBackDefinition) {
    db_->BeginTrans();
    Run("create table work (n int)");
    EXPECT_EQ(Asked("select count(*) from work"), "0");
    EXPECT_EQ(Asked("select count(*) from t"), "1");
    db_->RollbackTrans();
    EXPECT_EQ(Asked("select count(*) from t"), "1");
    EXPECT_EQ(Asked("select count(*) from work"), "-2147217865: Invalid object name 'work'.");
}

TEST_F(KeptPlans, ThatWriteRowByRowAreMadeAnew) {
    const std::string write = "update t set n = n + 1 output deleted.n, inserted.n";
    EXPECT_EQ(Asked(write), "1 2");
    Run("create table work (n int)");
    EXPECT_EQ(Asked(write), "2 3");
}

TEST_F(KeptPlans, OfTheCatalogTellTheNewTable) {
    // What repeats in a series is answered from what it answered before.
    db_->BeginSeries();
    const std::string names = "select count(*) from sysobjects where name = 'work'";
    const std::string id = "select case when object_id('work') is null then 0 else 1 end";
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Asked(names), "0");
        EXPECT_EQ(Asked(id), "0");
    }
    Run("create table work (n int)");
    EXPECT_EQ(Asked(names), "1");
    EXPECT_EQ(Asked(id), "1");
    db_->EndSeries();
}

TEST_F(KeptPlans, GiveNoAnswerFromBeforeAWrite) {
    db_->BeginSeries();
    const std::string question = "select count(*) from t where c = N'a'";
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Asked(question), "1");
    }
    Run("create table work (n int)");
    for (const char* const count : {"2", "3"}) {
        Run("insert into t values (1, N'a')");
        EXPECT_EQ(Asked(question), count);
        EXPECT_EQ(Asked(question), count);
    }
    db_->EndSeries();
}

TEST(KeptPlansOfFiles, GoWhereAnotherConnectionDroppedTheTable) {
    const test::TemporaryFolder folder;
    const std::string text = "Provider=KovraAccount;Data Source=" + (folder.path() / "a.db").string();
    const auto first = refhost::sql::OpenEmbedded(text, refhost::sql::Mode::create);
    const auto second = refhost::sql::OpenEmbedded(text, refhost::sql::Mode::open);
    first->Execute("create table t (n int)");
    EXPECT_EQ(Answer(*first, "select count(*) from t"), "0");
    second->Execute("drop table t");
    first->Execute("create table work (n int)");
    EXPECT_EQ(Answer(*first, "select count(*) from t"), "-2147217865: Invalid object name 't'.");
    second->Execute("create table t (c nvarchar(5))");
    second->Execute("insert into t values (N'x')");
    first->Execute("drop table work");
    EXPECT_EQ(Answer(*first, "select count(*) from t"), "1");
}

} // namespace
} // namespace test_sql
