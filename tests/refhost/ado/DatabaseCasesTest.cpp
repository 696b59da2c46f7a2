// What ADO over SQL Server promises, on every kind of account database: the embedded one, the same behind an ODBC
// driver, and the server that KOVRA_TEST_ODBC names (a connection string; the cases make and drop tables whose names
// begin with "kovra_case").

#include "ModPub/Conversions.h"
#include "refhost/OpenDatabase.h"
#include "refhost/ado/Connection.h"
#include "refhost/ado/Recordset.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using host::CursorLocation;
using host::CursorType;
using host::Decimal;
using host::FieldType;
using host::LockType;
using host::Value;

enum class Kind { embedded, embeddedThroughOdbc, server };

std::string KindName(const testing::TestParamInfo<Kind>& kind) {
    switch (kind.param) {
    case Kind::embedded:
        return "Embedded";
    case Kind::embeddedThroughOdbc:
        return "EmbeddedThroughOdbc";
    case Kind::server:
        break;
    }
    return "Server";
}

std::vector<Kind> Kinds() {
    std::vector<Kind> kinds = {Kind::embedded, Kind::embeddedThroughOdbc};
    if (std::getenv("KOVRA_TEST_ODBC") != nullptr) {
        kinds.push_back(Kind::server);
    }
    return kinds;
}

class DatabaseCases : public testing::TestWithParam<Kind> {
protected:
    void SetUp() override {
        refhost::Connection creator(refhost::OpenOrCreate());
        creator.Open(EmbeddedText(), "", "", host::command_option::unspecified);
        connection_ = Connect();
        Execute("if exists (select * from sysobjects where id = object_id(N'[dbo].[kovra_case]')) "
                "begin drop table [dbo].[kovra_case] end");
    }

    std::unique_ptr<refhost::Connection> Connect() const {
        auto connection = std::make_unique<refhost::Connection>(refhost::OpenExisting());
        connection->Open(ConnectionText(), "", "", host::command_option::unspecified);
        return connection;
    }

    void Execute(std::string_view sql) { connection_->Execute(sql, host::command_option::unspecified); }

    std::unique_ptr<refhost::Recordset> Open(std::string_view sql, CursorType cursor = CursorType::openStatic,
                                             CursorLocation location = CursorLocation::server) {
        auto recordset = std::make_unique<refhost::Recordset>();
        recordset->SetCursorLocation(location);
        recordset->Open(sql, *connection_, cursor, LockType::readOnly, host::command_option::text);
        return recordset;
    }

    Value Single(std::string_view sql) { return Open(sql)->FieldValue(0); }

    /// The number of the error that a statement raises, 0 for none; its description goes to `description_`, the
    /// server's own number to `native_`.
    host::ErrorNumber ErrorOf(std::string_view sql) {
        try {
            Execute(sql);
        } catch (const host::Error& error) {
            description_ = error.description();
            native_ = error.native();
            return error.number();
        }
        return 0;
    }

    refhost::Connection& connection() { return *connection_; }

    std::string description_;
    int native_ = 0;

private:
    std::string EmbeddedText() const {
        return "Provider=KovraAccount;Data Source=" + (folder_.path() / "account.db").string();
    }
    std::string ConnectionText() const {
        switch (GetParam()) {
        case Kind::embedded:
            return EmbeddedText();
        case Kind::embeddedThroughOdbc:
            return "Driver=" + test::OdbcDriverPath() + ";" + EmbeddedText();
        case Kind::server:
            break;
        }
        return std::getenv("KOVRA_TEST_ODBC");
    }

    test::TemporaryFolder folder_;
    std::unique_ptr<refhost::Connection> connection_;
};

INSTANTIATE_TEST_SUITE_P(On, DatabaseCases, testing::ValuesIn(Kinds()), KindName);

TEST_P(DatabaseCases, StaticCursorCountsItsRows) {
    Execute("create table kovra_case (a int)");
    EXPECT_EQ(Open("select a from kovra_case")->RecordCount(), 0);
    Execute("insert into kovra_case (a) values (1)");
    Execute("insert into kovra_case (a) values (2)");
    EXPECT_EQ(Open("select a from kovra_case")->RecordCount(), 2);
}

