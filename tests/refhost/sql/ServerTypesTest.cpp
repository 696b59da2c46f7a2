// Functions and types in the places where SQL Server's answer is not the obvious one. The expectations are its
// documentation's.

#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

class ServerTypes : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, ServerTypes, testing::ValuesIn(Places()), PlaceName);

TEST_P(ServerTypes, SignHasItsArgumentsType) {
    Db().Execute("create table t (i int, m money, d decimal(5,2), f float)");
    Db().Execute("insert into t values (-5, -2.5, 7.25, -0.5)");
    Check(std::array{
        Case{"select sign(i), sign(m), sign(d), sign(f) from t", "-1 -1.0000m 1.00m -1r"},
        Case{"select sign(0), sign(12), sign(cast(null as int))", "0 1 Null"},
    });
}

TEST_P(ServerTypes, ConvertReadsDatesInTheOrderOfItsStyle) {
    Check(std::array{
        Case{"select convert(varchar(10), convert(datetime, '05/01/2024', 103), 23)", "'2024-01-05'"},
        Case{"select convert(varchar(10), convert(datetime, '05/01/2024', 101), 23)", "'2024-05-01'"},
        Case{"select convert(varchar(10), convert(datetime, '05.01.24', 4), 23)", "'2024-01-05'"},
        Case{"select convert(varchar(10), convert(datetime, '05-01-24', 5), 23)", "'2024-01-05'"},
        Case{"select convert(varchar(10), convert(datetime, '05-01-24', 10), 23)", "'2024-05-01'"},
        Case{"select convert(varchar(10), convert(date, '2024-05-01', 103), 23)", "'2024-05-01'"},
        Case{"select convert(varchar(10), convert(datetime, '20240501', 103), 23)", "'2024-05-01'"},
        Case{"select convert(datetime, '13/25/2024', 103)",
             "-2147217913: The conversion of a varchar data type to a datetime data type resulted in an "
             "out-of-range value."},
    });
}

TEST_P(ServerTypes, ANullWithATypeKeepsItInIsnull) {
    Check(std::array{
        Case{"select isnull(cast(null as varchar(2)), 'abcdef')", "'ab'"},
        Case{"select isnull(cast(null as int), '7') + 1", "8"},
        Case{"select isnull(null, 'abcdef')", "'abcdef'"},
    });
}

TEST_P(ServerTypes, PowersAndRoots) {
    Check(std::array{
        Case{"select power(2, 10), power(2, 0.5), power(2.5, 2), power(cast(2 as float), 0.5)",
             "1024 1 6.3m 1.4142135623730951r"},
        Case{"select power(2, 31)", "-2147217833: Arithmetic overflow error for type int, value = 2147483648.000000."},
        Case{"select power(cast(2 as bigint), 40)", "1099511627776"},
        Case{"select sqrt(16), sqrt(null)", "4r Null"},
        Case{"select sqrt(-1)", "-2147217900: An invalid floating point operation occurred."},
    });
}

TEST_P(ServerTypes, AveragesOfMoneyAreCut) {
    Db().Execute("create table t (m money, d decimal(9,2), i int)");
    Db().Execute("insert into t values (1, 1, 1), (2, 2, 2), (2, 2, 2)");
    Check(std::array{
        Case{"select avg(m), avg(d), avg(i) from t", "1.6666m 1.666666m 1"},
        Case{"select sum(m) / 3 from t", "1.6666m"},
    });
}

