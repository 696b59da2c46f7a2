// The public methods beside Transact, as late-bound and as early-bound clients call them.
#include "server/adapters/XmlNode.h"
#include "server/com/BString.h"
#include "server/com/Utf16.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostFixture.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <Kovra.h>

namespace {

using server::BString;
using server::ComPtr;
using server::DispatchObject;
using server::VariantHolder;
using server::XmlDocument;
using test::ErrorDescription;
using test::ExpectError;
using test::objectNotSet;
using test::typeMismatch;

constexpr HRESULT error91 = static_cast<HRESULT>(0x800A005B);
constexpr HRESULT error94 = static_cast<HRESULT>(0x800A005E);

class Methods : public test::HostTest {
protected:
    /// An instance whose `Transact` has opened the account. The caller keeps no login.
    DispatchObject Opened(const wchar_t* progId) const {
        DispatchObject instance = Make(progId);
        const VariantHolder result = instance.Call(L"Transact", Text("no XML"), Holder(AccountLogin()));
        EXPECT_TRUE(server::ToText(result.Get()).starts_with("<error code=\"100\"")) << server::ToText(result.Get());
        return instance;
    }

    /// The numbers of a member and its parameters.
    static std::vector<DISPID> Names(const DispatchObject& object, std::vector<std::wstring> texts) {
        std::vector<wchar_t*> names;
        for (std::wstring& text : texts)
            names.push_back(text.data());
        std::vector<DISPID> ids(names.size());
        EXPECT_EQ(object.object()->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()),
                                                 LOCALE_USER_DEFAULT, ids.data()),
                  S_OK);
        return ids;
    }
    /// Calls a member with named arguments, the first of `arguments`, and with others behind them, the last one first.
    template <std::size_t count>
    static VariantHolder Invoke(const DispatchObject& object, DISPID member, VariantHolder (&&arguments)[count],
                                std::vector<DISPID> named) {
        VARIANT variants[count];
        std::ranges::transform(arguments, variants, &VariantHolder::Get);
        DISPPARAMS parameters{variants, named.data(), static_cast<UINT>(count), static_cast<UINT>(named.size())};
        VariantHolder result;
        server::ThrowIfFailed(object.object()->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                                      &parameters, result.Put(), nullptr, nullptr));
        return result;
    }
};

class StartEndDate : public Methods {
protected:
    StartEndDate() {
        account_.Run("INSERT INTO QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) VALUES "
                     "(N'001', 2023, 2, '2023-02-01', '2023-02-28')");
    }

    DispatchObject late_ = Opened(L"Kovra.ClsPriceJustVou");
    ComPtr<_ClsPriceJustVou> early_ = late_.object().As<_ClsPriceJustVou>();
    short month_ = 2;
    short year_ = 2023;
    VARIANT_BOOL found_ = VARIANT_FALSE;
};

class InvCodeIsTorF : public Methods {
protected:
    InvCodeIsTorF() {
        account_.Run("INSERT INTO Inventory (cInvCode, bInvBatch, bInvQuality, bTrack) VALUES (N'A', 1, 0, NULL)");
    }
};

class QueryProc : public Methods {
protected:
    QueryProc() {
        account_.Run("INSERT INTO rdrecord (ID, bRdFlag, cCode, cWhCode, dDate, bPuFirst) VALUES "
                     "(1, 1, N'R1', N'01', '2023-01-02', 0), (2, 0, N'I1', N'01', '2023-01-03', 0), "
                     "(3, 1, N'R2', N'02', '2023-01-04', 0)\nGO\n"
                     "INSERT INTO rdrecords (ID, cInvCode, iQuantity) VALUES (1, N'A', 2)");
    }

    static constexpr std::string_view envelope_ = "<q roottag=\"stock\" docid=\"7\"><storeinout type=\"入库单\"/></q>";

