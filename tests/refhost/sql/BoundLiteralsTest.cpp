// Literals that a statement had the time before stay bound: what they give is what binding them anew would give.

#include "tests/refhost/sql/Support.h"
#include "tests/support/TestAccount.h"

#include <memory>
#include <string>

namespace test_sql {
namespace {

class BoundLiterals : public testing::Test {
protected:
    void Run(const std::string& sql) {
        // Each text has memory of its own, which is written over before the next one.
        const auto copy = std::make_unique<std::string>(sql);
        db_->Execute(*copy);
        copy->assign(copy->size(), '#');
    }
    void Insert(const std::string& name, const std::string& day, const std::string& amount) {
        Run("insert into t (name, day, amount) values ('" + name + "', '" + day + "', " + amount + ")");
    }
    std::string Rows() { return Answer(*db_, "select name, convert(varchar(10), day, 23), amount from t order by id"); }

    const std::unique_ptr<refhost::sql::EmbeddedDatabase> db_ = OpenMemory();

private:
    void SetUp() override {
        db_->Execute(
            "create table t (id int identity(1,1) primary key, name varchar(200), day datetime, amount float)");
    }
};

TEST_F(BoundLiterals, ThatStayAndThatChange) {
    Insert("a", "2023-01-02", "1.5");
    Insert("a", "2023-01-02", "1.5");
    Insert("a", "2023-01-03", "1.5");
    Insert("b", "2023-01-03", "2.5");
    Insert("A", "2023-01-02", "1.5");
    Insert("a ", "2023-01-02", "1.50");
    EXPECT_EQ(Rows(), "'a' '2023-01-02' 1.5r | 'a' '2023-01-02' 1.5r | 'a' '2023-01-03' 1.5r | "
                      "'b' '2023-01-03' 2.5r | 'A' '2023-01-02' 1.5r | 'a ' '2023-01-02' 1.5r");
}

TEST_F(BoundLiterals, LongerOnesBetweenShortOnes) {
    const std::string kept(64, 'k');
    const std::string longer(65, 'l');
    for (const std::string& name : {kept, kept, longer, longer, kept, std::string("s"), longer}) {
        Insert(name, "2023-01-02", "1.5");
    }
    EXPECT_EQ(Answer(*db_, "select name from t order by id"), "'" + kept + "' | '" + kept + "' | '" + longer + "' | '" +
                                                                  longer + "' | '" + kept + "' | 's' | '" + longer +
                                                                  "'");
}

TEST_F(BoundLiterals, AfterOneThatCouldNotBeConverted) {
    Insert("a", "2023-01-02", "1.5");
    EXPECT_THROW(Insert("b", "2023-02-30", "2.5"), host::Error);
    EXPECT_THROW(Insert("b", "2023-02-30", "2.5"), host::Error);
    Insert("b", "2023-01-02", "2.5");
    Insert("a", "2023-01-02", "2.5");
    EXPECT_THROW(Insert("b", "2023-01-03", "1e999"), host::Error);
    Insert("b", "2023-01-03", "1.5");
    EXPECT_EQ(Rows(), "'a' '2023-01-02' 1.5r | 'b' '2023-01-02' 2.5r | 'a' '2023-01-02' 2.5r | "
                      "'b' '2023-01-03' 1.5r");
}

TEST_F(BoundLiterals, WithDoubledQuotesAndOutsideTheCodePage) {
    for (const char* const name : {"a''b", "a''b", "仓库", "仓库", "한", "한"}) {
        Insert(name, "2023-01-02", "1.5");
    }
    EXPECT_EQ(Answer(*db_, "select name from t order by id"), "'a'b' | 'a'b' | '仓库' | '仓库' | '?' | '?'");
}

TEST_F(BoundLiterals, WithAndWithoutN) {
    db_->Execute("create table n (name nvarchar(10))");
    for (const char* const name : {"'한'", "N'한'", "N'한'", "'한'"}) {
        Run(std::string("insert into n values (") + name + ")");
    }
    EXPECT_EQ(Answer(*db_, "select name from n"), "'?' | '한' | '한' | '?'");
}

TEST_F(BoundLiterals, OfLookUps) {
    Insert("a", "2023-01-02", "1.5");
    Insert("b", "2023-01-03", "2.5");
    const auto name = [this](const std::string& asked, const std::string& amount) {
        return Answer(*db_, "select name from t where name = '" + asked + "' and amount = " + amount);
    };
    EXPECT_EQ(name("a", "1.5"), "'a'");
    EXPECT_EQ(name("a", "2.5"), "");
    EXPECT_EQ(name("b", "2.5"), "'b'");
    EXPECT_EQ(name("b", "1.5"), "");
    EXPECT_EQ(name("a", "1.5"), "'a'");
}

TEST_F(BoundLiterals, OfAStatementThatIsMadeAnew) {
    Insert("a", "2023-01-02", "1.5");
    db_->Execute("create table other (n int)");
    Insert("a", "2023-01-02", "1.5");
    db_->Execute("alter table t add n int");
    Insert("a", "2023-01-02", "1.5");
    EXPECT_EQ(Rows(), "'a' '2023-01-02' 1.5r | 'a' '2023-01-02' 1.5r | 'a' '2023-01-02' 1.5r");
}

TEST_F(BoundLiterals, OfAStatementThatAnotherConnectionHasMadeAnew) {
    const test::TemporaryFolder folder;
    const std::string text = "Provider=KovraAccount;Data Source=" + (folder.path() / "account.db").string();
    const auto one = refhost::sql::OpenEmbedded(text, refhost::sql::Mode::create);
    const auto other = refhost::sql::OpenEmbedded(text, refhost::sql::Mode::open);
    const std::string insert = "insert into t (name, n) values ('a name of more than sixteen bytes', 1.5)";
    one->Execute("create table t (name varchar(200), n float)");
    one->Execute(insert);
    for (const char* const change : {"create table u (n int)", "alter table t add d int", "drop table u"}) {
        other->Execute(change);
        one->Execute(std::string(insert)); // a copy, so that nothing of it is left
    }
    EXPECT_EQ(Answer(*one, "select count(*) from t where name = 'a name of more than sixteen bytes' and n = 1.5"), "4");
}

TEST_F(BoundLiterals, WhoseMeaningIsSetAnew) {
    for (const char* const order : {"dmy", "mdy", "mdy", "dmy"}) {
        Run(std::string("set dateformat ") + order);
        Insert("a", "01/02/2023", "1.5");
    }
    EXPECT_EQ(Answer(*db_, "select convert(varchar(10), day, 23) from t order by id"),
              "'2023-02-01' | '2023-01-02' | '2023-01-02' | '2023-02-01'");
}

TEST_F(BoundLiterals, BesideVariables) {
    EXPECT_EQ(Batch(*db_, "declare @i int = 0, @name varchar(9) while @i < 3 begin set @i = @i + 1 "
                          "insert into t (name, day, amount) values (@name, '2023-01-02', @i) "
                          "set @name = 'after ' + convert(varchar(9), @i) end"),
              "1 written; 1 written; 1 written");
    EXPECT_EQ(Rows(), "Null '2023-01-02' 1r | 'after 1' '2023-01-02' 2r | 'after 2' '2023-01-02' 3r");
}

TEST_F(BoundLiterals, OfRowsThatAreWrittenOneByOne) {
    Insert("a", "2023-01-02", "1.5");
    for (const char* const name : {"b", "b", "c"}) {
        EXPECT_EQ(Answer(*db_, std::string("update t set name = '") + name + "', amount = 3 output inserted.name"),
                  "'" + std::string(name) + "'");
    }
}

} // namespace
} // namespace test_sql
