// What COM asks of an automation object beside its members: kinds of calls, names, reserved arguments, class
// information.
#include "server/com/BString.h"
#include "server/com/Utf16.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostFixture.h"
#include "tests/support/com/RegisteredClasses.h"
#include "tests/support/com/ScriptedObject.h"

#include <span>
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

constexpr DISPID transact = 1;
constexpr std::string_view objectNotSetResult = "<error code=\"91\" dsc=\"对象变量或 With 块变量未设置\"/>";

class Invoke : public test::HostTest {
protected:
    /// Calls `Transact` with a request and no login, which gives error 91 as result, by these flags and names.
    HRESULT Transact(WORD flags, std::vector<DISPID> names = {}, REFIID reserved = IID_NULL) {
        const VariantHolder request = Text("<a/>");
        const VariantHolder login = Nothing();
        // By position the last one comes first; the tests name both or none.
        VARIANT arguments[] = {login.Get(), request.Get()};
        DISPPARAMS parameters{arguments, names.data(), 2, static_cast<UINT>(names.size())};
        EXCEPINFO exception{};
        return object_->Invoke(transact, reserved, LOCALE_USER_DEFAULT, flags, &parameters, result_.Put(), &exception,
                               &wrong_);
    }
    std::string Result() const { return server::ToText(result_.Get()); }

    ComPtr<IDispatch> object_ = Make(L"Kovra.ClsInvSubject").object();
    VariantHolder result_;
    UINT wrong_ = 99;
};

/// The ProgID of each class of both libraries, and its name, which stands behind the point.
std::vector<std::pair<const wchar_t*, std::wstring_view>> ClassNames() {
    std::vector<std::pair<const wchar_t*, std::wstring_view>> names;
    const auto add = [&](std::span<const test::RegisteredClass> classes) {
        for (const test::RegisteredClass& one : classes) {
            const std::wstring_view progId = one.progId;
            names.emplace_back(one.progId, progId.substr(progId.find(L'.') + 1));
        }
    };
    add(test::kovraClasses);
    add(test::hostClasses);
    return names;
}

std::wstring NameOf(ITypeInfo& information) {
    BString name;
    EXPECT_EQ(information.GetDocumentation(MEMBERID_NIL, name.Put(), nullptr, nullptr, nullptr), S_OK);
    return std::wstring(name.View());
}

