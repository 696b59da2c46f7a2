#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

class Types : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, Types, testing::ValuesIn(Places()), PlaceName);

TEST_P(Types, AreTakenAndRefusedByColumns) {
    Check(std::array{
        Case{"create table t (n nvarchar(3), v varchar(4), c nchar(3), b bit, ti tinyint, si smallint, i int, bi "
             "bigint, f "
             "float, r real, d decimal(10,2), m money, dt datetime, sd smalldatetime, da date, bin varbinary(2), u "
             "uniqueidentifier, x nvarchar(max))",
             ""},
        Case{"insert into t (n, v) values (N'中文字', N'中文')", ""},
        Case{"insert into t (n) values (N'中文字四')", "-2147217833: String or binary data would be truncated."},
        Case{"insert into t (n) values ('abc   ')", ""}, // surplus blanks are dropped
        Case{"insert into t (v) values (N'中文a')", "-2147217833: String or binary data would be truncated."},
        Case{"insert into t (n) values (N'𠀀a')", ""}, // two units and one
        Case{"insert into t (n) values (N'𠀀ab')", "-2147217833: String or binary data would be truncated."},
        Case{"insert into t (c, b, ti, si, i, bi) values ('a', 'true', 255, -32768, 2147483647, "
             "9223372036854775807)",
             ""},
        Case{"select c, b, ti, si, i, bi from t where c = 'a'", "'a  ' True 255 -32768 2147483647 9223372036854775807"},
        Case{"insert into t (ti) values (256)",
             "-2147217833: Arithmetic overflow error for data type tinyint, value = 256."},
        Case{"insert into t (ti) values (-1)",
             "-2147217833: Arithmetic overflow error for data type tinyint, value = -1."},
        Case{"insert into t (si) values (40000)",
             "-2147217833: Arithmetic overflow error for data type smallint, value = 40000."},
        Case{"insert into t (i) values (3000000000)",
             "-2147217833: Arithmetic overflow error converting expression to data type int."},
        Case{"insert into t (i) values ('12x')",
             "-2147217913: Conversion failed when converting the varchar value '12x' to data type int."},
        Case{"insert into t (i) values (N'1.5')",
             "-2147217913: Conversion failed when converting the nvarchar value '1.5' to data type int."},
        Case{"insert into t (i) values ('99999999999')",
             "-2147217833: The conversion of the varchar value '99999999999' overflowed an int column."},
        Case{"delete t", ""},
        Case{"insert into t (i, b) values (' 12 ', 5)", ""},
        Case{"insert into t (i, b) values ('', 0)", ""}, // the empty text is 0
        Case{"insert into t (i) values (-7.9)", ""},     // a number with a fraction is cut
        Case{"select i, b from t", "12 True | 0 False | -7 Null"},
        Case{"delete t", ""},
        Case{"insert into t (d, m, f, r) values (1.005, 1.00005, 1e3, 0.1)", ""},
        Case{"insert into t (d, m, f, r) values ('-12.345', '1,234.5', '2.5', '1')", ""},
        Case{"insert into t (d) values (123456789.00)",
             "-2147217833: Arithmetic overflow error converting numeric to data type numeric."},
        Case{"insert into t (d) values ('abc')", "-2147217913: Error converting data type varchar to numeric."},
        Case{"insert into t (f) values ('abc')", "-2147217913: Error converting data type varchar to float."},
        Case{"insert into t (m) values ('abc')",
             "-2147217913: Cannot convert a char value to money. The char value has incorrect syntax."},
        Case{"select d, m, f, r from t", "1.01m 1.0001m 1000r 0.1f | -12.35m 1234.5000m 2.5r 1f"},
        Case{"delete t", ""},
        Case{"insert into t (bin) values (0x0A0B)", ""},
        Case{"insert into t (bin) values (0x0A0B0C)", "-2147217833: String or binary data would be truncated."},
        Case{"insert into t (u) values ('6F9619FF-8B86-D011-B42D-00C04FC964FF')", ""},
        Case{"insert into t (u) values ('6F96')",
             "-2147217913: Conversion failed when converting from a character string to uniqueidentifier."},
        Case{"select bin, u from t", "0x0A0B Null | Null '6F9619FF-8B86-D011-B42D-00C04FC964FF'"},
    });
}