    /// A list of these condition elements.
    VariantHolder Conditions(std::string_view elements) {
        conditions_ = Document("<eleList>" + std::string(elements) + "</eleList>");
        ComPtr<IXMLDOMNodeList> list;
        const BString path(L"/eleList/*");
        EXPECT_EQ(conditions_.document()->selectNodes(path.Get(), list.Put()), S_OK);
        return VariantHolder(static_cast<IDispatch*>(list.Get()));
    }
    /// The numbers of the documents in an envelope, each behind a blank.
    static std::string Numbers(const std::string& envelope) {
        std::string numbers;
        for (const host::DOMNodePtr& number : Document(envelope).SelectNodes("/q[@docid='7']/stock/header/cCode"))
            numbers += " " + number->Text();
        return numbers;
    }

private:
    XmlDocument conditions_;
};

} // namespace

TEST_F(StartEndDate, ComesInVariantsByReference) {
    VariantHolder first;
    VariantHolder last(7);
    EXPECT_TRUE(
        server::ToBoolean(late_
                              .Call(L"GetStartEndDate", VariantHolder(2), VariantHolder(2023),
                                    VariantHolder::VariantReference(first), VariantHolder::VariantReference(last))
                              .Get()));
    EXPECT_EQ(server::ToValue(first.Get()), host::Value("2023-02-01"));
    EXPECT_EQ(server::ToValue(last.Get()), host::Value("2023-02-28"));
}

TEST_F(StartEndDate, ComesInTextsByReference) {
    VariantHolder month = Text("2");
    VariantHolder first = Text("before");
    EXPECT_TRUE(server::ToBoolean(late_
                                      .Call(L"GetStartEndDate", VariantHolder::VariantReference(month),
                                            VariantHolder(2023), VariantHolder::ByReference(first))
                                      .Get()));
    EXPECT_EQ(server::ToValue(first.Get()), host::Value("2023-02-01"));
}

TEST_F(StartEndDate, TakesAbsentArguments) {
    EXPECT_TRUE(server::ToBoolean(late_.Call(L"GetStartEndDate", VariantHolder(2), VariantHolder(2023)).Get()));
    VariantHolder last;
    EXPECT_TRUE(server::ToBoolean(late_
                                      .Call(L"GetStartEndDate", VariantHolder(2), VariantHolder(2023),
                                            VariantHolder::Missing(), VariantHolder::VariantReference(last))
                                      .Get()));
    EXPECT_EQ(server::ToValue(last.Get()), host::Value("2023-02-28"));
}

TEST_F(StartEndDate, LeavesArgumentsAloneForAnUnknownMonth) {
    VariantHolder first = Text("before");
    VariantHolder last(5);
    EXPECT_FALSE(
        server::ToBoolean(late_
                              .Call(L"GetStartEndDate", VariantHolder(12), VariantHolder(2023),
                                    VariantHolder::VariantReference(first), VariantHolder::VariantReference(last))
                              .Get()));
    EXPECT_EQ(server::ToValue(first.Get()), host::Value("before"));
    EXPECT_EQ(server::ToValue(last.Get()), host::Value(5));
}

TEST_F(StartEndDate, EarlyBound) {
    VariantHolder first;
    VariantHolder last;
    ASSERT_EQ(early_->GetStartEndDate(&month_, &year_, first.Put(), last.Put(), &found_), S_OK);
    EXPECT_EQ(found_, VARIANT_TRUE);
    EXPECT_EQ(server::ToValue(first.Get()), host::Value("2023-02-01"));
    EXPECT_EQ(server::ToValue(last.Get()), host::Value("2023-02-28"));
    EXPECT_EQ(early_->GetStartEndDate(nullptr, &year_, first.Put(), last.Put(), &found_), E_POINTER);
}

// Visual Basic passes a Variant of its own for what is left out, and does not look at it again.
TEST_F(StartEndDate, EarlyBoundDoesNotWriteToWhatIsLeftOut) {
    VARIANT missing;
    VariantHolder::Missing().DetachTo(&missing);
    VariantHolder last;
    ASSERT_EQ(early_->GetStartEndDate(&month_, &year_, &missing, last.Put(), &found_), S_OK);
    EXPECT_EQ(found_, VARIANT_TRUE);
    EXPECT_EQ(V_VT(&missing), VT_ERROR);
    EXPECT_EQ(server::ToValue(last.Get()), host::Value("2023-02-28"));
    EXPECT_EQ(early_->GetStartEndDate(&month_, &year_, nullptr, nullptr, &found_), S_OK);
    EXPECT_EQ(found_, VARIANT_TRUE);
}

