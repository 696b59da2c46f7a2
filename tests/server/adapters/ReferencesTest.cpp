// What a component puts into a reference: another object, none, or one of another type. Operation by operation, and as
// the classes go on with it.
#include "server/adapters/AdoConnection.h"
#include "server/adapters/AdoRecordset.h"
#include "server/adapters/ComEaiHelper.h"
#include "server/adapters/ComEnvironment.h"
#include "server/adapters/ComVoucherComponents.h"
#include "server/adapters/ObjectArguments.h"
#include "server/adapters/XmlNode.h"
#include "tests/support/NameOfCase.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostFixture.h"
#include "tests/support/com/ScriptedObject.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using server::AdoConnection;
using server::AdoRecordset;
using server::Arguments;
using server::ComPtr;
using server::DispatchObject;
using server::VariantHolder;
using server::XmlDocument;
using test::ExpectError;
using test::objectNotSet;
using test::typeMismatch;

/// One of each kind of handle, as a class holds them.
struct Handles {
    Handles() {
        EXPECT_TRUE(document.LoadXML("<a n=\"before\"/>"));
        element = document.DocumentElement();
    }

    XmlDocument document;
    /// A second document, for operations that take two.
    XmlDocument rows;
    host::DOMNodePtr element;
    AdoConnection connection;
    AdoRecordset recordset;
    std::unique_ptr<host::Recordset> opened;
    std::shared_ptr<host::VoucherContext> context =
        std::make_shared<server::ComVoucherContext>(DispatchObject(test::MakeObject({})));
    server::ComVouchData data{DispatchObject(test::MakeObject({}))};
    std::string text;
};

/// A handle: what stands behind it, what fits there, and a use of it.
struct Kind {
    std::function<IDispatch*(Handles&)> standing;
    std::function<ComPtr<IDispatch>()> another;
    std::function<void(Handles&)> use;
    /// Whether objects of every type fit.
    bool takesAny = false;
};

ComPtr<IDispatch> AnotherDocument() {
    XmlDocument document;
    EXPECT_TRUE(document.LoadXML("<other n=\"after\"/>"));
    return document.document().As<IDispatch>();
}
ComPtr<IDispatch> AnyObject() { return test::MakeObject({}); }

const Kind document{[](Handles& h) { return server::Standing(h.document); }, AnotherDocument,
                    [](Handles& h) { h.document.Xml(); }};
const Kind rows{[](Handles& h) { return server::Standing(h.rows); }, AnotherDocument, [](Handles& h) { h.rows.Xml(); }};
const Kind element{[](Handles& h) { return server::Standing(h.element.get()); },
                   [] {
                       const XmlDocument other(AnotherDocument().As<IXMLDOMDocument>());
                       return server::ComNode(other.DocumentElement().get()).As<IDispatch>();
                   },
                   [](Handles& h) { h.element->Text(); }};
const Kind connection{[](Handles& h) { return server::Standing(h.connection); },
                      [] { return DispatchObject::Create(L"ADODB.Connection").object(); },
                      [](Handles& h) { h.connection.CommitTrans(); }};
const Kind recordset{[](Handles& h) { return server::Standing(h.recordset); },
                     [] { return DispatchObject::Create(L"ADODB.Recordset").object(); },
                     [](Handles& h) { h.recordset.FieldCount(); }};
const Kind opened{[](Handles& h) { return server::Standing(h.opened); }, recordset.another, nullptr};
const Kind context{[](Handles& h) { return server::Standing(h.context); }, AnyObject, nullptr, true};
const Kind data{[](Handles& h) { return server::Standing(h.data); }, AnyObject, nullptr, true};

/// An operation and one of its by-reference objects.
struct Operation {
    const char* name;
    const wchar_t* progId;
    const wchar_t* member;
    /// Position of the object among the arguments, counted from 0.
    std::size_t index;
    const Kind* kind;
    std::function<void(Handles&)> call;
};

void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
constexpr const wchar_t* helper = L"KovraHost.EaiHelper";
constexpr const wchar_t* converter = L"KovraHost.EaiXmlConverter";
constexpr const wchar_t* service = L"KovraHost.IaVoucherService";
constexpr const wchar_t* companion = L"ZendaTool.clsZendaT";