TEST(TypesHere, SinglesAreCountedAndComparedAsTheNumbersThatTheyAre) {
    const auto db = OpenMemory();
    RunCases(*db, std::array{
                      Case{"create table t (r real, f float)", ""},
                      Case{"insert into t (r, f) values (0.1, 0.1)", ""},
                      Case{"insert into t (r, f) values (16777217, 16777217)", ""}, // which 24 bits do not hold
                      Case{"select r, r + r, r * f from t where r < 1", "0.1f 0.2f 0.010000000149011612r"},
                      Case{"select count(*) from t where r = 0.1", "1"},
                      Case{"select count(*) from t where r = '0.1'", "1"},
                      Case{"select count(*) from t where r = f", "0"},
                      Case{"select count(*) from t where r = 16777216", "1"},
                      Case{"select r from t where r > 1", "16777216f"},
                      Case{"select convert(nvarchar(20), r) from t", "'0.1' | '1.67772e+007'"},
                      Case{"select cast(r as float) from t where r < 1", "0.10000000149011612r"},
                  });
}

TEST(TypesHere, ATextThatSqliteCannotTakeIsNoNull) {
    const auto db = OpenMemory();
    EXPECT_EQ(Answer(*db, "create table t (x nvarchar(max))"), "");
    // A thousand million bytes otherwise, which would take a test too long.
    sqlite3_limit(db->Handle(), SQLITE_LIMIT_LENGTH, 5000);
    const std::string refused = "-2147467259: A value is too long for the database.";
    const std::string body(6000, 'x');
    EXPECT_EQ(Answer(*db, "insert into t (x) values ('" + body + "')"), refused);
    EXPECT_EQ(Answer(*db, "insert into t (x) values ('''" + body + "')"), refused);
    EXPECT_EQ(Answer(*db, "select x from t where x = N'" + body + "'"), refused);
    EXPECT_EQ(Answer(*db, "select count(*) from t"), "0");
}

TEST_P(Types, DatesAreStoredAsTheDateTheyMean) {
    Check(std::array{
        Case{"create table t (dt datetime, sd smalldatetime, da date)", ""},
        Case{"insert into t (dt) values ('2023/5/1')", ""},
        Case{"insert into t (dt) values ('2023-05-01')", ""},
        Case{"insert into t (dt) values ('20230501')", ""},
        Case{"insert into t (dt) values ('2023.5.1')", ""},
        Case{"insert into t (dt) values ('5/1/2023')", ""},
        Case{"insert into t (dt) values ('May 1, 2023')", ""},
        Case{"insert into t (dt) values ('1 May 2023 00:00')", ""},
        Case{"insert into t (dt) values ('2023-05-01T00:00:00')", ""},
        Case{"select count(*) from t where dt = '2023-5-1'", "8"},
        Case{"select distinct dt from t", "#45047#"},
        Case{"delete t", ""},
        Case{"insert into t (dt) values ('2023-05-01 12:30:15.123')", ""},
        Case{"insert into t (dt) values ('2023-05-01 6:00 PM')", ""},
        Case{"insert into t (dt) values ('')", ""}, // the server's day 0
        Case{"select convert(nvarchar(30), dt, 121) from t",
             "'2023-05-01 12:30:15.123' | '2023-05-01 18:00:00.000' | '1900-01-01 00:00:00.000'"},
        Case{"delete t", ""},
        Case{"insert into t (dt) values ('2023-13-01')",
             "-2147217913: The conversion of a varchar data type to a datetime data type resulted in an "
             "out-of-range value."},
        Case{"insert into t (dt) values (N'2023-02-30')",
             "-2147217913: The conversion of a nvarchar data type to a datetime data type resulted in an "
             "out-of-range value."},
        Case{"insert into t (dt) values ('yesterday')",
             "-2147217913: Conversion failed when converting date and/or time from character string."},
        Case{"insert into t (dt) values ('1752-12-31')",
             "-2147217913: The conversion of a varchar data type to a datetime data type resulted in an "
             "out-of-range value."},
        Case{"insert into t (sd, da) values ('2023-05-01 12:30:31', '2023-05-01 12:30')", ""},
        Case{"select convert(varchar(30), sd, 120), convert(varchar(30), da, 120) from t",
             "'2023-05-01 12:31:00' '2023-05-01'"},
        Case{"select count(*) from t where dt > 'abc'",
             "-2147217913: Conversion failed when converting date and/or time from character string."},
    });
}