TEST_F(StartEndDate, NeedsAnOpenAccount) {
    const DispatchObject instance = Make(L"Kovra.ClsPriceJustVou");
    ExpectError(91, objectNotSet, [&] { instance.Call(L"GetStartEndDate", VariantHolder(2), VariantHolder(2023)); });
    ExpectError(6, "溢出", [&] { late_.Call(L"GetStartEndDate", VariantHolder(40000), VariantHolder(2023)); });
}

TEST_F(StartEndDate, TakesArgumentsByName) {
    const std::vector<DISPID> ids = Names(late_, {L"getstartenddate", L"VARSTART", L"varEnd", L"intMonth", L"intYear"});
    EXPECT_EQ(ids, (std::vector<DISPID>{2, 2, 3, 0, 1}));
    VariantHolder last;
    const auto byName = [&] { return VariantHolder::VariantReference(last); };
    // GetStartEndDate(2, 2023, varEnd:=last)
    EXPECT_TRUE(server::ToBoolean(Invoke(late_, ids[0], {byName(), VariantHolder(2023), VariantHolder(2)}, {3}).Get()));
    EXPECT_EQ(server::ToValue(last.Get()), host::Value("2023-02-28"));
    // GetStartEndDate(intYear:=2023, varEnd:=last, intMonth:=2)
    last = VariantHolder();
    EXPECT_TRUE(
        server::ToBoolean(Invoke(late_, ids[0], {VariantHolder(2023), byName(), VariantHolder(2)}, {1, 3, 0}).Get()));
    EXPECT_EQ(server::ToValue(last.Get()), host::Value("2023-02-28"));
    // GetStartEndDate(2, varEnd:=last): the year is missing.
    try {
        Invoke(late_, ids[0], {byName(), VariantHolder(2)}, {3});
        ADD_FAILURE() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), 449);
    }
}

TEST_F(Methods, TransactTakesArgumentsByName) {
    const DispatchObject instance = Make(L"Kovra.ClsInvSubject");
    const std::vector<DISPID> ids = Names(instance, {L"Transact", L"login", L"sXml"});
    ASSERT_EQ(ids, (std::vector<DISPID>{1, 1, 0}));
    const VariantHolder result = Invoke(instance, 1, {Text("no XML"), Holder(AccountLogin())}, {ids[2], ids[1]});
    EXPECT_TRUE(server::ToText(result.Get()).starts_with("<error code=\"100\"")) << server::ToText(result.Get());

    std::wstring method = L"Transact";
    std::wstring parameter = L"request";
    wchar_t* names[] = {method.data(), parameter.data()};
    DISPID unknown[] = {0, 0};
    EXPECT_EQ(instance.object()->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, unknown), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(unknown[1], DISPID_UNKNOWN);
}

TEST_F(InvCodeIsTorF, AnswersAFlag) {
    const DispatchObject instance = Opened(L"Kovra.ClsKovra");
    const auto flag = [&](std::string_view code, std::string_view column) {
        const VariantHolder result = instance.Call(L"InvCodeIsTorF", Text(code), Text(column));
        EXPECT_EQ(V_VT(&result.Get()), VT_BOOL);
        return V_BOOL(&result.Get());
    };
    EXPECT_EQ(flag("A", "bInvBatch"), VARIANT_TRUE);
    EXPECT_EQ(flag("A", "bInvQuality"), VARIANT_FALSE);
    ExpectError(94, "无效使用 Null", [&] { flag("A", "bTrack"); });
    ExpectError(-2147217900, "Invalid column name 'none'.", [&] { flag("A", "none"); });
}

