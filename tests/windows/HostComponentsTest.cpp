// The host's components and login in KovraHost.dll, late bound as any caller reaches them.
#include "server/adapters/ProgIds.h"
#include "server/adapters/XmlDocument.h"
#include "server/adapters/XmlNode.h"
#include "server/com/Utf16.h"
#include "tests/windows/ExpectError.h"
#include "tests/windows/HostedTest.h"
#include "tests/windows/ServerFixture.h"

#include <string>
#include <string_view>
#include <utility>

namespace {

namespace progid = server::progid;
using server::DispatchObject;
using server::VariantHolder;
using test::ExpectError;

constexpr std::string_view noSuchMember = "对象不支持该属性或方法";

class HostComponents : public test::HostedTest {
protected:
    VariantHolder Text(std::string_view text) { return VariantHolder(text); }
    std::string Value(const DispatchObject& object, const wchar_t* member) {
        return server::ToText(object.Get(member).Get());
    }
    VariantHolder Object(const server::XmlDocument& document) {
        return VariantHolder(static_cast<IDispatch*>(document.document().Get()));
    }
    VariantHolder Object(const DispatchObject& object) { return VariantHolder(object.object().Get()); }
    VariantHolder Nothing() { return VariantHolder(static_cast<IDispatch*>(nullptr)); }
    DispatchObject Result(const VariantHolder& result) { return DispatchObject(server::ToObject(result.Get())); }

    DispatchObject OpenConnection() const {
        DispatchObject connection = DispatchObject::Create(progid::connection);
        connection.Call(L"Open", VariantHolder(account_.connectionString()));
        return connection;
    }

    test::TestAccount account_;
};

} // namespace

TEST_F(HostComponents, AreRegisteredAsApartmentThreaded) {
    for (const wchar_t* const name :
         {L"KovraHost.Login", progid::eaiHelper, progid::eaiXmlConverter, progid::iaVoucherService,
          progid::provisionPreCheck, progid::rsXmlHelper, progid::zendaT}) {
        const std::wstring classId = test::ClassesValue(HKEY_LOCAL_MACHINE, std::wstring(name) + L"\\CLSID");
        const std::wstring path = L"CLSID\\" + classId + L"\\InprocServer32";
        EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, path, L"ThreadingModel"), L"Apartment")
            << server::ToUtf8(name);
        EXPECT_TRUE(test::ClassesValue(HKEY_LOCAL_MACHINE, path).ends_with(L"\\KovraHost.dll")) << server::ToUtf8(name);
    }
}

TEST_F(HostComponents, LoginHasTheMembersOfItsElement) {
    const DispatchObject login =
        test::Login("<login QxDbName=\"D\" cAcc_Id=\"001\" cIYear=\"2023\" cUserId=\"demo\" cUserName=\"王会计\" "
                    "cUserPassWord=\"secret\" CurDate=\"2023-01-15\" cServer=\"S\" cSerial=\"7\" iMonth=\"2\" "
                    "iStartPeriod=\"3\"/>");
    const std::pair<const wchar_t*, const char*> members[] = {
        {L"QxDbName", "D"},         {L"cAcc_Id", "001"},
        {L"cIYear", "2023"},        {L"cUserId", "demo"},
        {L"cUserName", "王会计"},   {L"cUserPassWord", "secret"},
        {L"CurDate", "2023-01-15"}, {L"cServer", "S"},
        {L"cSerial", "7"},          {L"iMonth", "2"},
        {L"iStartPeriod", "3"},     {L"LoginYear", "2023"},
        {L"ConnectionString", "D"}, {L"AccountId", "001"},
        {L"UserName", "王会计"},    {L"CurrentDate", "2023-01-15"},
        {L"AccountingMonth", "2"},  {L"StartPeriod", "3"},
    };
    for (const auto& [member, value] : members)
        EXPECT_EQ(Value(login, member), value) << server::ToUtf8(member);
    const auto logIn = [&](std::string_view password) {
        return server::ToBoolean(login
                                     .Call(L"SubsystemLogin", Text("IA"), Text("001"), Text("2023"), Text("demo"),
                                           Text(password), Text("2023-01-15"), Text("S"), Text("7"))
                                     .Get());
    };
    EXPECT_TRUE(logIn("secret"));
    EXPECT_FALSE(logIn("guess"));
}

