#include "server/com/AutomationClass.h"
#include "tests/support/com/CountedObject.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostedFixture.h"
#include "tests/support/com/ScriptedObject.h"

#include <dispex.h>

namespace {

using server::AutomationClass;
using server::DispatchObject;
using test::CallCounts;
using test::ExpectError;
using test::MakeObject;
using test::Returns;

std::string Text(const DispatchObject& object, const wchar_t* member) {
    return server::ToText(object.Get(member).Get());
}

/// As an object of a script: it could be given members. What it has is `members`'.
class Expandable final : public server::UnknownObject<IDispatchEx> {
public:
    explicit Expandable(server::ComPtr<IDispatch> members) : members_(std::move(members)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return UnknownObject::QueryInterface(id == IID_IDispatch ? __uuidof(IDispatchEx) : id, object);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return members_->GetTypeInfoCount(count); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return members_->GetIDsOfNames(id, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        return members_->Invoke(member, id, locale, flags, parameters, result, exception, wrongArgument);
    }
    HRESULT STDMETHODCALLTYPE GetDispID(BSTR, DWORD, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InvokeEx(DISPID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                       IServiceProvider*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

private:
    server::ComPtr<IDispatch> members_;
};

class MemberIds : public test::HostedTest {};

TEST_F(MemberIds, ANameOfAnObjectIsLookedUpOnce) {
    CallCounts counts;
    const DispatchObject object(Counted(MakeObject({{L"a", Returns("1")}, {L"b", Returns("2")}}), L"Object", counts));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Text(object, L"a"), "1");
        EXPECT_EQ(Text(object, L"b"), "2");
    }
    EXPECT_EQ(counts.lookUps, (std::map<std::wstring, int>{{L"Object.a", 1}, {L"Object.b", 1}}));
    EXPECT_EQ(counts.calls, (std::map<std::wstring, int>{{L"Object.a", 3}, {L"Object.b", 3}}));
}

TEST_F(MemberIds, AMemberThatIsMissingIsAskedForAgain) {
    CallCounts counts;
    const DispatchObject object(Counted(MakeObject({}), L"Object", counts));
    ExpectError(438, "对象不支持该属性或方法", [&] { object.Get(L"a"); });
    ExpectError(438, "对象不支持该属性或方法", [&] { object.Get(L"a"); });
    EXPECT_EQ(counts.lookUps[L"Object.a"], 2);
}

// The second object is a login of the host's library, the first one a script: the same name has different numbers.
TEST_F(MemberIds, ObjectsOfAnotherTypeAreLookedUpAnew) {
    const auto members = std::make_shared<server::MemberIds>();
    const DispatchObject scripted(MakeObject({{L"other", Returns("0")}, {L"cUserName", Returns("scripted")}}), members);
    const DispatchObject login(test::Login("<login cUserName=\"login\"/>").object(), members);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Text(scripted, L"cUserName"), "scripted");
        EXPECT_EQ(Text(login, L"cUserName"), "login");
    }
}

TEST_F(MemberIds, ObjectsOfAClassShareThem) {
    CallCounts counts;
    test::ReplacedClass replaced(L"KovraHost.Login", [&] {
        return Counted(MakeObject({{L"a", Returns("1")}}), L"Object", counts);
    });
    AutomationClass type(L"KovraHost.Login");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Text(type.Create(), L"a"), "1");
    EXPECT_EQ(counts.lookUps[L"Object.a"], 1);
}

// The same name has another number in the second object.
TEST_F(MemberIds, ObjectsThatCanBeGivenMembersHaveNumbersOfTheirOwn) {
    std::vector<test::ScriptedMembers> scripts = {{{L"other", Returns("0")}, {L"a", Returns("1")}},
                                                  {{L"a", Returns("2")}, {L"other", Returns("0")}}};
    std::size_t made = 0;
    test::ReplacedClass replaced(L"KovraHost.Login", [&] {
        return server::ComPtr<IDispatch>::Adopt(new Expandable(MakeObject(scripts[made++])));
    });
    AutomationClass type(L"KovraHost.Login");
    const DispatchObject first = type.Create();
    EXPECT_EQ(Text(first, L"a"), "1");
    EXPECT_EQ(Text(type.Create(), L"a"), "2");
    EXPECT_EQ(Text(first, L"a"), "1");
}

TEST_F(MemberIds, AClassThatFailsIsFoundAnew) {
    bool fails = true;
    test::ReplacedClass replaced(L"KovraHost.Login", [&] {
        if (fails)
            throw host::Error(host::error_number::outOfMemory, "内存溢出");
        return MakeObject({{L"a", Returns("1")}});
    });
    AutomationClass type(L"KovraHost.Login");
    ExpectError(429, "ActiveX 部件不能创建对象", [&] { type.Create(); });
    fails = false;
    EXPECT_EQ(Text(type.Create(), L"a"), "1");
    AutomationClass nobody(L"Nobody.Knows");
    ExpectError(429, "ActiveX 部件不能创建对象", [&] { nobody.Create(); });
}

} // namespace
