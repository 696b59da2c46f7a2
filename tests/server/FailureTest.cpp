// What goes wrong outside comes back as an error result, or from the creation of an object as HRESULT; never as a
// crash.
#include "server/adapters/Msxml.h"
#include "server/com/Utf16.h"
#include "tests/server/LoadXmlRecorder.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostedFixture.h"
#include "tests/support/com/ScriptedObject.h"

#include <string>
#include <string_view>
#include <utility>

namespace {

using server::DispatchObject;
using server::VariantHolder;

constexpr const wchar_t* settings = L"Kovra.ClsInvSubject";
constexpr std::string_view addSetting =
    "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>01</cWhCode>"
    "<cInvHead>1401</cInvHead></row></qxinterface>";
constexpr std::string_view linkFailed = "<error code=\"-2147467259\" dsc=\"Communication link failure\"/>";

class Failure : public test::HostedTest {
protected:
    /// A login of the test's account.
    DispatchObject Login() const { return test::Login(account_.LoginXml()); }
    /// The login with some members replaced.
    DispatchObject LoginWith(test::ScriptedMembers members) const {
        return DispatchObject(test::MakeObject(std::move(members), Login().object()));
    }
    std::string Add(const DispatchObject& login) const {
        return test::Transact(settings, VariantHolder(addSetting), login);
    }

    /// Fails the running test unless the creation of price adjustments ends with error 429.
    static void ExpectNotCreated() {
        CLSID classId{};
        ASSERT_EQ(CLSIDFromProgID(L"Kovra.ClsPriceJustVou", &classId), S_OK);
        server::ComPtr<IDispatch> object;
        EXPECT_EQ(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.PutVoid()),
                  static_cast<HRESULT>(0x800A01AD));
        EXPECT_EQ(test::ErrorDescription(), "ActiveX 部件不能创建对象");
        EXPECT_FALSE(object);
    }

    test::TestAccount account_;
};

/// The key of a class's name is taken away as long as it lives.
class WithoutProgId {
public:
    explicit WithoutProgId(std::wstring progId) : path_(L"Software\\Classes\\" + std::move(progId) + L"\\CLSID") {
        DWORD size = sizeof classId_;
        EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, path_.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, classId_, &size),
                  ERROR_SUCCESS);
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, path_.c_str());
    }
    ~WithoutProgId() {
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, path_.c_str(), nullptr, REG_SZ, classId_,
                        static_cast<DWORD>((wcslen(classId_) + 1) * sizeof(wchar_t)));
    }
    WithoutProgId(const WithoutProgId&) = delete;
    WithoutProgId& operator=(const WithoutProgId&) = delete;

private:
    std::wstring path_;
    wchar_t classId_[64] = {};
};

} // namespace

TEST_F(Failure, RequestThatIsNoStringIsConvertedOrRefused) {
    constexpr std::string_view illFormed = "<error code=\"100\" dsc=\"解析XML时发生错误,请你检查XML参数格式\"/>";
    constexpr std::string_view typeMismatch = "<error code=\"13\" dsc=\"类型不匹配\"/>";
    const auto transact = [&](const VariantHolder& request) { return test::Transact(settings, request, Login()); };
    EXPECT_EQ(transact(VariantHolder(7)), illFormed);
    EXPECT_EQ(transact(VariantHolder(true)), illFormed);
    EXPECT_EQ(transact(VariantHolder()), illFormed);
    EXPECT_EQ(transact(VariantHolder(host::Value(host::Date{45047}))), illFormed);
    EXPECT_EQ(transact(VariantHolder(host::Value(host::Decimal{"1.5"}))), illFormed);
    EXPECT_EQ(transact(VariantHolder(host::Value(host::Null{}))), "<error code=\"94\" dsc=\"无效使用 Null\"/>");
    EXPECT_EQ(transact(VariantHolder(Login().object().Get())), typeMismatch);
    EXPECT_EQ(transact(VariantHolder(static_cast<IDispatch*>(nullptr))), typeMismatch);
    EXPECT_EQ(transact(VariantHolder::Missing()), typeMismatch);
    // An object stands for the value of its default property, as a field or a form's entry does.
    const auto standsFor = [&](test::ScriptedMember property) {
        return transact(VariantHolder(test::MakeObject({{L"", std::move(property)}}).Get()));
    };
    EXPECT_EQ(standsFor(test::Returns("<a")), illFormed);
    EXPECT_EQ(standsFor(test::Returns(host::Null{})), "<error code=\"94\" dsc=\"无效使用 Null\"/>");
    EXPECT_EQ(standsFor(test::Raises(-2147467259, "Communication link failure")), linkFailed);
    EXPECT_EQ(standsFor([&](const server::Arguments&) { return VariantHolder(Login().object().Get()); }), typeMismatch);
    VariantHolder texts;
    VARIANT* const array = texts.Put();
    V_VT(array) = VT_ARRAY | VT_BSTR;
    V_ARRAY(array) = SafeArrayCreateVector(VT_BSTR, 0, 2);
    EXPECT_EQ(transact(texts), typeMismatch);
}

