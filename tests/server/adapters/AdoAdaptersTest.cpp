// The adapters over ADO, one operation after the other.
#include "server/adapters/AdoConnection.h"
#include "server/adapters/AdoRecordset.h"
#include "server/adapters/XmlDocument.h"
#include "tests/support/TestAccount.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/RegisteredLibrary.h"
#include "tests/support/com/ScriptedObject.h"
#include "tests/support/com/ServerFixture.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using host::CursorLocation;
using host::CursorType;
using host::FieldType;
using host::LockType;
using host::Value;
using server::AdoConnection;
using server::AdoRecordset;
using test::ExpectError;

constexpr std::string_view objectIsOpen = "Operation is not allowed when the object is open.";
constexpr std::string_view objectIsClosed = "Operation is not allowed when the object is closed.";
constexpr std::string_view noSuchItem =
    "Item cannot be found in the collection corresponding to the requested name or ordinal.";
constexpr std::string_view noCurrentRecord = "Either BOF or EOF is True, or the current record has been deleted. "
                                             "Requested operation requires a current record.";

class AdoAdapters : public testing::Test {
protected:
    AdoAdapters() { Open(connection_); }

    void Open(host::Connection& connection) const {
        connection.Open(account_.connectionString(), "", "", host::command_option::unspecified);
    }
    void Execute(std::string_view sql) { connection_.Execute(sql, host::command_option::unspecified); }
    void Query(host::Recordset& recordset, std::string_view sql) {
        recordset.Open(sql, connection_, CursorType::openStatic, LockType::readOnly, host::command_option::text);
    }
    /// The value and column of a query of one row.
    std::pair<Value, host::Field> Column(std::string_view sql) {
        AdoRecordset recordset;
        Query(recordset, sql);
        return {recordset.FieldValue(0), recordset.FieldAt(0)};
    }

    test::RegisteredLibrary ado_{L"KovraTestAdo.dll"};
    test::TestAccount account_;
    AdoConnection connection_;
};

} // namespace

TEST_F(AdoAdapters, ConnectionCannotBeOpenedTwice) {
    ExpectError(3705, objectIsOpen, [&] { Open(connection_); });
}

TEST_F(AdoAdapters, ConnectionThatCannotBeOpenedSaysWhy) {
    AdoConnection other;
    ExpectError(3706, "Provider cannot be found. It may not be properly installed.",
                [&] { other.Open("Provider=Nobody", "", "", -1); });
    const std::string missing = (account_.folder() / "missing.db").string();
    ExpectError(-2147467259,
                "Cannot open database \"" + missing + "\": The file of the account database cannot be opened.",
                [&] { other.Open("Provider=KovraAccount;Data Source=" + missing, "", "", -1); });
}

TEST_F(AdoAdapters, ClosedConnectionRefusesEveryOperation) {
    AdoConnection closed;
    ExpectError(3704, objectIsClosed, [&] { closed.Execute("SELECT 1", -1); });
    ExpectError(3704, objectIsClosed, [&] { closed.BeginTrans(); });
    ExpectError(3704, objectIsClosed, [&] { closed.CommitTrans(); });
    ExpectError(3704, objectIsClosed, [&] { closed.RollbackTrans(); });
    AdoRecordset recordset;
    ExpectError(3704, objectIsClosed, [&] {
        recordset.Open("SELECT 1", closed, CursorType::openStatic, LockType::readOnly, host::command_option::text);
    });
}

TEST_F(AdoAdapters, ExecuteWritesAndReportsTheServersErrors) {
    Execute("INSERT INTO Warehouse (cWhCode, cWhName) VALUES (N'01', N'原料仓')");
    EXPECT_EQ(account_.Rows("SELECT cWhName FROM Warehouse"), std::vector<std::string>{R"({"cWhName":"原料仓"})"});
    ExpectError(-2147217865, "Invalid object name 'Nowhere'.", [&] { Execute("DELETE FROM Nowhere"); });
    ExpectError(-2147217900, "Invalid column name 'nothing'.", [&] { Execute("UPDATE Warehouse SET nothing = 1"); });
    try {
        Execute("INSERT INTO Warehouse (cWhCode) VALUES (N'01')");
        ADD_FAILURE() << "a duplicate key";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), -2147217873);
    }
}

TEST_F(AdoAdapters, TransactionsKeepAndUndo) {
    connection_.BeginTrans();
    Execute("INSERT INTO Warehouse (cWhCode) VALUES (N'01')");
    connection_.RollbackTrans();
    EXPECT_TRUE(account_.Rows("SELECT cWhCode FROM Warehouse").empty());
    connection_.BeginTrans();
    Execute("INSERT INTO Warehouse (cWhCode) VALUES (N'01')");
    connection_.CommitTrans();
    EXPECT_EQ(account_.Rows("SELECT cWhCode FROM Warehouse").size(), 1U);
}