TEST_P(DatabaseCases, SinglesComeAsSingles) {
    Execute("create table kovra_case (a real, b real)");
    Execute("insert into kovra_case (a) values (0.1)");
    EXPECT_EQ(Single("select a from kovra_case"), Value(0.1F));
    EXPECT_EQ(Single("select b from kovra_case"), Value(host::Null{}));
    EXPECT_EQ(ModPub::ToText(Single("select a from kovra_case")), "0.1");
    EXPECT_EQ(Single("select count(*) from kovra_case where a = 0.1"), Value(1));
}

TEST_P(DatabaseCases, ForwardOnlyCursorOnTheServerDoesNotCount) {
    EXPECT_EQ(Open("select 1 as a", CursorType::forwardOnly)->RecordCount(), -1);
}

TEST_P(DatabaseCases, ForwardOnlyCursorAtTheClientCounts) {
    EXPECT_EQ(Open("select 1 as a", CursorType::forwardOnly, CursorLocation::client)->RecordCount(), 1);
}

TEST_P(DatabaseCases, EmptyRecordsetIsAtBothEnds) {
    Execute("create table kovra_case (a int)");
    const auto recordset = Open("select a from kovra_case");
    EXPECT_TRUE(recordset->AtBOF());
    EXPECT_TRUE(recordset->AtEOF());
    EXPECT_THROW(recordset->FieldValue(0), host::Error);
}

TEST_P(DatabaseCases, MovesFromRowToRow) {
    Execute("create table kovra_case (a int)");
    Execute("insert into kovra_case (a) values (1)");
    Execute("insert into kovra_case (a) values (2)");
    const auto recordset = Open("select a from kovra_case order by a");
    EXPECT_EQ(recordset->FieldValue("A"), Value(1));
    recordset->MoveNext();
    EXPECT_EQ(recordset->FieldValue("a"), Value(2));
    recordset->MoveNext();
    EXPECT_TRUE(recordset->AtEOF());
}

TEST_P(DatabaseCases, ReportsAdosTypesAndExactValues) {
    Execute("create table kovra_case (cText nvarchar(20), cChar char(3), iSmall smallint, iInt int not null, bBit bit, "
            "fFloat float, dDecimal decimal(30, 10), mMoney money, dDate datetime, cMax nvarchar(max))");
    Execute(
        "insert into kovra_case values (N'仓库𠮷', 'ab', -3, 7, 1, 0.1, -0.5, 12.3456, '2023-05-01 06:00:00', N'长')");
    const auto recordset = Open("select * from kovra_case");
    const std::vector<std::pair<FieldType, Value>> expected = {
        {FieldType::varWideChar, Value("仓库𠮷")},
        {FieldType::character, Value("ab ")},
        {FieldType::smallInt, Value(-3)},
        {FieldType::integer, Value(7)},
        {FieldType::boolean, Value(true)},
        {FieldType::doubleFloat, Value(0.1)},
        {FieldType::numeric, Value(Decimal{"-0.5000000000"})},
        {FieldType::currency, Value(Decimal{"12.3456"})},
        // 2023-05-01 is day 45047 from 1899-12-30; six o'clock is a quarter of it.
        {FieldType::dbTimeStamp, Value(host::Date{45047.25})},
        {FieldType::longVarWideChar, Value("长")},
    };
    ASSERT_EQ(recordset->FieldCount(), expected.size());
    for (std::size_t index = 0; index < expected.size(); ++index) {
        EXPECT_EQ(recordset->FieldAt(index).type, expected[index].first) << recordset->FieldAt(index).name;
        EXPECT_EQ(recordset->FieldValue(index), expected[index].second) << recordset->FieldAt(index).name;
    }
    EXPECT_EQ(recordset->FieldAt(0).definedSize, 20);
    EXPECT_EQ(recordset->FieldAt(6).precision, 30);
    EXPECT_EQ(recordset->FieldAt(6).scale, 10);
    EXPECT_FALSE(recordset->FieldAt(3).nullable);
}