TEST_P(ServerTypes, NumbersThatDoNotFitAreToldByTheServersOwnNumbers) {
    Check(std::array{
        Case{"select cast(3e9 as int)",
             "-2147217833: Arithmetic overflow error for type int, value = 3000000000.000000."},
        Case{"select cast(1e30 as bigint)",
             "-2147217833: Arithmetic overflow error converting expression to data type bigint."},
        Case{"select cast('12x' as bigint)", "-2147217913: Error converting data type varchar to bigint."},
        Case{"select cast('99999999999999999999' as bigint)",
             "-2147217833: Arithmetic overflow error converting expression to data type bigint."},
        Case{"select cast('300' as tinyint)",
             "-2147217833: The conversion of the varchar value '300' overflowed an INT1 column."},
        Case{"select 99999999999999999999999999999999999999 * 10",
             "-2147217833: Arithmetic overflow error converting expression to data type numeric."},
        Case{"select 99999999999999999999999999999999999999 + 1",
             "-2147217833: Arithmetic overflow error converting expression to data type numeric."},
        Case{"select 999999999999999999999999999999999999999",
             "-2147217900: The number '999999999999999999999999999999999999999' is out of the range for numeric "
             "representation (maximum precision 38)."},
    });
}

TEST_P(ServerTypes, DatesTellTheirNamesAndFractions) {
    Check(std::array{
        Case{"select datename(month, '2024-05-01'), datename(dw, '2024-05-01'), datename(yy, '2024-05-01')",
             "'May' 'Wednesday' '2024'"},
        Case{"select datediff(ms, '2024-05-01 00:00:00.000', '2024-05-01 00:00:00.001')", "1"},
        Case{"select datediff(day, '1600-01-01', '1600-03-01')", "60"},
        Case{"select convert(varchar(40), cast('2024-05-01 13:04:05.1234567' as datetime2))",
             "'2024-05-01 13:04:05.1234567'"},
        Case{"select convert(varchar(40), cast('2024-05-01 13:04:05.1234567' as datetime2(3)))",
             "'2024-05-01 13:04:05.123'"},
        Case{"select convert(varchar(40), cast('2024-05-01 13:04:05.6' as datetime2(0)), 121)",
             "'2024-05-01 13:04:06'"},
        Case{"select convert(varchar(40), cast('0001-01-01' as datetime2), 120)", "'0001-01-01 00:00:00'"},
        Case{"select convert(varchar(40), cast('1600-02-29 01:02:03' as datetime2(0)), 126)", "'1600-02-29T01:02:03'"},
        Case{"select cast('2024-05-01 13:04:05.1234' as datetime)",
             "-2147217913: Conversion failed when converting date and/or time from character string."},
        Case{"select convert(varchar(30), cast('2024-05-01 13:04:05.12' as datetime), 121)",
             "'2024-05-01 13:04:05.120'"},
        Case{"select cast('x' as smalldatetime)",
             "-2147217913: Conversion failed when converting character string to smalldatetime data type."},
    });
}

TEST_P(ServerTypes, ALiteralInABranchThatIsNotReachedRaisesNothing) {
    Db().Execute("create table t (i int)");
    Db().Execute("insert into t values (1), (2)");
    Check(std::array{
        Case{"select case when 1 = 1 then 1 else 'abc' end", "1"},
        Case{"select case i when 9 then 'abc' else i end from t", "1 | 2"},
        Case{"select case i when 2 then 'abc' else i end from t where i = 1", "1"},
        Case{"select case when 1 = 2 then 1 else 'abc' end",
             "-2147217913: Conversion failed when converting the varchar value 'abc' to data type int."},
    });
}

TEST_P(ServerTypes, TheCodePageHasTheEuroSign) {
    if (GetParam() == Place::server) {
        GTEST_SKIP() << "FreeTDS reads code page 936 by the system's iconv, which has no euro sign there";
    }
    Check(std::array{Case{"select '中€α'", "'中€α'"}});
}