TEST_F(AdoAdapters, ReleasingTheConnectionUndoesItsTransaction) {
    {
        AdoConnection other;
        Open(other);
        other.BeginTrans();
        other.Execute("INSERT INTO Warehouse (cWhCode) VALUES (N'01')", -1);
    }
    EXPECT_TRUE(account_.Rows("SELECT cWhCode FROM Warehouse").empty());
}

TEST_F(AdoAdapters, RecordsetWalksItsRows) {
    account_.Run("INSERT INTO Warehouse (cWhCode, cWhName) VALUES (N'01', N'原料仓'), (N'02', NULL)");
    AdoRecordset recordset;
    EXPECT_FALSE(recordset.IsOpen());
    Query(recordset, "SELECT cWhCode, cWhName FROM Warehouse ORDER BY cWhCode");
    EXPECT_TRUE(recordset.IsOpen());
    EXPECT_EQ(recordset.RecordCount(), 2);
    EXPECT_EQ(recordset.FieldCount(), 2U);
    EXPECT_FALSE(recordset.AtBOF());
    EXPECT_FALSE(recordset.AtEOF());
    EXPECT_EQ(recordset.FieldValue("CWHCODE"), Value("01"));
    EXPECT_EQ(recordset.FieldValue("cWhName"), Value("原料仓"));
    recordset.MoveNext();
    EXPECT_EQ(recordset.FieldValue(0), Value("02"));
    EXPECT_TRUE(recordset.FieldValue(1).IsNull());
    recordset.MoveNext();
    EXPECT_TRUE(recordset.AtEOF());
    ExpectError(3021, noCurrentRecord, [&] { recordset.FieldValue(0); });
    ExpectError(3021, noCurrentRecord, [&] { recordset.MoveNext(); });
    recordset.Close();
    EXPECT_FALSE(recordset.IsOpen());
    Query(recordset, "SELECT 7 AS seven");
    EXPECT_EQ(recordset.FieldCount(), 1U);
    EXPECT_EQ(recordset.FieldValue("seven"), Value(7));
}

TEST_F(AdoAdapters, EmptyRecordsetIsAtBothEnds) {
    AdoRecordset recordset;
    Query(recordset, "SELECT cWhCode FROM Warehouse");
    EXPECT_TRUE(recordset.AtBOF());
    EXPECT_TRUE(recordset.AtEOF());
    EXPECT_EQ(recordset.RecordCount(), 0);
    EXPECT_EQ(recordset.FieldAt(0).name, "cWhCode");
}

TEST_F(AdoAdapters, ForwardOnlyCursorDoesNotCount) {
    AdoRecordset recordset;
    recordset.Open("SELECT 1 AS one", connection_, CursorType::forwardOnly, LockType::readOnly, -1);
    EXPECT_EQ(recordset.RecordCount(), -1);
}

TEST_F(AdoAdapters, RecordsetRefusesWhatAdoRefuses) {
    AdoRecordset recordset;
    ExpectError(3704, objectIsClosed, [&] { recordset.Close(); });
    ExpectError(3704, objectIsClosed, [&] { recordset.MoveNext(); });
    ExpectError(3704, objectIsClosed, [&] { recordset.AtEOF(); });
    ExpectError(-2147217865, "Invalid object name 'Nowhere'.", [&] { Query(recordset, "SELECT * FROM Nowhere"); });
    Query(recordset, "SELECT 1 AS one");
    ExpectError(3705, objectIsOpen, [&] { Query(recordset, "SELECT 1 AS one"); });
    ExpectError(3265, noSuchItem, [&] { recordset.FieldValue("two"); });
    ExpectError(3265, noSuchItem, [&] { recordset.FieldValue(1); });
    ExpectError(3705, objectIsOpen, [&] { recordset.SetCursorLocation(CursorLocation::client); });
}

TEST_F(AdoAdapters, CursorLocationIsKept) {
    AdoRecordset recordset;
    EXPECT_EQ(recordset.GetCursorLocation(), CursorLocation::server);
    recordset.SetCursorLocation(CursorLocation::client);
    EXPECT_EQ(recordset.GetCursorLocation(), CursorLocation::client);
}

