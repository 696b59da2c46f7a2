// The classes as clients see them, without the host's components: what must then come back is an error result.
#include "server/com/BString.h"
#include "server/com/DispatchObject.h"
#include "server/com/Utf16.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/RegisteredClasses.h"
#include "tests/support/com/ServerFixture.h"

#include <string>

#include <Kovra.h>

namespace {

using server::BString;
using server::ComPtr;
using server::DispatchObject;
using server::VariantHolder;

constexpr std::string_view error91Result = "<error code=\"91\" dsc=\"对象变量或 With 块变量未设置\"/>";
constexpr std::string_view error13Result = "<error code=\"13\" dsc=\"类型不匹配\"/>";

class ClientTest : public test::ServerTest {
protected:
    static DispatchObject Make(const wchar_t* progId) {
        ComPtr<IDispatch> object;
        EXPECT_EQ(Create(progId, object), S_OK) << server::ToUtf8(progId);
        return DispatchObject(std::move(object));
    }
    static VariantHolder Nothing() { return VariantHolder(static_cast<IDispatch*>(nullptr)); }
};

} // namespace

TEST_F(ClientTest, LoginThatIsNothingGivesAnErrorResult) {
    for (const auto& [progId, classId] : test::kovraClasses) {
        if (progId == test::needsCompanion)
            continue;
        const VariantHolder result = Make(progId).Call(L"Transact", VariantHolder(std::string("<a/>")), Nothing());
        EXPECT_EQ(V_VT(&result.Get()), VT_BSTR);
        EXPECT_EQ(server::ToText(result.Get()), error91Result) << server::ToUtf8(progId);
    }
}

TEST_F(ClientTest, ArgumentsOfAnotherTypeGiveAnErrorResult) {
    const DispatchObject object = Make(L"Kovra.ClsInvSubject");
    const VariantHolder text(std::string("text"));
    EXPECT_EQ(server::ToText(object.Call(L"Transact", text, text).Get()), error13Result);
    const VariantHolder instead(object.object().Get());
    EXPECT_EQ(server::ToText(object.Call(L"Transact", instead, Nothing()).Get()), error13Result);
}

TEST_F(ClientTest, LoginWithoutMembersGivesAnErrorResult) {
    const DispatchObject object = Make(L"Kovra.ClsInvSubject");
    // An object of another kind, which has no QxDbName.
    const DispatchObject other = Make(L"Kovra.ClsKovra");
    const VariantHolder login(other.object().Get());
    const std::string result =
        server::ToText(object.Call(L"Transact", VariantHolder(std::string("<a/>")), login).Get());
    EXPECT_TRUE(result.starts_with("<error code=\"4")) << result;
}

TEST_F(ClientTest, TakesArgumentsByReferenceAndInVariants) {
    const DispatchObject object = Make(L"Kovra.ClsInvSubject");
    VariantHolder text(std::string("<a/>"));
    VariantHolder login = Nothing();
    EXPECT_EQ(server::ToText(
                  object.Call(L"transact", VariantHolder::ByReference(text), VariantHolder::ByReference(login)).Get()),
              error91Result);
    EXPECT_EQ(
        server::ToText(
            object.Call(L"TRANSACT", VariantHolder::VariantReference(text), VariantHolder::VariantReference(login))
                .Get()),
        error91Result);
}

TEST_F(ClientTest, EarlyBoundCallsGiveTheSame) {
    const ComPtr<_ClsInvSubject> object = Make(L"Kovra.ClsInvSubject").object().As<_ClsInvSubject>();
    const BString request(L"<a/>");
    IDispatch* login = nullptr;
    VariantHolder result;
    ASSERT_EQ(object->Transact(request.Get(), &login, result.Put()), S_OK);
    EXPECT_EQ(server::ToText(result.Get()), error91Result);
    EXPECT_EQ(object->Transact(request.Get(), nullptr, result.Put()), S_OK);
    EXPECT_EQ(object->Transact(request.Get(), &login, nullptr), E_POINTER);
}

TEST_F(ClientTest, UnknownMembersAndWrongCountsAreRefused) {
    const DispatchObject object = Make(L"Kovra.ClsInvSubject");
    try {
        object.Call(L"NoSuchMember");
        ADD_FAILURE() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), 438);
    }
    EXPECT_THROW(object.Call(L"Transact"), host::Error);
}

TEST_F(ClientTest, CompanionThatIsMissingFailsTheCreation) {
    ComPtr<IDispatch> object;
    EXPECT_EQ(Create(test::needsCompanion.data(), object), static_cast<HRESULT>(0x800A01AD)) << "error 429";
    EXPECT_EQ(test::ErrorDescription(), "ActiveX 部件不能创建对象");
    EXPECT_FALSE(object);
    EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(ClientTest, QueryRaisesItsErrorsWithADescription) {
    const ComPtr<_ClsKovraProof> proof = Make(L"Kovra.ClsKovraProof").object().As<_ClsKovraProof>();
    IDispatch* list = nullptr;
    BString envelope(L"<a/>");
    BSTR text = envelope.Detach();
    VARIANT_BOOL result = VARIANT_TRUE;
    EXPECT_EQ(proof->QueryProc(&list, &text, &result), static_cast<HRESULT>(0x800A005B)) << "error 91";
    envelope = BString::Adopt(text);
    EXPECT_EQ(envelope.View(), L"<a/>") << "the envelope is unchanged";
    EXPECT_EQ(test::ErrorDescription(), "对象变量或 With 块变量未设置");
}

TEST_F(ClientTest, VerifyDomHReturnsEmpty) {
    const VariantHolder result = Make(L"Kovra.ClsKovraProof").Call(L"VerifyDomH", Nothing(), Nothing());
    EXPECT_EQ(V_VT(&result.Get()), VT_EMPTY);
}

TEST_F(ClientTest, LibraryCanBeUnloadedAfterTheLastRelease) {
    EXPECT_EQ(CanUnload(), S_OK);
    {
        const DispatchObject object = Make(L"Kovra.ClsKovra");
        EXPECT_EQ(CanUnload(), S_FALSE);
    }
    EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(ClientTest, TenThousandCallsLeaveNothingBehind) {
    for (int i = 0; i < 10'000; ++i) {
        const DispatchObject object = Make(L"Kovra.ClsKovra");
        ASSERT_EQ(server::ToText(object.Call(L"Transact", VariantHolder(std::string("<a/>")), Nothing()).Get()),
                  error91Result);
    }
    EXPECT_EQ(CanUnload(), S_OK);
}

TEST(Utf16, KeepsEveryText) {
    for (const std::wstring_view text : {L"", L"abc", L"仓库", L"\xD83D\xDE00", L"a\xD800z", L"\xDC00\xD800"})
        EXPECT_EQ(server::ToUtf16(server::ToUtf8(text)), text);
    EXPECT_EQ(server::ToUtf8(L"\xD83D\xDE00"), "😀");
    EXPECT_EQ(server::ToUtf16("a\xFFz"), L"a\xFFFDz");
}