TEST_F(Failure, RequestReachesMsxmlUnchanged) {
    using namespace std::literals;
    const std::wstring texts[] = {
        L""s,
        L"<a>\0b</a>"s,
        L"<a>\xD800z\xDC00</a>"s,
        L"<a b=\"\xD83D\xDE00\xFFFE\xFFFF\xFEFF\">\r\n\t 仓库 \x7F\x80\x1</a>"s,
        L"\xFEFF<?xml version=\"1.0\" encoding=\"GB2312\"?>\r\n<a/>"s,
        L"<a>"s + std::wstring(10'000'000, L'仓') + L"</a>"s,
    };
    for (const std::wstring& text : texts) {
        const DispatchObject login = Login();
        const test::LoadXmlRecorder recorder;
        const VariantHolder request(server::ToUtf8(text));
        ASSERT_TRUE(text == std::wstring_view(V_BSTR(&request.Get()), SysStringLen(V_BSTR(&request.Get()))));
        test::Transact(settings, request, login);
        ASSERT_FALSE(recorder.Texts().empty());
        EXPECT_TRUE(recorder.Texts().front() == text) << "text of " << text.size() << " characters";
    }
}

TEST_F(Failure, LoginThatLacksOrRaisesAMember) {
    EXPECT_EQ(Add(DispatchObject(test::MakeObject({}))), "<error code=\"438\" dsc=\"对象不支持该属性或方法\"/>");
    EXPECT_EQ(Add(LoginWith({{L"QxDbName", test::Raises(-2147467259, "Communication link failure")}})), linkFailed);
    EXPECT_EQ(Add(LoginWith({{L"LoginYear", test::Raises(-2147467259, "Communication link failure")}})), linkFailed);
    EXPECT_EQ(Add(LoginWith({{L"QxDbName", test::Returns(host::Null{})}})),
              "<error code=\"94\" dsc=\"无效使用 Null\"/>");
    EXPECT_EQ(Add(LoginWith({{L"QxDbName", test::Returns("Provider=Nobody")}})),
              "<error code=\"3706\" dsc=\"Provider cannot be found. It may not be properly installed.\"/>");
    EXPECT_EQ(Add(LoginWith({{L"LoginYear", test::Returns("abc")}})), "<error code=\"13\" dsc=\"类型不匹配\"/>");
    EXPECT_EQ(Add(LoginWith({{L"LoginYear", test::Returns("40000")}})), "<error code=\"6\" dsc=\"溢出\"/>");
}

TEST_F(Failure, DescriptionIsNotThatOfAnEarlierFailure) {
    const DispatchObject login = Login();
    server::SetErrorObject(host::Error(7, "An earlier failure."));
    EXPECT_EQ(test::Transact(settings, VariantHolder(login.object().Get()), login),
              "<error code=\"13\" dsc=\"类型不匹配\"/>");
    server::SetErrorObject(host::Error(7, "An earlier failure."));
    test::ExpectError(13, "类型不匹配", [&] { login.object().As<IXMLDOMDocument>(); });
}

TEST_F(Failure, WithoutAdoTheResultIsError429) {
    const DispatchObject login = Login();
    const WithoutProgId withoutAdo(L"ADODB.Connection");
    EXPECT_EQ(Add(login), "<error code=\"429\" dsc=\"ActiveX 部件不能创建对象\"/>");
}