TEST_F(AdoAdapters, ColumnsTellTheirTypes) {
    struct Case {
        const char* sql;
        FieldType type;
        int size;
        int precision;
        int scale;
    };
    const Case cases[] = {
        {"SELECT CONVERT(smallint, 1) AS v", FieldType::smallInt, 0, 0, 0},
        {"SELECT CONVERT(int, 1) AS v", FieldType::integer, 0, 0, 0},
        {"SELECT CONVERT(float, 1) AS v", FieldType::doubleFloat, 0, 0, 0},
        {"SELECT CONVERT(money, 1) AS v", FieldType::currency, 0, 0, 0},
        {"SELECT CONVERT(bit, 1) AS v", FieldType::boolean, 0, 0, 0},
        {"SELECT CONVERT(datetime, '2023-05-01') AS v", FieldType::dbTimeStamp, 0, 0, 0},
        {"SELECT CONVERT(decimal(20, 6), 1) AS v", FieldType::numeric, 0, 20, 6},
        {"SELECT CONVERT(varchar(30), '') AS v", FieldType::varChar, 30, 0, 0},
        {"SELECT CONVERT(nvarchar(20), '') AS v", FieldType::varWideChar, 20, 0, 0},
    };
    for (const Case& expected : cases) {
        const host::Field field = Column(expected.sql).second;
        EXPECT_EQ(field.name, "v") << expected.sql;
        EXPECT_EQ(field.type, expected.type) << expected.sql;
        EXPECT_EQ(field.definedSize, expected.size) << expected.sql;
        EXPECT_EQ(field.precision, expected.precision) << expected.sql;
        EXPECT_EQ(field.scale, expected.scale) << expected.sql;
    }
    AdoRecordset warehouses;
    Query(warehouses, "SELECT cWhCode, cWhName FROM Warehouse");
    EXPECT_FALSE(warehouses.FieldAt(0).nullable);
    EXPECT_TRUE(warehouses.FieldAt(1).nullable);
}

TEST_F(AdoAdapters, ValuesComeWholeThroughTheirVariants) {
    const std::pair<const char*, Value> cases[] = {
        {"SELECT CONVERT(smallint, -32768) AS v", -32768},
        {"SELECT CONVERT(int, 2147483647) AS v", 2147483647},
        {"SELECT CONVERT(bigint, 9007199254740993) AS v", std::int64_t{9007199254740993}},
        {"SELECT CONVERT(tinyint, 255) AS v", 255},
        {"SELECT CONVERT(float, 0.1) AS v", 0.1},
        {"SELECT CONVERT(real, 0.5) AS v", 0.5F},
        {"SELECT CONVERT(money, 12.3456) AS v", host::Decimal{"12.3456"}},
        {"SELECT CONVERT(decimal(28, 6), -1234567890123456789012.5) AS v",
         host::Decimal{"-1234567890123456789012.500000"}},
        {"SELECT CONVERT(bit, 1) AS v", true},
        {"SELECT CONVERT(datetime, '2023-05-01 12:00:00') AS v", host::Date{45047.5}},
        {"SELECT N'仓库 😀' AS v", "仓库 😀"},
        {"SELECT CONVERT(nvarchar(20), NULL) AS v", host::Null{}},
        {"SELECT CONVERT(int, NULL) AS v", host::Null{}},
        {"SELECT CONVERT(varbinary(4), 0x00FF10) AS v", host::Bytes{{0x00, 0xFF, 0x10}}},
    };
    for (const auto& [sql, expected] : cases)
        EXPECT_EQ(Column(sql).first, expected) << sql;
}

TEST_F(AdoAdapters, RecordsetIsSavedIntoADocument) {
    account_.Run("INSERT INTO Warehouse (cWhCode, cWhName) VALUES (N'01', N'原料仓 \"A\" & <B>'), (N'02', NULL)");
    AdoRecordset recordset;
    Query(recordset, "SELECT cWhCode, cWhName FROM Warehouse ORDER BY cWhCode");
    server::XmlDocument document;
    recordset.Save(document);
    const host::DOMNodeList rows = document.SelectNodes("//rs:data/z:row");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]->GetAttribute("cWhCode"), "01");
    EXPECT_EQ(rows[0]->GetAttribute("cWhName"), "原料仓 \"A\" & <B>");
    EXPECT_EQ(rows[1]->GetAttribute("cWhCode"), "02");
    EXPECT_EQ(rows[1]->GetAttribute("cWhName"), std::nullopt);
    EXPECT_EQ(document.SelectNodes("//s:AttributeType").size(), 2U);
}

