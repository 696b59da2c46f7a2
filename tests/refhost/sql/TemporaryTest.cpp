// Temporary tables: the session's own, and what a transaction does to them.

#include "tests/refhost/sql/Support.h"
#include "tests/support/TestAccount.h"

namespace test_sql {
namespace {

TEST(Temporary, TablesOfAnotherSessionAreNotSeen) {
    test::TemporaryFolder folder;
    const std::string text = "Provider=KovraAccount;Data Source=" + (folder.path() / "account.db").string();
    const auto first = refhost::sql::OpenEmbedded(text, refhost::sql::Mode::create);
    const auto second = refhost::sql::OpenEmbedded(text, refhost::sql::Mode::open);
    EXPECT_EQ(Answer(*first, "create table #t (a int)"), "");
    EXPECT_EQ(Answer(*second, "select * from #t"), "-2147217865: Invalid object name '#t'.");
    EXPECT_EQ(Answer(*second, "create table #t (b int)"), "");
    EXPECT_EQ(Answer(*first, "insert into #t (a) values (1)"), "");
    EXPECT_EQ(Answer(*second, "select count(*) from #t"), "0");
}

TEST(Temporary, TablesGoBackWithTheirTransaction) {
    const auto db = OpenMemory();
    db->BeginTrans();
    EXPECT_EQ(Answer(*db, "create table #t (a int)"), "");
    db->RollbackTrans();
    EXPECT_EQ(Answer(*db, "select * from #t"), "-2147217865: Invalid object name '#t'.");
}

} // namespace
} // namespace test_sql