void HeadToXml(Handles& h) {
    server::ComEnvironment().CreateEaiXmlConverter()->HeadToXml(h.document, *h.element, "M", h.recordset);
}
void BodyToXml(Handles& h) {
    server::ComEnvironment().CreateEaiXmlConverter()->BodyToXml(h.document, *h.element, "M", h.recordset);
}
void SaveVoucher(Handles& h) {
    server::ComEnvironment().CreateIaVoucherService()->SaveVoucher("48", h.document, h.document, h.text, h.connection,
                                                                   h.rows);
}
void AllowAdd(Handles& h) { server::MakeZendaT()->AllowAdd(h.text, h.context, h.connection); }
void OpenDBS(Handles& h) { server::MakeZendaT()->OpenDBS(h.recordset, h.connection, "SELECT 1"); }
void Update(Handles& h) { server::MakeZendaT()->Update("W", "R", h.context, h.connection, "-1", false); }
void GetVouchNum(Handles& h) { server::MakeZendaT()->GetVouchNum(h.context, "22", h.data, false, true); }
void Save(Handles& h) { server::MakeZendaT()->save(h.document, h.rows, 2, h.text, h.connection, true, h.context); }
void DoAccount(Handles& h) {
    server::MakeZendaT()->DoAccount(h.document, h.rows, h.context, h.connection, true, h.text);
}

const Operation operations[] = {
    {"GetAttr_element", helper, L"GetAttr", 0, &element,
     [](Handles& h) { server::MakeEaiHelper()->GetAttr(h.element.get(), "n"); }},
    {"AddResultItem_document", helper, L"AddResultItem", 0, &document,
     [](Handles& h) { server::MakeEaiHelper()->AddResultItem(h.document, "k", 0, "ok"); }},
    {"HeadToXml_element", converter, L"HeadToXml", 0, &element, HeadToXml},
    {"HeadToXml_recordset", converter, L"HeadToXml", 2, &recordset, HeadToXml},
    {"BodyToXml_element", converter, L"BodyToXml", 0, &element, BodyToXml},
    {"BodyToXml_recordset", converter, L"BodyToXml", 2, &recordset, BodyToXml},
    {"GetDefaultTemplate_recordset", service, L"GetDefaultTemplate", 1, &opened,
     [](Handles& h) {
         std::string further;
         server::ComEnvironment().CreateIaVoucherService()->GetDefaultTemplate("48", h.opened, h.text, further);
     }},
    {"SaveVoucher_connection", service, L"SaveVoucher", 4, &connection, SaveVoucher},
    {"SaveVoucher_result", service, L"SaveVoucher", 5, &rows, SaveVoucher},
    {"AllowAdd_context", companion, L"AllowAdd", 1, &context, AllowAdd},
    {"AllowAdd_connection", companion, L"AllowAdd", 2, &connection, AllowAdd},
    {"OpenDBS_recordset", companion, L"OpenDBS", 0, &recordset, OpenDBS},
    {"OpenDBS_connection", companion, L"OpenDBS", 1, &connection, OpenDBS},
    {"Update_context", companion, L"Update", 2, &context, Update},
    {"Update_connection", companion, L"Update", 3, &connection, Update},
    {"GetDefaultTemplateID_connection", companion, L"GetDefaultTemplateID", 1, &connection,
     [](Handles& h) { server::MakeZendaT()->GetDefaultTemplateID("IA51", h.connection); }},
    {"GetVouchNum_context", companion, L"GetVouchNum", 0, &context, GetVouchNum},
    {"GetVouchNum_data", companion, L"GetVouchNum", 2, &data, GetVouchNum},
    {"save_head", companion, L"save", 0, &document, Save},
    {"save_rows", companion, L"save", 1, &rows, Save},
    {"save_connection", companion, L"save", 4, &connection, Save},
    {"save_context", companion, L"save", 6, &context, Save},
    {"GetMaxID_connection", companion, L"GetMaxID", 0, &connection,
     [](Handles& h) { server::MakeZendaT()->GetMaxID(h.connection, false); }},
    {"DoAccount_head", companion, L"DoAccount", 0, &document, DoAccount},
    {"DoAccount_rows", companion, L"DoAccount", 1, &rows, DoAccount},
    {"DoAccount_context", companion, L"DoAccount", 2, &context, DoAccount},
    {"DoAccount_connection", companion, L"DoAccount", 3, &connection, DoAccount},
};

class ByReference : public test::HostedTest, public testing::WithParamInterface<Operation> {
protected:
    /// Calls the operation of a component that puts `object` into the reference and then does `rest`.
    void CallThatPuts(const ComPtr<IDispatch>& object, const test::ScriptedMember& rest = test::Returns(true)) {
        const Operation& operation = GetParam();
        const test::ReplacedClass replaced(operation.progId, [&] {
            return test::MakeObject({{operation.member, [&](const Arguments& arguments) {
                                          arguments.Return(operation.index, VariantHolder(object.Get()));
                                          return rest(arguments);
                                      }}});
        });
        operation.call(handles_);
    }
    IDispatch* Standing() { return GetParam().kind->standing(handles_); }