TEST_P(ServerTypes, TextWithoutNGoesThroughTheCodePage) {
    Db().Execute("create table t (v varchar(10), n nvarchar(10), m varchar(max))");
    Check(std::array{
        Case{"select '中α', 'ä한𠀀', N'ä한𠀀'", "'中α' '\?\?\?\?' 'ä한𠀀'"},
        Case{"insert into t (v, n, m) values (N'ä中', 'ä中', N'한中')", ""},
        Case{"select v, n, m from t", "'?中' '?中' '?中'"},
        Case{"update t set n = N'한', v = 'x'", ""},
        Case{"update t set v = n, m = n", ""},
        Case{"select v, m, n from t", "'?' '?' '한'"},
        Case{"select 'ä' + N'ä', N'ä' + 'b', cast(N'ä' as varchar(5))", "'?ä' 'äb' '?'"},
        Case{"select n from t where n = '한'", ""},
        Case{"select n from t where n = N'한'", "'한'"},
        Case{"select datalength('ä中'), datalength(N'ä中')", "3 4"},
    });
}

TEST_P(ServerTypes, ABackslashAtALinesEndContinuesALiteral) {
    Db().Execute("create table t (c nvarchar(20))");
    Check(std::array{
        Case{"select 'abc\\\ndef', N'a\\\r\nb'", "'abcdef' 'ab'"},
        Case{"select 'a\\b', 'a\\\r', 'a\nb', 'it''s \\\nso'", "'a\\b' 'a\\\r' 'a\nb' 'it's so'"},
        Case{"insert into t values (N'甲\\\n乙')", ""},
        Case{"insert into t values (N'甲\n乙')", ""},
        Case{"select c from t where c = N'甲\\\n乙'", "'甲乙'"},
        Case{"select len('\\\n')", "0"},
    });
}

class ServerMessages : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, ServerMessages, testing::ValuesIn(Places()), PlaceName);

TEST_P(ServerMessages, ADuplicateKeyIsToldForEveryWayToWriteIt) {
    Db().Execute("create table t (k nvarchar(5) not null default 'd', n int, constraint PK_t primary key (k))");
    Db().Execute("create table s (k nvarchar(5), n int)");
    Db().Execute("insert into t values ('a', 1), ('b', 2), ('d', 3)");
    Db().Execute("insert into s values ('x', 1), ('B', 2), ('y', 3), ('Y', 4)");
    const std::string head = "-2147217873: Violation of PRIMARY KEY constraint 'PK_t'. Cannot insert duplicate key in "
                             "object 'dbo.t'. The duplicate key value is ";
    EXPECT_EQ(Answer(Db(), "insert into t values ('c', 1), ('A', 2)"), head + "(A).");
    EXPECT_EQ(Answer(Db(), "insert into t values ('c', 1), ('C', 2)"), head + "(c).");
    EXPECT_EQ(Answer(Db(), "insert into t default values"), head + "(d).");
    EXPECT_EQ(Answer(Db(), "insert into t (n) values (5)"), head + "(d).");
    EXPECT_EQ(Answer(Db(), "insert into t select k, n from s"), head + "(B).");
    EXPECT_EQ(Answer(Db(), "insert into t select k, n from s where n > 2"), head + "(y).");
    EXPECT_EQ(Answer(Db(), "update t set k = 'b' where n = 1"), head + "(b).");
    EXPECT_EQ(Answer(Db(), "update t set k = 'z'"), head + "(z).");
    EXPECT_EQ(Answer(Db(), "update t set k = k + 'q'"), "");
    EXPECT_EQ(Answer(Db(), "select k from t order by n"), "'aq' | 'bq' | 'dq'");
}

TEST_P(ServerMessages, ACheckOfOneColumnNamesIt) {
    Db().Execute(
        "create table t (a int, b int, constraint CK_a check (a > 0 and a < 9), constraint CK_ab check (a < b))");
    Check(std::array{
        Case{"insert into t values (0, 5)",
             "-2147217873: The INSERT statement conflicted with the CHECK constraint \"CK_a\". The conflict "
             "occurred in database \"account\", table \"dbo.t\", column 'a'."},
        Case{"insert into t values (7, 5)",
             "-2147217873: The INSERT statement conflicted with the CHECK constraint \"CK_ab\". The conflict "
             "occurred in database \"account\", table \"dbo.t\"."},
    });
}

} // namespace
} // namespace test_sql