TEST_F(Failure, WithoutTheRecordsetClassTheResultIsError429) {
    const DispatchObject login = Login();
    const WithoutProgId withoutAdo(L"ADODB.Recordset");
    EXPECT_EQ(Add(login), "<error code=\"429\" dsc=\"ActiveX 部件不能创建对象\"/>");
}

TEST_F(Failure, ConnectionThatCannotBeOpenedIsReported) {
    const DispatchObject login = Login();
    const test::ReplacedClass connections(L"ADODB.Connection", [] {
        return test::MakeObject({{L"Open", test::Raises(-2147467259, "Communication link failure")}});
    });
    EXPECT_EQ(Add(login), linkFailed);
}

TEST_F(Failure, RecordsetThatCannotBeOpenedIsReported) {
    const DispatchObject login = Login();
    const test::ReplacedClass recordsets(L"ADODB.Recordset", [] {
        return test::MakeObject({{L"CursorLocation", test::Returns(2)},
                                 {L"Open", test::Raises(-2147467259, "Communication link failure")}});
    });
    EXPECT_EQ(Add(login), linkFailed);
}

TEST_F(Failure, StatementThatFailsRefusesItsRow) {
    account_.Run("INSERT INTO Warehouse (cWhCode, cWhName) VALUES (N'01', N'原料仓')\nGO\n"
                 "INSERT INTO code (iyear, ccode, bend) VALUES (2023, N'1401', 1)");
    const DispatchObject login = Login();
    const test::ReplacedClass* replaced = nullptr;
    const test::ReplacedClass connections(L"ADODB.Connection", [&] {
        return test::MakeObject({{L"Execute", test::Raises(-2147467259, "Communication link failure")}},
                                replaced->Original());
    });
    replaced = &connections;
    const std::string result = Add(login);
    EXPECT_NE(result.find("code=\"101\" dsc=\"Communication link failure\""), std::string::npos) << result;
    EXPECT_TRUE(account_.Rows("SELECT cWhCode FROM IA_HeadSet").empty());
}

TEST_F(Failure, WithoutTheIntegrationHelperTheResultIsError429) {
    // The helper lives as long as its thread, so this takes a new one.
    test::InNewApartment([this] {
        const DispatchObject login = Login();
        const WithoutProgId withoutHelper(L"KovraHost.EaiHelper");
        EXPECT_EQ(Add(login), "<error code=\"429\" dsc=\"ActiveX 部件不能创建对象\"/>");
    }).join();
}

TEST_F(Failure, IntegrationHelperThatFailsIsReportedWithoutIt) {
    test::InNewApartment([this] {
        const DispatchObject login = Login();
        const test::ReplacedClass helpers(L"KovraHost.EaiHelper", [] { return test::MakeObject({}); });
        EXPECT_EQ(Add(login), "<error code=\"438\" dsc=\"对象不支持该属性或方法\"/>");
    }).join();
}

TEST_F(Failure, WithoutWhatTheyStartWithThePriceAdjustmentsAreNotCreated) {
    for (const wchar_t* const component : {L"ZendaTool.clsZendaT", L"ADODB.Recordset"}) {
        const WithoutProgId without(component);
        ExpectNotCreated();
    }
    const test::ReplacedClass companions(
        L"ZendaTool.clsZendaT", []() -> server::ComPtr<IDispatch> { throw host::Error(-2147467259, "No licence."); });
    ExpectNotCreated();
}

TEST_F(Failure, MissingComponentStopsTheProvisions) {
    const std::string request =
        "<qxinterface roottag=\"provision\" docid=\"P\" proc=\"ADD\"><provision><header>"
        "<Deccode>D1</Deccode><vouchtype>48</vouchtype></header><body/></provision></qxinterface>";
    for (const wchar_t* const component : {L"KovraHost.EaiXmlConverter", L"KovraHost.IaVoucherService"}) {
        const DispatchObject login = Login();
        const WithoutProgId without(component);
        const std::string result = test::Transact(L"Kovra.ClsKovraProof", VariantHolder(request), login);
        EXPECT_NE(result.find("<item key=\"\" code=\"999\" dsc=\"ActiveX 部件不能创建对象\"/>"), std::string::npos)
            << result;
    }
}

TEST_F(Failure, NothingStaysBehind) {
    Add(DispatchObject(test::MakeObject({})));
    EXPECT_EQ(libraries().server.CanUnload(), S_OK);
}