TEST_P(DatabaseCases, ReadsNullInEveryType) {
    Execute("create table kovra_case (a nvarchar(5), b int, c bit, d float, e decimal(5,2), f money, g datetime)");
    Execute("insert into kovra_case (a) values (Null)");
    const auto recordset = Open("select * from kovra_case");
    for (std::size_t index = 0; index < recordset->FieldCount(); ++index) {
        EXPECT_TRUE(recordset->FieldValue(index).IsNull()) << recordset->FieldAt(index).name;
    }
}

TEST_P(DatabaseCases, ReadsTextsOfAnyLength) {
    Execute("create table kovra_case (a nvarchar(max))");
    for (const std::size_t length : {0U, 255U, 256U, 4000U, 100000U}) {
        std::string text;
        for (std::size_t count = 0; count < length; ++count) {
            text += "存";
        }
        Execute("delete from kovra_case");
        Execute("insert into kovra_case (a) values (N'" + text + "')");
        EXPECT_EQ(Single("select a from kovra_case"), Value(text)) << length;
    }
}

TEST_P(DatabaseCases, TimestampColumnsChangeWithEveryWrite) {
    Execute("create table kovra_case (a int, qxts timestamp)");
    Execute("insert into kovra_case (a) values (1)");
    const Value first = Single("select qxts from kovra_case");
    ASSERT_NE(first.As<host::Bytes>(), nullptr);
    EXPECT_EQ(first.As<host::Bytes>()->data.size(), 8U);
    Execute("update kovra_case set a = 2");
    EXPECT_GT(Single("select qxts from kovra_case").As<host::Bytes>()->data, first.As<host::Bytes>()->data);
}

TEST_P(DatabaseCases, NumbersIdentitiesByItself) {
    Execute("create table kovra_case (AutoID int identity(1,1), a int)");
    Execute("insert into kovra_case (a) values (5)");
    Execute("insert into kovra_case (a) values (6)");
    EXPECT_EQ(Single("select AutoID from kovra_case where a = 6"), Value(2));
}

TEST_P(DatabaseCases, ComparesTextWithoutRegardToCaseAndTrailingBlanks) {
    Execute("create table kovra_case (a nvarchar(10))");
    Execute("insert into kovra_case (a) values (N'Ab仓')");
    EXPECT_EQ(Single("select count(*) from kovra_case where a = 'aB仓  '"), Value(1));
    EXPECT_EQ(Single("select count(*) from kovra_case where a = ' aB仓'"), Value(0));
}

struct Refusal {
    std::string sql;
    host::ErrorNumber number;
    std::string description;
};

TEST_P(DatabaseCases, RefusesWithSqlServersNumberAndMessage) {
    Execute("create table kovra_case (a nvarchar(3) not null, b int, d datetime)");
    const std::vector<Refusal> refusals = {
        {"Delete * From kovra_case", -2147217900, "Incorrect syntax near '*'."},
        {"select nowhere from kovra_case", -2147217900, "Invalid column name 'nowhere'."},
        {"select * from kovra_nowhere", -2147217865, "Invalid object name 'kovra_nowhere'."},
        {"insert into kovra_case (a, b) values ('x' or 'b'='c', 1)", -2147217900,
         "Incorrect syntax near the keyword 'or'."},
        {"insert into kovra_case (a, d) values ('x', 'no date')", -2147217913,
         "Conversion failed when converting date and/or time from character string."},
    };
    for (const Refusal& refusal : refusals) {
        EXPECT_EQ(ErrorOf(refusal.sql), refusal.number) << refusal.sql;
        EXPECT_EQ(description_, refusal.description) << refusal.sql;
    }
    EXPECT_EQ(ErrorOf("insert into kovra_case (a) values ('abcd')"), -2147217833);
    EXPECT_TRUE(description_.starts_with("String or binary data would be truncated")) << description_;
    EXPECT_EQ(ErrorOf("insert into kovra_case (b) values (1)"), -2147217873);
    EXPECT_TRUE(description_.starts_with("Cannot insert the value NULL into column 'a'")) << description_;
    EXPECT_EQ(Single("select count(*) from kovra_case"), Value(0));
}