/// The name of a class stands for a class that is not there, as long as the object lives. Taking the stand-in's
/// registration back would not do: the machine may have an ADO of its own, which then has its names again.
class NameOfNoClass {
public:
    explicit NameOfNoClass(const std::wstring& progId)
        : key_(progId + L"\\CLSID"), former_(test::ClassesValue(HKEY_LOCAL_MACHINE, key_)) {
        Write(L"{B7A5D1F0-0000-4000-8000-000000000000}");
    }
    ~NameOfNoClass() { Write(former_); }
    NameOfNoClass(const NameOfNoClass&) = delete;
    NameOfNoClass& operator=(const NameOfNoClass&) = delete;

private:
    void Write(const std::wstring& classId) const {
        EXPECT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key_).c_str(), nullptr, REG_SZ,
                                  classId.c_str(), static_cast<DWORD>((classId.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }

    std::wstring key_;
    std::wstring former_;
};

TEST_F(AdoAdapters, WithoutAdoNothingIsCreated) {
    const NameOfNoClass connections(L"ADODB.Connection");
    const NameOfNoClass recordsets(L"ADODB.Recordset");
    ExpectError(429, "ActiveX 部件不能创建对象", [] { AdoConnection(); });
    ExpectError(429, "ActiveX 部件不能创建对象", [] { AdoRecordset(); });
}

// Each operation against an object that fails in it.

TEST_F(AdoAdapters, EveryFailingOperationOfAConnectionIsRaised) {
    const auto failing = [](const wchar_t* member) {
        return AdoConnection(server::DispatchObject(
            test::MakeObject({{member, test::Raises(-2147467259, "Communication link failure")}})));
    };
    const auto expect = [](auto&& action) { ExpectError(-2147467259, "Communication link failure", action); };
    expect([&] { failing(L"Open").Open("", "", "", -1); });
    expect([&] { failing(L"Execute").Execute("", -1); });
    expect([&] { failing(L"BeginTrans").BeginTrans(); });
    expect([&] { failing(L"CommitTrans").CommitTrans(); });
    expect([&] { failing(L"RollbackTrans").RollbackTrans(); });
}

TEST_F(AdoAdapters, EveryFailingOperationOfARecordsetIsRaised) {
    const auto failing = [](const wchar_t* member) {
        return AdoRecordset(server::DispatchObject(
            test::MakeObject({{member, test::Raises(-2147467259, "Communication link failure")}})));
    };
    const auto expect = [](auto&& action) { ExpectError(-2147467259, "Communication link failure", action); };
    expect([&] { failing(L"CursorLocation").SetCursorLocation(CursorLocation::client); });
    expect([&] { failing(L"CursorLocation").GetCursorLocation(); });
    expect([&] {
        failing(L"Open").Open("", connection_, CursorType::openStatic, LockType::readOnly, host::command_option::text);
    });
    expect([&] { failing(L"Close").Close(); });
    expect([&] { failing(L"State").IsOpen(); });
    expect([&] { failing(L"EOF").AtEOF(); });
    expect([&] { failing(L"BOF").AtBOF(); });
    expect([&] { failing(L"RecordCount").RecordCount(); });
    expect([&] { failing(L"MoveNext").MoveNext(); });
    expect([&] { failing(L"Fields").FieldCount(); });
    expect([&] { failing(L"Fields").FieldIndex("a"); });
    expect([&] { failing(L"Fields").FieldValue(0); });
    expect([&] {
        server::XmlDocument document;
        failing(L"Save").Save(document);
    });
}

TEST_F(AdoAdapters, ObjectWithoutTheMembersIsReported) {
    AdoConnection noConnection(server::DispatchObject(test::MakeObject({})));
    ExpectError(438, "对象不支持该属性或方法", [&] { Open(noConnection); });
    AdoRecordset noRecordset(server::DispatchObject(test::MakeObject({{L"Fields", test::Returns(7)}})));
    ExpectError(13, "类型不匹配", [&] { noRecordset.FieldCount(); });
    ExpectError(438, "对象不支持该属性或方法", [&] { noRecordset.AtEOF(); });
}

TEST_F(AdoAdapters, ColumnsThatCannotBeReadWholeAreReadAgain) {
    account_.Run("INSERT INTO Warehouse (cWhCode, cWhName) VALUES (N'01', N'原料仓')");
    AdoRecordset real;
    Query(real, "SELECT cWhCode, cWhName FROM Warehouse");
    bool fails = true;
    const server::DispatchObject fields(server::ToObject(real.recordset().Get(L"Fields").Get()));
    const auto failing = test::MakeObject({{L"Item",
                                            [&](const server::Arguments& arguments) {
                                                const int index = server::ToInt(arguments[0]);
                                                if (index == 1 && fails)
                                                    throw host::Error(host::error_number::outOfMemory, "内存溢出");
                                                return fields.Call(L"Item", server::VariantHolder(index));
                                            }}},
                                          fields.object());
    AdoRecordset recordset(server::DispatchObject(
        test::MakeObject({{L"Fields", [&](const server::Arguments&) { return server::VariantHolder(failing.Get()); }}},
                         real.recordset().object())));
    ExpectError(7, "内存溢出", [&] { recordset.FieldIndex("cWhName"); });
    fails = false;
    EXPECT_EQ(recordset.FieldIndex("cWhName"), 1U);
    EXPECT_EQ(recordset.FieldValue(1), Value("原料仓"));
}
