#include "server/com/AutomationClass.h"
#include "tests/support/com/CountedObject.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostedTest.h"
#include "tests/support/com/ScriptedObject.h"

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