TEST_F(HostComponents, LoginRaisesForWhatItLacks) {
    const DispatchObject empty = DispatchObject::Create(L"KovraHost.Login");
    ExpectError(438, noSuchMember, [&] { empty.Get(L"QxDbName"); });
    const DispatchObject login = test::Login("<login cIYear=\"2023\" iMonth=\"abc\" iStartPeriod=\"40000\"/>");
    ExpectError(438, noSuchMember, [&] { login.Get(L"QxDbName"); });
    ExpectError(438, noSuchMember, [&] { login.Get(L"UserName"); });
    ExpectError(13, "类型不匹配", [&] { login.Get(L"AccountingMonth"); });
    ExpectError(6, "溢出", [&] { login.Get(L"StartPeriod"); });
    ExpectError(-2147467259, "the login's root element is <user>, not <login>",
                [&] { login.Call(L"LoadXML", Text("<user/>")); });
    EXPECT_THROW(login.Call(L"LoadXML", Text("nonsense")), host::Error);
    EXPECT_EQ(Value(login, L"LoginYear"), "2023") << "a text that is no login changes nothing";
}

TEST_F(HostComponents, LoginTellsThePeriodsDates) {
    account_.Run("INSERT INTO QxSystem..UA_Period (cAcc_Id, iYear, iId, dBegin, dEnd) "
                 "VALUES (N'001', 2023, 2, '2023-02-01', '2023-02-28')");
    const DispatchObject login = test::Login(account_.LoginXml());
    VariantHolder first;
    VariantHolder last;
    const auto ask = [&](int number) {
        VariantHolder period(number);
        login.Call(L"PeriodDates", VariantHolder::ByReference(period), VariantHolder(2023),
                   VariantHolder::VariantReference(first), VariantHolder::VariantReference(last));
    };
    ask(2);
    EXPECT_EQ(server::ToValue(first.Get()), host::Value(host::Date{44958}));
    EXPECT_EQ(server::ToValue(last.Get()), host::Value(host::Date{44985}));
    ask(3);
    EXPECT_EQ(server::ToValue(first.Get()), host::Value(host::Null{}));
    EXPECT_EQ(server::ToValue(last.Get()), host::Value(host::Null{}));
}

TEST_F(HostComponents, HelperReadsAndWrites) {
    const DispatchObject helper = DispatchObject::Create(progid::eaiHelper);
    server::XmlDocument document;
    ASSERT_TRUE(document.LoadXML("<r a=\"1\"><b>two</b></r>"));
    VariantHolder root(static_cast<IDispatch*>(server::ComNode(document.DocumentElement().get()).Get()));
    const auto text = [](const VariantHolder& result) { return server::ToText(result.Get()); };
    EXPECT_EQ(text(helper.Call(L"GetAttr", VariantHolder::ByReference(root), Text("a"))), "1");
    EXPECT_EQ(text(helper.Call(L"GetAttr", root, Text("missing"))), "");
    EXPECT_EQ(text(helper.Call(L"GetAttr", Nothing(), Text("a"))), "");
    EXPECT_EQ(text(helper.Call(L"GetChildText", root, Text("b"))), "two");
    EXPECT_EQ(text(helper.Call(L"GetChildText", Nothing(), Text("b"))), "");
    EXPECT_EQ(text(helper.Call(L"MakeErrorResult", Text("7"), Text("a<b"), Text(""))),
              "<error code=\"7\" dsc=\"a&lt;b\"/>");
    EXPECT_EQ(text(helper.Call(L"MakeErrorResult", Text("7"), Text("m"), Text("d"))),
              "<error code=\"7\" dsc=\"m\" detail=\"d\"/>");
    EXPECT_EQ(text(helper.Call(L"MakeResultDoc", Text("D"), Text("ADD"))), "<qxinterface docid=\"D\" proc=\"ADD\"/>");
}

TEST_F(HostComponents, HelperAppendsOutcomes) {
    const DispatchObject helper = DispatchObject::Create(progid::eaiHelper);
    server::XmlDocument document;
    ASSERT_TRUE(document.LoadXML("<qxinterface/>"));
    const auto append = [&](int flag, std::string_view further) {
        helper.Call(L"AddResultItem", Object(document), Text("K"), VariantHolder(101), Text("no"), VariantHolder(flag),
                    Text(further), Text(""), Text(""), Text(further));
    };
    append(0, "");
    append(3, "x");
    const host::DOMNodeList items = document.SelectNodes("/qxinterface/item");
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0]->Xml(), "<item key=\"K\" code=\"101\" dsc=\"no\"/>");
    EXPECT_EQ(items[1]->Xml(), "<item key=\"K\" code=\"101\" dsc=\"no\" flag=\"3\" u1=\"x\" u4=\"x\"/>");
    server::XmlDocument empty;
    ExpectError(91, "对象变量或 With 块变量未设置", [&] {
        helper.Call(L"AddResultItem", Object(empty), Text(""), VariantHolder(0), Text(""), VariantHolder(0), Text(""),
                    Text(""), Text(""), Text(""));
    });
    ExpectError(13, "类型不匹配", [&] {
        helper.Call(L"AddResultItem", Object(helper), Text(""), VariantHolder(0), Text(""), VariantHolder(0), Text(""),
                    Text(""), Text(""), Text(""));
    });
}

