// Table variables ("table (Transact-SQL)" of the T-SQL reference): they belong to their batch.

#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

namespace test_sql {
namespace {

class TableVariables : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, TableVariables, testing::ValuesIn(BatchPlaces()), PlaceName);

TEST_P(TableVariables, TakeRowsAndGiveThem) {
    EXPECT_EQ(Batch(Db(),
                    "declare @n int, @t table (id int identity(1,1) primary key, a nvarchar(5) default N'x', check "
                    "(a <> 'bad'))\n"
                    "insert into @t (a) values (N'甲'), (N'乙'), ('c')\n"
                    "update @t set a = 'd' where id = 3\n"
                    "delete from @t where a = N'甲'\n"
                    "insert @t default values\n"
                    "select @n = count(*) from @t\n"
                    "select t.id, t.a, @n as n from @t as t order by t.id"),
              "3 written; 1 written; 1 written; 1 written; rows(id,a,n) 2 '乙' 3 | 3 'd' 3 | 4 'x' 3");
}

TEST_P(TableVariables, EndWithTheirBatch) {
    CheckBatches(
        std::array{Case{"declare @t table (a int) insert @t values (1) select a from @t", "1 written; rows(a) 1"}});
    CheckBatches(std::array{Case{"select a from @t", "-2147217900: Must declare the table variable \"@t\"."}});
    CheckBatches(std::array{Case{"declare @T table (b int) select b from @t", "rows(b)"}});
    // They are seen in no other text, either.
    CheckBatches(std::array{Case{"declare @t table (a int) exec('select a from @t')",
                                 "-2147217900: Must declare the table variable \"@t\"."}});
}

TEST_P(TableVariables, KeepTheirRowsInALoop) {
    CheckBatches(std::array{Case{"declare @i int = 0\n"
                                 "while @i < 3 begin\n"
                                 "  declare @t table (a int)\n"
                                 "  set @i += 1\n"
                                 "  insert @t values (@i)\n"
                                 "end\n"
                                 "select sum(a) s from @t",
                                 "1 written; 1 written; 1 written; rows(s) 6"}});
}

TEST_P(TableVariables, RefuseWhatBreaksTheirConstraints) {
    CheckBatches(std::array{
        Case{"declare @t table (a int not null) insert @t values (null) select count(*) c from @t",
             "-2147217873: Cannot insert the value NULL into column 'a', table '@t'; column does not allow nulls. "
             "INSERT fails.; rows(c) 0"}});
}

TEST(TableVariablesHere, AreOfScriptsAlone) {
    const auto db = OpenMemory();
    EXPECT_EQ(Answer(*db, "insert into @t values (1)"), "-2147217900: Must declare the table variable \"@t\".");
}

} // namespace
} // namespace test_sql