TEST_F(InvCodeIsTorF, EarlyBound) {
    const ComPtr<_ClsKovra> instance = Opened(L"Kovra.ClsKovra").object().As<_ClsKovra>();
    const BString code(L"A");
    const BString batch(L"bInvBatch");
    const BString quality(L"bInvQuality");
    const BString track(L"bTrack");
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(instance->InvCodeIsTorF(code.Get(), batch.Get(), &result), S_OK);
    EXPECT_EQ(result, VARIANT_TRUE);
    EXPECT_EQ(instance->InvCodeIsTorF(code.Get(), quality.Get(), &result), S_OK);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_EQ(instance->InvCodeIsTorF(code.Get(), track.Get(), &result), error94);
    EXPECT_EQ(ErrorDescription(), "无效使用 Null");
    EXPECT_EQ(instance->InvCodeIsTorF(code.Get(), batch.Get(), nullptr), E_POINTER);
}

TEST_F(InvCodeIsTorF, NeedsAnOpenAccount) {
    ExpectError(91, objectNotSet, [] { Make(L"Kovra.ClsKovra").Call(L"InvCodeIsTorF", Text("A"), Text("bInvBatch")); });
}

TEST_F(Methods, GetRetStringTurnsCheckResultsIntoAMessage) {
    const XmlDocument results =
        Document("<r xmlns:z=\"#RowsetSchema\"><zeroout><z:row cinvcode=\"A\"/><z:row cinvcode=\"B\"/></zeroout>"
                 "<itemcheck><z:row cinvcode=\"C\"/></itemcheck></r>");
    constexpr std::string_view message = "存货A现存量不足;存货B现存量不足;存货[C]项目预算检查失败;";
    const DispatchObject instance = Make(L"Kovra.ClsKovraProof");
    VariantHolder document = Holder(results);
    const auto text = [&](const VariantHolder& argument) {
        return server::ToText(instance.Call(L"GetRetString", argument).Get());
    };
    EXPECT_EQ(text(document), message);
    EXPECT_EQ(text(VariantHolder::ByReference(document)), message);
    EXPECT_EQ(text(VariantHolder::VariantReference(document)), message);
    ExpectError(91, objectNotSet, [&] { text(Nothing()); });
    ExpectError(13, typeMismatch, [&] { text(Holder(instance)); });

    const ComPtr<_ClsKovraProof> early = instance.object().As<_ClsKovraProof>();
    IDispatch* object = results.document().Get();
    BString result;
    EXPECT_EQ(early->GetRetString(&object, result.Put()), S_OK);
    EXPECT_EQ(server::ToUtf8(result.View()), message);
    object = nullptr;
    EXPECT_EQ(early->GetRetString(&object, result.Put()), error91);
    EXPECT_EQ(ErrorDescription(), objectNotSet);
}

TEST_F(Methods, VerifyDomHReturnsEmptyEarlyBoundToo) {
    const ComPtr<_ClsKovraProof> instance = Make(L"Kovra.ClsKovraProof").object().As<_ClsKovraProof>();
    IDispatch* nothing = nullptr;
    VariantHolder result(7);
    EXPECT_EQ(instance->VerifyDomH(&nothing, &nothing, result.Put()), S_OK);
    EXPECT_EQ(V_VT(&result.Get()), VT_EMPTY);
}

TEST_F(QueryProc, FillsTheEnvelopeThatItIsGivenByReference) {
    const DispatchObject instance = Opened(L"Kovra.ClsKovraProof");
    const VariantHolder none = Conditions("");
    VariantHolder envelope = Text(envelope_);
    const VariantHolder result = instance.Call(L"QueryProc", none, VariantHolder::VariantReference(envelope));
    EXPECT_EQ(V_VT(&result.Get()), VT_BOOL);
    EXPECT_EQ(V_BOOL(&result.Get()), VARIANT_FALSE) << "which is no failure";
    EXPECT_EQ(Numbers(server::ToText(envelope.Get())), " R1 R2");

    envelope = Text(envelope_);
    VariantHolder conditions = Conditions("<condition name=\"cWhCode\" operation=\"=\" value=\"02\" logic=\"and\"/>");
    instance.Call(L"QueryProc", VariantHolder::ByReference(conditions), VariantHolder::ByReference(envelope));
    EXPECT_EQ(Numbers(server::ToText(envelope.Get())), " R2");

    // A caller that walked through the list has left it at its end.
    const ComPtr<IXMLDOMNodeList> list = server::ToObject(conditions.Get()).As<IXMLDOMNodeList>();
    ComPtr<IXMLDOMNode> node;
    while (list->nextNode(node.Put()) == S_OK) {
    }
    envelope = Text(envelope_);
    instance.Call(L"QueryProc", conditions, VariantHolder::VariantReference(envelope));
    EXPECT_EQ(Numbers(server::ToText(envelope.Get())), " R2");
}