TEST_P(Types, DatesAreShownInEveryStyle) {
    Db().Execute("create table t (d datetime)");
    Db().Execute("insert into t values ('2023-05-01 13:04:05.007')");
    Check(std::array{
        Case{"select convert(varchar(30), d) from t", "'May  1 2023  1:04PM'"},
        Case{"select convert(varchar(30), d, 20) from t", "'2023-05-01 13:04:05'"},
        Case{"select convert(varchar(10), d, 23) from t", "'2023-05-01'"},
        Case{"select convert(varchar(10), d, 111) from t", "'2023/05/01'"},
        Case{"select convert(char(8), d, 112) from t", "'20230501'"},
        Case{"select convert(varchar(10), d, 120) from t", "'2023-05-01'"},
        Case{"select convert(nvarchar(30), d, 121) from t", "'2023-05-01 13:04:05.007'"},
        Case{"select convert(nvarchar(30), d, 126) from t", "'2023-05-01T13:04:05.007'"},
    });
}

TEST_P(Types, NumbersAreComputedAsTheServerDoes) {
    Check(std::array{
        Case{"select 7/2, -7/2, 7%3, 7.0/2, 1/3.0", "3 -3 1 3.500000m 0.333333m"},
        Case{"select 0.1 + 0.2, 1.10 * 1.10, 5 - 0.01", "0.3m 1.2100m 4.99m"},
        Case{"select 1/0", "-2147467259: Divide by zero error encountered."},
        Case{"select 2147483647 + 1", "-2147217833: Arithmetic overflow error converting expression to data type int."},
        Case{"select 99999999999999999999999999999999999998 + 1", "99999999999999999999999999999999999999m"},
        Case{"select cast(1.005 as decimal(10,2)), cast('7' as int) + 1, cast(2.9 as int)", "1.01m 8 2"},
        Case{"select convert(varchar(20), 12.50), convert(varchar(20), convert(money, 1234.5), 1)",
             "'12.50' '1,234.50'"},
        Case{"select convert(char, convert(money, 0x00000000000007D1), 2)", "'0.2001                        '"},
        Case{"select round(2.675, 2), round(-1234.5, -2), floor(-1.5), ceiling(1.2), abs(-3)",
             "2.680m -1200.0m -2m 2m 3"},
        Case{"select 1e0 / 4, 1 + 1.5e0", "0.25r 2.5r"},
        Case{"select 'a' - 'b'", "-2147217900: Operand data type varchar is invalid for subtract operator."},
    });
}

TEST_P(Types, AggregatesAreExact) {
    Db().Execute("create table t (g nvarchar(2), i int, d decimal(20,4), m money, f float)");
    for (int i = 0; i < 10; ++i) {
        Db().Execute("insert into t values ('a', 3, 0.1, 0.1, 0.5)");
    }
    Db().Execute("insert into t values ('B', 2000000000, 99999999999999.9999, 1, 1)");
    Db().Execute("insert into t values ('b', 2000000000, Null, Null, Null)");
    Check(std::array{
        Case{"select sum(d), sum(m), sum(f), avg(i), count(d) from t where g = 'A'", "1.0000m 1.0000m 5r 3 10"},
        Case{"select max(d) from t", "99999999999999.9999m"},
        Case{"select sum(i) from t", "-2147217833: Arithmetic overflow error converting expression to data type int."},
        Case{"select g, count(*) from t group by g order by g", "'a' 10 | 'B' 2"},
        Case{"select count(distinct g) from t", "2"},
        Case{"select sum(i), min(g) from t where 1=2", "Null Null"},
        Case{"select g, sum(i) from t",
             "-2147217900: Column 't.g' is invalid in the select list because it is not contained in either "
             "an aggregate function or the GROUP BY clause."},
    });
}

