#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

class Language : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, Language, testing::ValuesIn(Places()), PlaceName);

TEST_P(Language, QueriesInAllForms) {
    Check(std::array{
        Case{"create table a (id int not null primary key, name nvarchar(10), g int)", ""},
        Case{"create table b (id int, txt nvarchar(10))", ""},
        Case{"insert into a values (1, N'甲', 1), (2, N'乙', 1), (3, Null, 2)", ""},
        Case{"insert into b select id, 'x' + name from a where id < 3", ""},
        Case{"select top 2 id from a order by id desc", "3 | 2"},
        Case{"select top (1) a.* from a order by 1", "1 '甲' 1"},
        Case{"select x = id, id as [y z], id \"q\" from a where id = 1", "1 1 1"},
        Case{"select a.id, b.txt from a inner join b on a.id = b.id order by a.id", "1 'x甲' | 2 'x乙'"},
        Case{"select a.id, b.txt from a left outer join b on a.id = b.id where b.id is null", "3 Null"},
        Case{"select a.id from b right join a on a.id = b.id order by a.id", "1 | 2 | 3"},
        Case{"select count(*) from a cross join b", "6"},
        Case{"select count(*) from a, b where a.id = b.id", "2"},
        Case{"select d.n from (select g, count(*) as n from a group by g having count(*) > 1) d", "2"},
        Case{"select g, max(name) from a where name is not null group by g", "1 '乙'"},
        Case{"select id from a where id in (select id from b) and not exists (select 1 from b where b.id = a.id + "
             "1)",
             "2"},
        Case{"select (select count(*) from b where b.id <= a.id) from a order by id", "1 | 2 | 2"},
        Case{"select id from a where name like N'甲%' or id between 3 and 5", "1 | 3"},
        Case{"select id from a where name not like '[乙]'", "1"},
        Case{"select case id when 1 then 'one' when 2 then 'two' else 'many' end from a", "'one' | 'two' | 'many'"},
        Case{"select case when name is null then 0 else len(name) end from a", "1 | 1 | 0"},
        Case{"select id from a where id = 1 union select id from a where id < 3", "1 | 2"},
        Case{"select id from a where id = 1 union all select id from a where id < 3 order by id desc", "2 | 1 | 1"},
        Case{"select coalesce(Null, name, 'none'), nullif(g, 2), isnull(name, N'?') from a where id = 3",
             "'none' Null '?'"},
        Case{"update a set name = b.txt from a inner join b on a.id = b.id where b.id = 2", ""},
        Case{"update x set g = 9 from a x where x.id = 3", ""},
        Case{"delete a from a inner join b on a.id = b.id where b.id = 1", ""},
        Case{"select * from a", "2 'x乙' 1 | 3 Null 9"},
        Case{"select id into c from a", ""},
        Case{"select * from c", "2 | 3"},
        Case{"truncate table c", ""},
        Case{"select count(*) from c", "0"},
        Case{"alter table a add extra nvarchar(5) not null default 'e', more int", ""},
        Case{"insert into a (id) values (10)", ""},
        Case{"select id, extra, more from a", "2 'e' Null | 3 'e' Null | 10 'e' Null"},
        Case{"/* a comment -- */ select /* of /* two */ levels */ 1 -- and the end", "1"},
        Case{"select 'it''s', N'a''b'", "'it's' 'a'b'"},
        Case{"select db_name()", "'account'"},
        Case{"select id from [account].[dbo].[a] where id = 2", "2"},
        Case{"select id from account..a where id = 2", "2"},
        Case{"select id from nowhere..a", "-2147217865: Invalid object name 'nowhere..a'."},
        Case{"select TABLE_NAME from INFORMATION_SCHEMA.TABLES order by 1", "'a' | 'b' | 'c'"},
        Case{"select COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, IS_NULLABLE from INFORMATION_SCHEMA.COLUMNS "
             "where TABLE_NAME = 'b'",
             "'id' 'int' Null 'YES' | 'txt' 'nvarchar' 10 'YES'"},
    });
}