/// A type description's own facts, given back at the end.
class Attributes {
public:
    explicit Attributes(ITypeInfo& information) : information_(information) {
        EXPECT_EQ(information.GetTypeAttr(&attributes_), S_OK);
    }
    ~Attributes() { information_.ReleaseTypeAttr(attributes_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    const TYPEATTR* operator->() const { return attributes_; }

private:
    ITypeInfo& information_;
    TYPEATTR* attributes_ = nullptr;
};

} // namespace

TEST_F(Invoke, MethodIsCalledAsAMethodAlone) {
    EXPECT_EQ(Transact(DISPATCH_METHOD), S_OK);
    EXPECT_EQ(Result(), objectNotSetResult);
    EXPECT_EQ(Transact(DISPATCH_METHOD | DISPATCH_PROPERTYGET), S_OK) << "as scripts call a function";
    constexpr WORD others[] = {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYGET};
    for (const WORD way : others)
        EXPECT_EQ(Transact(way), DISP_E_MEMBERNOTFOUND) << way;
    // Set object.Transact(request) = login
    EXPECT_EQ(Transact(DISPATCH_PROPERTYPUTREF, {DISPID_PROPERTYPUT}), DISP_E_MEMBERNOTFOUND);
}

TEST_F(Invoke, PropertyIsReadAndNotCalledOrPut) {
    const ComPtr<IDispatch> login = AccountLogin().object();
    wchar_t name[] = L"cAcc_Id";
    wchar_t* names = name;
    DISPID id = 0;
    ASSERT_EQ(login->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
    DISPPARAMS none{};
    const auto invoke = [&](WORD flags) {
        return login->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &none, result_.Put(), nullptr, nullptr);
    };
    EXPECT_EQ(invoke(DISPATCH_PROPERTYGET), S_OK);
    EXPECT_EQ(Result(), "001");
    EXPECT_EQ(invoke(DISPATCH_METHOD), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoke(DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND);
}

TEST_F(Invoke, UnknownAndRepeatedNamesAreNotFound) {
    EXPECT_EQ(Transact(DISPATCH_METHOD, {1, 0}), S_OK) << "login and request, by their names";
    EXPECT_EQ(Result(), objectNotSetResult);
    EXPECT_EQ(Transact(DISPATCH_METHOD, {1, 2}), DISP_E_PARAMNOTFOUND) << "there is no third parameter";
    EXPECT_EQ(wrong_, 1U);
    EXPECT_EQ(Transact(DISPATCH_METHOD, {-7, 0}), DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(wrong_, 0U);
    EXPECT_EQ(Transact(DISPATCH_METHOD, {1, 1}), DISP_E_PARAMNOTFOUND) << "the login twice";
    EXPECT_EQ(wrong_, 1U);
    EXPECT_EQ(Transact(DISPATCH_METHOD, {0}), DISP_E_PARAMNOTFOUND) << "the request by position and by name";
    EXPECT_EQ(wrong_, 0U);
    EXPECT_EQ(Transact(DISPATCH_METHOD, {DISPID_PROPERTYPUT}), DISP_E_PARAMNOTFOUND) << "a method has no new value";
    EXPECT_EQ(wrong_, 0U);
}

TEST_F(Invoke, ReservedArgumentIsNull) {
    EXPECT_EQ(Transact(DISPATCH_METHOD, {}, IID_IDispatch), DISP_E_UNKNOWNINTERFACE);
    std::wstring first = L"Transact";
    std::wstring second = L"sXml";
    wchar_t* names[] = {first.data(), second.data()};
    DISPID ids[] = {0, 0};
    for (const UINT count : {1U, 2U})
        EXPECT_EQ(object_->GetIDsOfNames(IID_IDispatch, names, count, LOCALE_USER_DEFAULT, ids),
                  DISP_E_UNKNOWNINTERFACE);
}

TEST_F(Invoke, NoPlaceForTheResultLeavesNoEarlierError) {
    const ComPtr<_ClsInvSubject> settings = object_.As<_ClsInvSubject>();
    const ComPtr<_ClsKovraProof> proof = Make(L"Kovra.ClsKovraProof").object().As<_ClsKovraProof>();
    const ComPtr<_ClsKovra> openings = Make(L"Kovra.ClsKovra").object().As<_ClsKovra>();
    const auto expectForgotten = [](auto&& call) {
        server::SetErrorObject(host::Error(7, "An earlier failure."));
        EXPECT_EQ(call(), E_POINTER);
        ComPtr<IErrorInfo> left;
        EXPECT_EQ(GetErrorInfo(0, left.Put()), S_FALSE);
    };
    IDispatch* nothing = nullptr;
    expectForgotten([&] { return settings->Transact(nullptr, &nothing, nullptr); });
    expectForgotten([&] { return openings->InvCodeIsTorF(nullptr, nullptr, nullptr); });
    expectForgotten([&] { return proof->GetRetString(&nothing, nullptr); });
    expectForgotten([&] { return proof->VerifyDomH(&nothing, &nothing, nullptr); });
    expectForgotten([&] { return proof->QueryProc(&nothing, nullptr, nullptr); });
    expectForgotten([&] { return settings->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr); });
}

TEST_F(Invoke, UnknownThatIsAnObjectCountsAsOne) {
    const ComPtr<IDispatch> text = test::MakeObject({{L"", test::Returns("<a/>")}});
    const VariantHolder request(text.TryAs<IUnknown>().Get());
    ASSERT_EQ(V_VT(&request.Get()), VT_UNKNOWN);
    EXPECT_EQ(server::ToText(DispatchObject(object_).Call(L"Transact", request, Nothing()).Get()), objectNotSetResult);
    const VariantHolder login(AccountLogin().object().TryAs<IUnknown>().Get());
    EXPECT_TRUE(server::ToText(DispatchObject(object_).Call(L"Transact", Text("no XML"), login).Get())
                    .starts_with("<error code=\"100\""));
}

TEST_F(Invoke, ClassInformationNamesTheClass) {
    for (const auto& [progId, name] : ClassNames()) {
        const ComPtr<IProvideClassInfo> provider = Make(progId).object().As<IProvideClassInfo>();
        ComPtr<ITypeInfo> information;
        ASSERT_EQ(provider->GetClassInfo(information.Put()), S_OK) << server::ToUtf8(progId);
        EXPECT_EQ(NameOf(*information.Get()), name);
        CLSID classId{};
        ASSERT_EQ(CLSIDFromProgID(progId, &classId), S_OK);
        const Attributes attributes(*information.Get());
        EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
        EXPECT_TRUE(attributes->guid == classId) << server::ToUtf8(progId);
    }
}

// The type libraries give every member the number under which the object takes it.
TEST_F(Invoke, TypeLibraryKnowsTheMembersAsTheObjectDoes) {
    for (const auto& [progId, name] : ClassNames()) {
        const ComPtr<IDispatch> object = Make(progId).object();
        UINT count = 0;
        EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
        ASSERT_EQ(count, 1U) << server::ToUtf8(progId);
        ComPtr<ITypeInfo> information;
        ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.Put()), S_OK);
        EXPECT_EQ(NameOf(*information.Get()), L"_" + std::wstring(name));
        const Attributes attributes(*information.Get());
        UINT members = 0;
        for (UINT i = 0; i < attributes->cFuncs; ++i) {
            FUNCDESC* function = nullptr;
            ASSERT_EQ(information->GetFuncDesc(i, &function), S_OK);
            const DISPID described = function->memid;
            const auto parameters = static_cast<std::size_t>(function->cParams);
            const INVOKEKIND kind = function->invkind;
            information->ReleaseFuncDesc(function);
            if (described >= 0x60000000)
                continue; // of IDispatch
            ++members;
            BString member;
            UINT named = 0;
            ASSERT_EQ(information->GetNames(described, member.Put(), 1, &named), S_OK);
            wchar_t* text = member.Get();
            DISPID own = DISPID_UNKNOWN;
            EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &own), S_OK);
            EXPECT_EQ(own, described) << server::ToUtf8(member.View());
            // One argument too many is told from a call of another kind.
            std::vector<VARIANT> tooMany(parameters + 9);
            DISPPARAMS call{tooMany.data(), nullptr, static_cast<UINT>(tooMany.size()), 0};
            const WORD other = kind == INVOKE_FUNC ? DISPATCH_PROPERTYGET : DISPATCH_METHOD;
            EXPECT_EQ(object->Invoke(own, IID_NULL, LOCALE_USER_DEFAULT, other, &call, nullptr, nullptr, nullptr),
                      DISP_E_MEMBERNOTFOUND)
                << server::ToUtf8(member.View());
        }
        EXPECT_GT(members, 0U) << server::ToUtf8(progId);
    }
}
