#include "tests/refhost/sql/Places.h"
#include "tests/refhost/sql/Support.h"

#include <array>

namespace test_sql {
namespace {

class Types : public AtEachPlace {};

INSTANTIATE_TEST_SUITE_P(On, Types, testing::ValuesIn(Places()), PlaceName);

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