TEST_F(HostComponents, ContextCarriesTheLogin) {
    const DispatchObject service = DispatchObject::Create(progid::iaVoucherService);
    const DispatchObject login = test::Login("<login cUserName=\"王会计\"/>");
    const DispatchObject context = Result(service.Call(L"Context", Object(login)));
    EXPECT_EQ(Value(Result(context.Get(L"Login")), L"UserName"), "王会计");
}

TEST_F(HostComponents, VoucherServiceOpensTheDefaultTemplate) {
    account_.Run("DELETE FROM VoucherTemplates\nGO\nINSERT INTO VoucherTemplates (VT_ID, cVouchType, bDefault) VALUES "
                 "(77, N'48', 1)");
    const DispatchObject service = DispatchObject::Create(progid::iaVoucherService);
    VariantHolder opened = Nothing();
    VariantHolder message(std::string("kept"));
    VariantHolder further{std::string_view()};
    const auto open = [&] {
        return server::ToBoolean(service
                                     .Call(L"GetDefaultTemplate", Text("48"), VariantHolder::ByReference(opened),
                                           VariantHolder::ByReference(message), VariantHolder::ByReference(further),
                                           Text(""), VariantHolder(0))
                                     .Get());
    };
    ExpectError(91, "对象变量或 With 块变量未设置", open);
    const DispatchObject login = test::Login(account_.LoginXml());
    EXPECT_TRUE(
        server::ToBoolean(service.Call(L"VoucherInit", Object(login), VariantHolder::ByReference(message)).Get()));
    EXPECT_TRUE(open());
    const DispatchObject recordset = Result(opened);
    EXPECT_EQ(server::ToText(Result(recordset.Call(L"Fields", Text("VT_ID"))).Get(L"Value").Get()), "77");
    EXPECT_EQ(server::ToText(message.Get()), "kept");
}

TEST_F(HostComponents, VoucherServiceRefusesWithAMessage) {
    const DispatchObject service = DispatchObject::Create(progid::iaVoucherService);
    VariantHolder message{std::string_view()};
    const DispatchObject nowhere = test::Login("<login QxDbName=\"Provider=Nobody\"/>");
    EXPECT_FALSE(
        server::ToBoolean(service.Call(L"VoucherInit", Object(nowhere), VariantHolder::ByReference(message)).Get()));
    EXPECT_EQ(server::ToText(message.Get()), "Provider cannot be found. It may not be properly installed.");
    const server::XmlDocument head;
    const server::XmlDocument body;
    const server::XmlDocument result;
    VariantHolder connection = Object(OpenConnection());
    service.Call(L"SaveVoucher", Text("49"), Object(head), Object(body), VariantHolder::ByReference(message),
                 connection, Object(result));
    EXPECT_EQ(server::ToText(message.Get()), "单据类型49不能保存。");
}

TEST_F(HostComponents, PreCheckKnowsAClosedMonth) {
    const DispatchObject check = DispatchObject::Create(progid::provisionPreCheck);
    const DispatchObject login = test::Login(account_.LoginXml());
    VariantHolder message{std::string_view()};
    const auto allowed = [&] {
        return server::ToBoolean(check.Call(L"Check", Object(login), VariantHolder::ByReference(message)).Get());
    };
    EXPECT_TRUE(allowed());
    account_.Run("INSERT INTO GL_mend (iyear, iperiod, bflag_IA) VALUES (2023, 1, 1)");
    EXPECT_FALSE(allowed());
    EXPECT_EQ(server::ToText(message.Get()), "2023年1月已结账，不能录入跌价准备单。");
}

TEST_F(HostComponents, RecordsetsBecomeDocumentsAndVoucherData) {
    const DispatchObject helper = DispatchObject::Create(progid::rsXmlHelper);
    const DispatchObject connection = OpenConnection();
    const DispatchObject recordset = DispatchObject::Create(progid::recordset);
    recordset.Call(L"Open", Text("SELECT N'2023-02-07' AS dCJVDate"), Object(connection), VariantHolder(3),
                   VariantHolder(1), VariantHolder(1));
    const VariantHolder saved = helper.Call(L"RecordsetToXml", Object(recordset));
    const server::XmlDocument document(server::ToObject(saved.Get()).As<IXMLDOMDocument>());
    EXPECT_EQ(document.SelectSingleNode("//rs:data/z:row")->GetAttribute("dCJVDate"), "2023-02-07");

    VariantHolder data = helper.Call(L"XmlToVouchData", saved);
    EXPECT_EQ(server::ToText(Result(data).Call(L"Text", Text("dCJVDate")).Get()), "2023-02-07");
    const DispatchObject companion = DispatchObject::Create(progid::zendaT);
    const auto number = [&](const VariantHolder& voucherData) {
        return server::ToText(
            companion
                .Call(L"GetVouchNum", Nothing(), Text("IA51"), voucherData, VariantHolder(false), VariantHolder(false))
                .Get());
    };
    ExpectError(91, "对象变量或 With 块变量未设置", [&] { number(data); });
    companion.Call(L"GetMaxID", Object(connection), VariantHolder(false));
    EXPECT_EQ(number(data), "2023020001");
    ExpectError(13, "类型不匹配", [&] { number(Object(connection)); });
    ExpectError(91, "对象变量或 With 块变量未设置", [&] { number(Nothing()); });
}