struct FieldCase {
    const char* expression;
    host::FieldType type;
    int size;
    int precision;
    int scale;
};

TEST_P(Types, ColumnsReportAdosTypes) {
    Db().Execute(
        "create table t (nv nvarchar(10), vc varchar(20), nc nchar(3), ch char(4), i int, si smallint, ti tinyint, "
        "bi bigint, b bit, f float, r real, d decimal(12,3), m money, dt datetime, ts timestamp, nm nvarchar(max), "
        "tx text, im image, vb varbinary(5))");
    using host::FieldType;
    const std::array cases{
        FieldCase{"nv", FieldType::varWideChar, 10, 0, 0},
        FieldCase{"vc", FieldType::varChar, 20, 0, 0},
        FieldCase{"nc", FieldType::wideCharacter, 3, 0, 0},
        FieldCase{"ch", FieldType::character, 4, 0, 0},
        FieldCase{"i", FieldType::integer, 0, 0, 0},
        FieldCase{"si", FieldType::smallInt, 0, 0, 0},
        FieldCase{"ti", FieldType::unsignedTinyInt, 0, 0, 0},
        FieldCase{"bi", FieldType::bigInt, 0, 0, 0},
        FieldCase{"b", FieldType::boolean, 0, 0, 0},
        FieldCase{"f", FieldType::doubleFloat, 0, 0, 0},
        FieldCase{"r", FieldType::single, 0, 0, 0},
        FieldCase{"d", FieldType::numeric, 0, 12, 3},
        FieldCase{"m", FieldType::currency, 0, 0, 0},
        FieldCase{"dt", FieldType::dbTimeStamp, 0, 0, 0},
        FieldCase{"ts", FieldType::binary, 8, 0, 0},
        FieldCase{"nm", FieldType::longVarWideChar, 0x3fffffff, 0, 0},
        FieldCase{"tx", FieldType::longVarChar, 0x3fffffff, 0, 0},
        FieldCase{"im", FieldType::longVarBinary, 0x3fffffff, 0, 0},
        FieldCase{"vb", FieldType::varBinary, 5, 0, 0},
        FieldCase{"'abc'", FieldType::varChar, 3, 0, 0},
        FieldCase{"''", FieldType::varChar, 1, 0, 0},
        FieldCase{"1", FieldType::integer, 0, 0, 0},
        FieldCase{"1.25", FieldType::numeric, 0, 3, 2},
        FieldCase{"sum(d)", FieldType::numeric, 0, 38, 3},
        FieldCase{"count(*)", FieldType::integer, 0, 0, 0},
        FieldCase{"convert(nvarchar(60), N'')", FieldType::varWideChar, 60, 0, 0},
        FieldCase{"cast(1 as decimal(38,4))", FieldType::numeric, 0, 38, 4},
        FieldCase{"isnull(nv, N'')", FieldType::varWideChar, 10, 0, 0},
        FieldCase{"left(vc, 2)", FieldType::varChar, 2, 0, 0},
        FieldCase{"nv + 'ab'", FieldType::varWideChar, 12, 0, 0},
        FieldCase{"d * d", FieldType::numeric, 0, 25, 6},
        FieldCase{"max(dt)", FieldType::dbTimeStamp, 0, 0, 0},
    };
    for (const FieldCase& each : cases) {
        const std::string sql = std::string("select ") + each.expression + " as x from t";
        const refhost::ResultSet result = Db().Query(sql);
        ASSERT_EQ(result.fields->size(), 1U) << sql;
        const host::Field& field = result.fields->front();
        EXPECT_EQ(field.name, "x");
        EXPECT_EQ(field.type, each.type) << sql;
        EXPECT_EQ(field.definedSize, each.size) << sql;
        EXPECT_EQ(field.precision, each.precision) << sql;
        EXPECT_EQ(field.scale, each.scale) << sql;
    }
}

} // namespace
} // namespace test_sql
