#include "server/com/Utf16.h"
#include "tests/windows/RegisteredClasses.h"
#include "tests/windows/ServerFixture.h"

#include <string>

namespace {

constexpr test::RegisteredClass classes[] = {
    {L"Kovra.ClsInvSubject", L"{36BFF491-8268-43F5-927F-F6B9E34CF10C}"},
    {L"Kovra.ClsOppSubject", L"{04EE14B4-1A08-42D1-8C8E-A9FA123CBD6E}"},
    {L"Kovra.ClsOppSubjectST", L"{9FFF41CD-6825-431C-A287-DE0377F1157F}"},
    {L"Kovra.ClsKovra", L"{E3DB20F9-17C7-4DE6-8C6A-D28B1E6EA042}"},
    {L"Kovra.ClsKovraProof", L"{8442F440-004F-4FFA-9128-5D8BCCA01D5B}"},
    {L"Kovra.ClsPriceJustVou", L"{13FE1BDB-97ED-45FB-B874-CA3962960540}"},
};
const std::wstring typeLibrary = L"{885BA465-EB2B-49AE-8EDA-6D545E15E02D}";

void ExpectRegistered(HKEY root) {
    test::ExpectRegistered(root, classes, L"Kovra.dll", typeLibrary);
    EXPECT_EQ(test::ClassesValue(root, L"TypeLib\\" + typeLibrary + L"\\1.0"), L"Kovra");
}

void ExpectNothing(HKEY root) {
    test::ExpectNotRegistered(root, classes);
    EXPECT_EQ(test::ClassesValue(root, L"TypeLib\\" + typeLibrary + L"\\1.0"), L"");
}

using RegistrationTest = test::ServerTest;

} // namespace

TEST_F(RegistrationTest, ForTheMachineTouchesTheMachinesKeysAlone) {
    ExpectRegistered(HKEY_LOCAL_MACHINE);
    ExpectNothing(HKEY_CURRENT_USER);
    EXPECT_EQ(Entry<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer")(), S_OK);
    ExpectNothing(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(Entry<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")(), S_OK);
    ExpectRegistered(HKEY_LOCAL_MACHINE);
}

TEST_F(RegistrationTest, ForTheUserTouchesTheUsersKeysAlone) {
    EXPECT_EQ(Install(false, nullptr), S_OK);
    EXPECT_EQ(Install(true, L"user"), S_OK);
    ExpectRegistered(HKEY_CURRENT_USER);
    ExpectNothing(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(Install(false, L"user"), S_OK);
    ExpectNothing(HKEY_CURRENT_USER);
}

TEST_F(RegistrationTest, CanBeTakenAwayTwice) {
    EXPECT_EQ(Install(false, nullptr), S_OK);
    EXPECT_EQ(Install(false, nullptr), S_OK);
}

TEST_F(RegistrationTest, TypeLibraryNamesEveryClass) {
    GUID id{};
    ASSERT_EQ(CLSIDFromString(typeLibrary.c_str(), &id), S_OK);
    server::ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx(L"Kovra.dll", REGKIND_NONE, library.Put()), S_OK);
    for (const auto& [progId, classId] : classes) {
        GUID guid{};
        ASSERT_EQ(CLSIDFromString(classId, &guid), S_OK);
        server::ComPtr<ITypeInfo> information;
        EXPECT_EQ(library->GetTypeInfoOfGuid(guid, information.Put()), S_OK) << server::ToUtf8(progId);
    }
}