TEST_F(HostComponents, CompanionOpensTheRecordsetItIsGiven) {
    const DispatchObject companion = DispatchObject::Create(progid::zendaT);
    const DispatchObject connection = OpenConnection();
    const DispatchObject recordset = DispatchObject::Create(progid::recordset);
    for (const char* const sql : {"SELECT 1 AS one", "SELECT 2 AS one"})
        companion.Call(L"OpenDBS", Object(recordset), Object(connection), Text(sql));
    EXPECT_EQ(server::ToText(Result(recordset.Call(L"Fields", Text("one"))).Get(L"Value").Get()), "2");
    ExpectError(-2147217865, "Invalid object name 'Nowhere'.", [&] {
        companion.Call(L"OpenDBS", Object(recordset), Object(connection), Text("SELECT * FROM Nowhere"));
    });
    ExpectError(91, "对象变量或 With 块变量未设置",
                [&] { companion.Call(L"OpenDBS", Nothing(), Object(connection), Text("SELECT 1")); });
}

TEST_F(HostComponents, CompanionOutlivesTheArgumentsOfARefusedCall) {
    server::XmlDocument record;
    ASSERT_TRUE(record.LoadXML("<xml xmlns:rs=\"urn:schemas-microsoft-com:rowset\" xmlns:z=\"#RowsetSchema\">"
                               "<rs:data><z:row dCJVDate=\"2023-02-07\"/></rs:data></xml>"));
    const VariantHolder data = DispatchObject::Create(progid::rsXmlHelper).Call(L"XmlToVouchData", Object(record));
    const DispatchObject companion = DispatchObject::Create(progid::zendaT);
    const VariantHolder flag(false);
    companion.Call(L"GetMaxID", Object(OpenConnection()), flag);
    ExpectError(94, "无效使用 Null", [&] {
        companion.Call(L"Update", VariantHolder(host::Value(host::Null{})), Text("R"), Nothing(),
                       Object(OpenConnection()), Text("-1"), flag);
    });
    EXPECT_EQ(server::ToText(companion.Call(L"GetVouchNum", Nothing(), Text("22"), data, flag, flag).Get()),
              "2023020001");
}

TEST_F(HostComponents, HelperAppendsManyOutcomesInOrder) {
    const DispatchObject helper = DispatchObject::Create(progid::eaiHelper);
    server::XmlDocument result;
    ASSERT_TRUE(result.LoadXML("<qxinterface/>"));
    for (int i = 0; i < 1000; ++i) {
        helper.Call(L"AddResultItem", Object(result), Text(std::to_string(i)), VariantHolder(101), Text("no"),
                    VariantHolder(i % 2), Text(""), Text(std::to_string(i)), Text(""), Text(""));
    }
    const host::DOMNodeList items = result.SelectNodes("/qxinterface/item");
    ASSERT_EQ(items.size(), 1000U);
    EXPECT_EQ(items[998]->Xml(), "<item key=\"998\" code=\"101\" dsc=\"no\" u2=\"998\"/>");
    EXPECT_EQ(items[999]->Xml(), "<item key=\"999\" code=\"101\" dsc=\"no\" flag=\"1\" u2=\"999\"/>");
}

// In a process that has imported nothing: a thread that did keeps its helper.
TEST_F(HostComponents, DISABLED_LibraryCanBeUnloadedAfterTheLastRelease) {
    EXPECT_EQ(libraries().host.CanUnload(), S_OK);
    for (const wchar_t* const name :
         {L"KovraHost.Login", progid::eaiHelper, progid::eaiXmlConverter, progid::iaVoucherService,
          progid::provisionPreCheck, progid::rsXmlHelper, progid::zendaT}) {
        const DispatchObject object = DispatchObject::Create(name);
        EXPECT_EQ(libraries().host.CanUnload(), S_FALSE) << server::ToUtf8(name);
    }
    EXPECT_EQ(libraries().host.CanUnload(), S_OK);
}

TEST(FreshProcess, CanUnloadTheHostsLibrary) {
    std::wstring command = L"test-windows.exe --gtest_brief=1 --gtest_also_run_disabled_tests "
                           L"--gtest_filter=HostComponents.DISABLED_*";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(
        CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 1;
    EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &status));
    EXPECT_EQ(status, 0U);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}