TEST_P(Language, Functions) {
    Check(std::array{
        Case{"select len(N'中文  '), len(''), left(N'中文字', 2), right('abc', 2), substring('abcdef', 2, 3)",
             "2 0 '中文' 'bc' 'bcd'"},
        Case{"select substring('abc', 0, 2), substring('abc', 3, 9), left('abc', 9)", "'a' 'c' 'abc'"},
        Case{"select left('abc', -1)", "-2147217900: Invalid length parameter passed to the left function."},
        Case{"select ltrim('  a '), rtrim(' a  '), upper(N'éa'), lower('ABC')", "'a ' ' a' 'ÉA' 'abc'"},
        Case{"select replace('aXbx', 'x', '-'), charindex('B', 'abab'), charindex('b', 'abab', 3), charindex('z', "
             "'a')",
             "'a-b-' 2 4 0"},
        Case{"select year('2023-05-01'), month('2023-05-01'), day('2023-05-01')", "2023 5 1"},
        Case{"select datediff(day, '2023-01-31 23:59', '2023-02-01'), datediff(mm, '2023-01-31', '2023-03-01'), "
             "datediff(yy, '2022-12-31', '2023-01-01')",
             "1 2 1"},
        Case{"select convert(varchar(10), dateadd(month, 1, '2023-01-31'), 120), "
             "convert(varchar(10), dateadd(d, -1, '2023-03-01'), 120)",
             "'2023-02-28' '2023-02-28'"},
        Case{"select convert(varchar(10), cast('2023-01-31' as datetime) + 1, 120)", "'2023-02-01'"},
        Case{"select datepart(weekday, '2023-05-01'), datepart(dy, '2023-02-01')", "2 32"},
        Case{"select nosuch(1)", "-2147217900: 'nosuch' is not a recognized built-in function name."},
        Case{"select len()", "-2147217900: The len function requires 1 argument(s)."},
    });
}

TEST_P(Language, NullIsUnknown) {
    Db().Execute("create table t (a nvarchar(5), b int)");
    Db().Execute("insert into t values (Null, Null)");
    Db().Execute("insert into t values ('', 0)");
    Check(std::array{
        Case{"select count(*) from t where a = Null", "0"},
        Case{"select count(*) from t where a <> ''", "0"},
        Case{"select count(*) from t where not (a = '')", "0"},
        Case{"select count(*) from t where a is null", "1"},
        Case{"select count(*) from t where a = ''", "1"}, // the empty text is a text
        Case{"select count(*) from t where b in (1, Null)", "0"},
        Case{"select a + 'x' from t where b is null", "Null"},
        Case{"select isnull(a, 'none') from t order by b", "'none' | ''"},
    });
}

TEST_P(Language, TextComparesBlindToCaseAndTrailingBlanks) {
    Db().Execute("create table t (c nvarchar(20))");
    for (const char* text : {"Abc", "abc  ", "ÄÖ", "中文 ", "Ωμέγα", "ПРИВЕТ", "ＡＢ"}) {
        Db().Execute(std::string("insert into t values (N'") + text + "')");
    }
    Check(std::array{
        Case{"select count(*) from t where c = 'ABC'", "2"},
        Case{"select count(*) from t where c = ' abc'", "0"},
        Case{"select count(*) from t where c = N'äö  '", "1"},
        Case{"select count(*) from t where c = N'中文'", "1"},
        Case{"select count(*) from t where c = N'ωΜΈγα'", "1"},
        Case{"select count(*) from t where c = N'привет'", "1"},
        Case{"select count(*) from t where c = N'ａｂ'", "1"},
        Case{"select count(*) from t where c in (N'x', N'aBC')", "2"},
        Case{"select count(*) from t where c like 'AB_%'", "2"},
        Case{"select count(distinct c) from t", "6"},
        Case{"select count(*) from (select c from t group by c) g", "6"},
        Case{"select count(*) from t where c < 'abd'", "3"},
        Case{"select count(*) from t where upper(c) = 'abc'", "2"},
        Case{"select count(*) from t where isnull(c, '') = 'ABC '", "2"},
    });
}

// A driver manager takes none of these.
TEST(EmptyBatches, AnswerNothing) {
    const auto db = OpenMemory();
    RunCases(*db, std::array{Case{"", ""}, Case{"  ;", ""}});
}

} // namespace
} // namespace test_sql