TEST_F(QueryProc, LeavesAnEnvelopeByValueAlone) {
    const VariantHolder envelope = Text(envelope_);
    EXPECT_FALSE(server::ToBoolean(Opened(L"Kovra.ClsKovraProof").Call(L"QueryProc", Conditions(""), envelope).Get()));
    EXPECT_EQ(server::ToText(envelope.Get()), envelope_);
}

TEST_F(QueryProc, RunsUnfilteredForWhatIsNoListOfElements) {
    const DispatchObject instance = Opened(L"Kovra.ClsKovraProof");
    VariantHolder envelope = Text(envelope_);
    instance.Call(L"QueryProc", Nothing(), VariantHolder::VariantReference(envelope));
    EXPECT_EQ(Numbers(server::ToText(envelope.Get())), " R1 I1 R2") << "the kind's own filter is lost too";
    envelope = Text(envelope_);
    instance.Call(L"QueryProc", Holder(instance), VariantHolder::VariantReference(envelope));
    EXPECT_EQ(Numbers(server::ToText(envelope.Get())), " R1 I1 R2");
}

TEST_F(QueryProc, NeedsAConnection) {
    ExpectError(91, objectNotSet,
                [&] { Make(L"Kovra.ClsKovraProof").Call(L"QueryProc", Conditions(""), Text(envelope_)); });
}

TEST_F(QueryProc, EarlyBound) {
    const ComPtr<_ClsKovraProof> instance = Opened(L"Kovra.ClsKovraProof").object().As<_ClsKovraProof>();
    const ComPtr<IDispatch> conditions = server::ToObject(Conditions("").Get());
    IDispatch* list = conditions.Get();
    BSTR text = BString(server::ToUtf16(envelope_)).Detach();
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(instance->QueryProc(&list, &text, &result), S_OK);
    const BString filled = BString::Adopt(text);
    EXPECT_EQ(result, VARIANT_FALSE);
    EXPECT_EQ(Numbers(server::ToUtf8(filled.View())), " R1 R2");
}

TEST_F(QueryProc, RaisesTheDatabasesErrors) {
    const DispatchObject instance = Opened(L"Kovra.ClsKovraProof");
    VariantHolder envelope = Text("<q roottag=\"stock\"><storeinout type=\"其他\"/></q>");
    const VariantHolder conditions =
        Conditions("<condition name=\"qxts\" operation=\"&gt;\" value=\"1\" logic=\"and\"/>");
    const std::string before = server::ToText(envelope.Get());
    ExpectError(-2147217900, "Incorrect syntax near the keyword 'and'.",
                [&] { instance.Call(L"QueryProc", conditions, VariantHolder::VariantReference(envelope)); });
    EXPECT_EQ(server::ToText(envelope.Get()), before);

    const ComPtr<_ClsKovraProof> early = instance.object().As<_ClsKovraProof>();
    const ComPtr<IDispatch> object = server::ToObject(conditions.Get());
    IDispatch* list = object.Get();
    BSTR text = BString(server::ToUtf16(before)).Detach();
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(early->QueryProc(&list, &text, &result), static_cast<HRESULT>(-2147217900));
    const BString unchanged = BString::Adopt(text);
    EXPECT_EQ(server::ToUtf8(unchanged.View()), before);
    EXPECT_EQ(ErrorDescription(), "Incorrect syntax near the keyword 'and'.");
}