TEST_P(DatabaseCases, ReadsDatesUpToTheEndOfTheirRange) {
    const auto recordset = Open("select cast('9999-12-31 23:59:59.997' as datetime), cast('1753-01-01' as datetime)");
    // Days from 1899-12-30: 2958465 is 9999-12-31, -53688 is 1753-01-01.
    EXPECT_NEAR(recordset->FieldValue(0).As<host::Date>()->days, 2958465 + 86399.997 / 86400, 1e-8);
    EXPECT_EQ(recordset->FieldValue(1), Value(host::Date{-53688}));
}

struct Numbered {
    std::string sql;
    /// SQL Server's number (sys.messages).
    int native;
    host::ErrorNumber number;
};

TEST_P(DatabaseCases, TellsTheServersOwnNumberWithAdos) {
    Execute("create table kovra_case (a int not null primary key, b nvarchar(3), c tinyint)");
    Execute("insert into kovra_case (a) values (1)");
    const std::vector<Numbered> cases = {
        {"select * frm kovra_case", 102, -2147217900},
        {"select * from kovra_case where 'a' or 'b'='c'", 4145, -2147217900},
        {"select 'x", 105, -2147217900},
        {"select nowhere from kovra_case", 207, -2147217900},
        {"select * from kovra_nowhere", 208, -2147217865},
        {"insert into kovra_case values (1)", 213, -2147217900},
        {"insert into kovra_case (a, b) values (2)", 109, -2147217900},
        {"insert into kovra_case (a, c) values (2, 300)", 220, -2147217833},
        {"select cast('x' as money)", 235, -2147217913},
        {"select cast('no date' as datetime)", 241, -2147217913},
        {"select cast('2024-02-30' as datetime)", 242, -2147217913},
        {"select cast('x' as int)", 245, -2147217913},
        {"select cast('99999999999' as int)", 248, -2147217833},
        {"insert into kovra_case (b) values ('x')", 515, -2147217873},
        {"insert into kovra_case (a) values (1)", 2627, -2147217873},
        {"create table kovra_case (a int)", 2714, -2147217900},
        {"drop table kovra_nowhere", 3701, -2147217865},
        {"commit transaction", 3902, -2147217900},
        {"rollback transaction", 3903, -2147217900},
        {"alter table kovra_nowhere add a int", 4902, -2147217865},
        {"select cast('x' as decimal(9, 2))", 8114, -2147217913},
        {"select cast(99999999999 as int)", 8115, -2147217833},
        {"select 1 / 0", 8134, -2147467259},
    };
    for (const Numbered& each : cases) {
        EXPECT_EQ(ErrorOf(each.sql), each.number) << each.sql << ": " << description_;
        EXPECT_EQ(native_, each.native) << each.sql << ": " << description_;
    }
}

TEST_P(DatabaseCases, CommitsEachStatementUntilATransactionBegins) {
    Execute("create table kovra_case (a int)");
    Execute("insert into kovra_case (a) values (1)");
    connection().BeginTrans();
    Execute("insert into kovra_case (a) values (2)");
    connection().RollbackTrans();
    Execute("insert into kovra_case (a) values (3)");
    connection().BeginTrans();
    Execute("insert into kovra_case (a) values (4)");
    connection().CommitTrans();
    EXPECT_EQ(Single("select sum(a) from kovra_case"), Value(8));
}

TEST_P(DatabaseCases, RollbackTakesTablesBackToo) {
    connection().BeginTrans();
    Execute("create table kovra_case (a int)");
    connection().RollbackTrans();
    EXPECT_EQ(Single("select count(*) from sysobjects where name = 'kovra_case'"), Value(0));
}

TEST_P(DatabaseCases, ReleasingAConnectionRollsItsTransactionBack) {
    Execute("create table kovra_case (a int)");
    {
        const auto other = Connect();
        other->BeginTrans();
        other->Execute("insert into kovra_case (a) values (1)", host::command_option::unspecified);
    }
    EXPECT_EQ(Single("select count(*) from kovra_case"), Value(0));
}

TEST_P(DatabaseCases, OpeningTwiceIs3705) {
    try {
        connection().Open("Provider=KovraAccount;Data Source=:memory:", "", "", host::command_option::unspecified);
        FAIL() << "opened twice";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), 3705);
        EXPECT_EQ(error.description(), "Operation is not allowed when the object is open.");
    }
}

} // namespace