    Handles handles_;
};

} // namespace

TEST_P(ByReference, AnotherObjectStandsBehindTheHandle) {
    const ComPtr<IDispatch> another = GetParam().kind->another();
    CallThatPuts(another);
    EXPECT_EQ(Standing(), another.Get());
}

TEST_P(ByReference, AnotherObjectStandsThereAfterAnErrorToo) {
    const ComPtr<IDispatch> another = GetParam().kind->another();
    ExpectError(-2147467259, "no link", [&] { CallThatPuts(another, test::Raises(-2147467259, "no link")); });
    EXPECT_EQ(Standing(), another.Get());
}

TEST_P(ByReference, NothingStandsBehindTheHandle) {
    CallThatPuts({});
    EXPECT_EQ(Standing(), nullptr);
    if (GetParam().kind->use)
        ExpectError(91, objectNotSet, [&] { GetParam().kind->use(handles_); });
}

TEST_P(ByReference, ObjectOfAnotherTypeIsATypeMismatch) {
    const ComPtr<IDispatch> other = AnyObject();
    IDispatch* const before = Standing();
    if (GetParam().kind->takesAny) {
        CallThatPuts(other);
        EXPECT_EQ(Standing(), other.Get());
    } else {
        ExpectError(13, typeMismatch, [&] { CallThatPuts(other); });
        EXPECT_EQ(Standing(), before);
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, ByReference, testing::ValuesIn(operations), test::nameOfCase);

namespace {

using ReferencesTest = test::HostTest;

/// A component of the class as registered whose `member` does as `rest` says after the real one has been called.
class Extended {
public:
    Extended(const wchar_t* progId, const wchar_t* member, std::function<void(const Arguments&)> rest)
        : member_(member), rest_(std::move(rest)), replaced_(progId, [this] { return Make(); }) {}

private:
    ComPtr<IDispatch> Make() {
        const DispatchObject original(replaced_.Original());
        return test::MakeObject({{member_,
                                  [this, original](const Arguments& arguments) {
                                      VariantHolder result = CallOriginal(original, arguments);
                                      rest_(arguments);
                                      return result;
                                  }}},
                                original.object());
    }
    VariantHolder CallOriginal(const DispatchObject& original, const Arguments& arguments) const {
        std::wstring name = member_;
        wchar_t* names = name.data();
        DISPID id = 0;
        server::ThrowIfFailed(original.object()->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id));
        std::vector<VARIANT> reversed(arguments.count());
        for (std::size_t i = 0; i < reversed.size(); ++i)
            reversed[reversed.size() - 1 - i] = arguments[i];
        DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        VariantHolder result;
        EXCEPINFO exception{};
        const HRESULT status = original.object()->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                                         &parameters, result.Put(), &exception, nullptr);
        if (status == DISP_E_EXCEPTION)
            server::ThrowException(exception);
        server::ThrowIfFailed(status);
        return result;
    }

    std::wstring member_;
    std::function<void(const Arguments&)> rest_;
    test::ReplacedClass replaced_;
};

constexpr std::string_view provision =
    "<qxinterface roottag=\"provision\" docid=\"P\" proc=\"ADD\"><provision><header><Deccode>D1</Deccode>"
    "<vouchtype>48</vouchtype></header><body/></provision></qxinterface>";

} // namespace

// Though it is a node.
TEST_F(ReferencesTest, DocumentIsNoElement) {
    Handles handles;
    const test::ReplacedClass helpers(helper, [] {
        return test::MakeObject({{L"GetAttr", [](const Arguments& arguments) {
                                      arguments.Return(0, VariantHolder(AnotherDocument().Get()));
                                      return VariantHolder();
                                  }}});
    });
    ExpectError(13, typeMismatch, [&] { server::MakeEaiHelper()->GetAttr(handles.element.get(), "n"); });
}

TEST_F(ReferencesTest, CheckResultsInANewDocumentRefuseTheProvision) {
    const DispatchObject login = AccountLogin();
    const Extended saving(service, L"SaveVoucher", [](const Arguments& arguments) {
        XmlDocument results;
        EXPECT_TRUE(results.LoadXML("<r xmlns:z=\"#RowsetSchema\"><zeroout><z:row cinvcode=\"A\"/></zeroout></r>"));
        arguments.Return(5, Holder(results));
    });
    const std::string result = test::Transact(L"Kovra.ClsKovraProof", Text(provision), login);
    EXPECT_NE(result.find("<item key=\"D1\" code=\"101\" dsc=\"存货A现存量不足;\"/>"), std::string::npos) << result;
    EXPECT_TRUE(account_.Rows("SELECT cDecCode FROM IA_DecReady").empty()) << "rolled back";
}

TEST_F(ReferencesTest, ResultThatIsNothingStopsTheProvisionsUncommitted) {
    const DispatchObject login = AccountLogin();
    for (const ComPtr<IDispatch>& object : {ComPtr<IDispatch>(), AnyObject()}) {
        const Extended saving(service, L"SaveVoucher", [&object](const Arguments& arguments) {
            arguments.Return(5, VariantHolder(object.Get()));
        });
        const std::string result = test::Transact(L"Kovra.ClsKovraProof", Text(provision), login);
        const std::string message(object ? typeMismatch : objectNotSet);
        EXPECT_NE(result.find("<item key=\"\" code=\"999\" dsc=\"" + message + "\"/>"), std::string::npos) << result;
        EXPECT_TRUE(account_.Rows("SELECT cDecCode FROM IA_DecReady").empty());
    }
}

TEST_F(ReferencesTest, OutcomesInANewDocumentAreTheResult) {
    test::InNewApartment([this] {
        const DispatchObject login = AccountLogin();
        const Extended adding(helper, L"AddResultItem", [](const Arguments& arguments) {
            XmlDocument result;
            EXPECT_TRUE(result.LoadXML("<moved/>"));
            arguments.Return(0, Holder(result));
        });
        const std::string result =
            test::Transact(L"Kovra.ClsInvSubject",
                           Text("<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row/></qxinterface>"), login);
        EXPECT_TRUE(result.starts_with("<moved/>")) << result;
    }).join();
}

TEST_F(ReferencesTest, ElementOfTheQueryIsTheOneThatTheConverterPutThere) {
    account_.Run("INSERT INTO rdrecord (ID, bRdFlag, cCode, cWhCode, dDate, bPuFirst) VALUES "
                 "(1, 1, N'R1', N'01', '2023-01-02', 0)");
    const Extended converting(converter, L"HeadToXml", [](const Arguments& arguments) {
        const auto given = server::ToObject(arguments[0]).As<IXMLDOMElement>();
        ComPtr<IXMLDOMDocument> owner;
        server::ThrowIfFailed(given->get_ownerDocument(owner.Put()));
        const host::DOMNodePtr put = XmlDocument(std::move(owner)).CreateElement("put");
        arguments.Return(0, Holder(*put));
    });
    const DispatchObject instance = Make(L"Kovra.ClsKovraProof");
    instance.Call(L"Transact", Text("no XML"), Holder(AccountLogin()));
    XmlDocument list;
    ASSERT_TRUE(list.LoadXML("<l/>"));
    ComPtr<IXMLDOMNodeList> conditions;
    ASSERT_EQ(server::ComNode(list.DocumentElement().get())->get_childNodes(conditions.Put()), S_OK);
    VariantHolder envelope = Text("<q roottag=\"stock\"><storeinout type=\"入库单\"/></q>");
    instance.Call(L"QueryProc", VariantHolder(static_cast<IDispatch*>(conditions.Get())),
                  VariantHolder::VariantReference(envelope));
    const XmlDocument filled = Document(server::ToText(envelope.Get()));
    EXPECT_EQ(filled.SelectNodes("/q/put").size(), 1U) << filled.Xml();
    EXPECT_TRUE(filled.SelectNodes("/q/stock").empty()) << filled.Xml();
}

TEST_F(ReferencesTest, RecordsetThatTheCompanionPutThereIsRead) {
    const DispatchObject connectionObject = Connection();
    AdoConnection adoConnection(connectionObject);
    AdoRecordset target;
    adoConnection.Execute("INSERT INTO Warehouse (cWhCode) VALUES (N'01'), (N'02')", -1);
    const Extended opening(companion, L"OpenDBS", [&](const Arguments& arguments) {
        arguments.Return(0, Holder(Recordset(connectionObject, "SELECT cWhCode FROM Warehouse WHERE cWhCode = N'02'")));
    });
    server::MakeZendaT()->OpenDBS(target, adoConnection, "SELECT COUNT(*) AS n FROM Warehouse");
    EXPECT_EQ(target.FieldValue("cWhCode"), host::Value("02"));
}
