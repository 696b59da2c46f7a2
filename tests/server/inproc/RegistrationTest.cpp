#include "server/com/BString.h"
#include "server/com/DispatchObject.h"
#include "server/com/Utf16.h"
#include "server/com/VariantHolder.h"
#include "tests/support/com/OnWine.h"
#include "tests/support/com/RegisteredClasses.h"
#include "tests/support/com/ServerFixture.h"
#include "tests/support/com/WinesSurrogate.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include <Kovra.h>
#include <sddl.h>

namespace {

constexpr std::span<const test::RegisteredClass> classes = test::kovraClasses;
constexpr std::pair<const wchar_t*, const wchar_t*> interfaces[] = {
    {L"_ClsInvSubject", L"{1A65C08E-BCDB-4760-8337-D21ACD619A10}"},
    {L"_ClsOppSubject", L"{A906C702-8343-4ED6-987E-6455BFB06D4F}"},
    {L"_ClsOppSubjectST", L"{C1632F5C-7538-487E-B787-E825E316B729}"},
    {L"_ClsKovra", L"{89A07001-9092-4201-AA50-CAEB12076431}"},
    {L"_ClsKovraProof", L"{20254A5B-F593-4991-9C79-C527B33D93F5}"},
    {L"_ClsPriceJustVou", L"{81316CB1-5DB5-4D2E-BE45-76BCDBC93DC7}"},
};
const std::wstring typeLibrary = L"{885BA465-EB2B-49AE-8EDA-6D545E15E02D}";
const std::wstring typeLibraryPath = L"TypeLib\\" + typeLibrary + L"\\1.0";
const std::wstring applicationPath = L"AppID\\{A913E70F-77A7-414C-B74C-377178CF58CF}";
const std::wstring typeLibraryFile = typeLibraryPath + (sizeof(void*) == 8 ? L"\\0\\win64" : L"\\0\\win32");

void ExpectRegistered(HKEY root) {
    test::ExpectRegistered(root, classes, L"Kovra.dll", typeLibrary);
    EXPECT_EQ(test::ClassesValue(root, typeLibraryPath), L"Kovra");
    const std::wstring file = test::ClassesValue(root, typeLibraryFile);
    EXPECT_TRUE(file.ends_with(L"\\Kovra.dll")) << server::ToUtf8(file);
    EXPECT_EQ(test::ClassesValue(root, applicationPath), L"Kovra");
    for (const auto& [progId, classId] : classes) {
        EXPECT_EQ(L"AppID\\" + test::ClassesValue(root, std::wstring(L"CLSID\\") + classId, L"AppID"), applicationPath);
    }
    EXPECT_EQ(test::ClassesValue(root, typeLibraryPath + L"\\FLAGS"), L"0");
    EXPECT_EQ(test::ClassesValue(root, typeLibraryPath + L"\\HELPDIR") + L"\\Kovra.dll", file);
    for (const auto& [name, interfaceId] : interfaces) {
        const std::wstring path = std::wstring(L"Interface\\") + interfaceId;
        EXPECT_EQ(test::ClassesValue(root, path), name);
        EXPECT_EQ(test::ClassesValue(root, path + L"\\ProxyStubClsid32"), L"{00020424-0000-0000-C000-000000000046}");
        EXPECT_EQ(test::ClassesValue(root, path + L"\\TypeLib"), typeLibrary);
        EXPECT_EQ(test::ClassesValue(root, path + L"\\TypeLib", L"Version"), L"1.0");
    }
}

void ExpectNothing(HKEY root) {
    test::ExpectNotRegistered(root, classes);
    EXPECT_EQ(test::ClassesValue(root, typeLibraryPath), L"");
    EXPECT_EQ(test::ClassesValue(root, typeLibraryFile), L"");
    EXPECT_EQ(test::ClassesValue(root, applicationPath), L"");
    for (const auto& [name, interfaceId] : interfaces) {
        EXPECT_EQ(test::ClassesValue(root, std::wstring(L"Interface\\") + interfaceId), L"");
        EXPECT_EQ(test::ClassesValue(root, std::wstring(L"Interface\\") + interfaceId + L"\\TypeLib"), L"");
    }
}

using RegistrationTest = test::ServerTest;

/// A key below the machine's Software\Classes that nobody may open as long as the object lives.
class LockedKey {
public:
    explicit LockedKey(const std::wstring& path) {
        EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + path).c_str(), 0, WRITE_DAC, &key_),
                  ERROR_SUCCESS);
        SetAccess(L"D:P(D;;KA;;;WD)");
    }
    ~LockedKey() {
        SetAccess(L"D:P(A;;KA;;;WD)");
        RegCloseKey(key_);
    }
    LockedKey(const LockedKey&) = delete;
    LockedKey& operator=(const LockedKey&) = delete;

private:
    void SetAccess(const wchar_t* text) {
        PSECURITY_DESCRIPTOR access = nullptr;
        EXPECT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(text, SDDL_REVISION_1, &access, nullptr));
        EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, access), ERROR_SUCCESS);
        LocalFree(access);
    }

    HKEY key_ = nullptr;
};

/// Writes a value below the machine's Software\Classes; `name` null is the key's default value.
void Write(const std::wstring& path, const wchar_t* name, const std::wstring& text) {
    EXPECT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + path).c_str(), name, REG_SZ, text.c_str(),
                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}
void Remove(const std::wstring& path) {
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + path).c_str()), ERROR_SUCCESS);
}
std::wstring ServerPath(const test::RegisteredClass& of) {
    return std::wstring(L"CLSID\\") + of.classId + L"\\InprocServer32";
}
const std::wstring otherFileName = L"C:\\newer\\Kovra.dll";

/// Calls an object of another apartment by its dual interface. Releases `stream`.
void CallThroughProxy(IStream* stream) {
    server::ComPtr<_ClsKovraProof> proof;
    ASSERT_EQ(CoGetInterfaceAndReleaseStream(stream, __uuidof(_ClsKovraProof), proof.PutVoid()), S_OK);
    const server::BString request(L"<a/>");
    IDispatch* nothing = nullptr;
    server::VariantHolder result;
    EXPECT_EQ(proof->Transact(request.Get(), &nothing, result.Put()), S_OK);
    EXPECT_EQ(server::ToText(result.Get()), "<error code=\"91\" dsc=\"对象变量或 With 块变量未设置\"/>");
    BSTR envelope = server::BString(L"<a/>").Detach();
    VARIANT_BOOL answer = VARIANT_FALSE;
    EXPECT_EQ(proof->QueryProc(&nothing, &envelope, &answer), static_cast<HRESULT>(0x800A005B)) << "error 91";
    server::BString::Adopt(envelope);
}

/// Takes the messages, which are the calls of other apartments, that come until `event` is set.
void ServeCallsUntil(HANDLE event) {
    while (MsgWaitForMultipleObjects(1, &event, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
}

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

TEST_F(RegistrationTest, NamesStayWhileTheLibraryOfTheOtherSizeNeedsThem) {
    BOOL on64Bits = sizeof(void*) == 8;
    if (!on64Bits && (!IsWow64Process(GetCurrentProcess(), &on64Bits) || !on64Bits))
        GTEST_SKIP() << "a system of 32 bits has libraries of one size alone";
    constexpr REGSAM otherSize = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    const std::wstring otherFile = typeLibraryPath + (sizeof(void*) == 8 ? L"\\0\\win32" : L"\\0\\win64");
    const auto keyOf = [](const wchar_t* classId) { return std::wstring(L"Software\\Classes\\CLSID\\") + classId; };
    for (const auto& [progId, classId] : classes) {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, keyOf(classId).c_str(), 0, nullptr, 0, KEY_WRITE | otherSize,
                                  nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        RegCloseKey(key);
    }
    const std::wstring otherKey = L"Software\\Classes\\" + otherFile;
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, otherKey.c_str(), nullptr, REG_SZ, L"x", 2 * sizeof(wchar_t)),
              ERROR_SUCCESS);

    EXPECT_EQ(Install(false, nullptr), S_OK);
    for (const auto& [progId, classId] : classes) {
        EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, std::wstring(progId) + L"\\CLSID"), classId);
        EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, std::wstring(L"CLSID\\") + classId), L"");
    }
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, typeLibraryPath), L"Kovra");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, otherFile), L"x");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, typeLibraryFile), L"");

    for (const auto& [progId, classId] : classes)
        EXPECT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, keyOf(classId).c_str(), otherSize, 0), ERROR_SUCCESS);
    Remove(otherFile);
    EXPECT_EQ(Install(false, nullptr), S_OK);
    ExpectNothing(HKEY_LOCAL_MACHINE);
}

TEST_F(RegistrationTest, KeyThatCannotBeRemovedIsReported) {
    {
        const LockedKey locked(L"Kovra.ClsKovra");
        EXPECT_EQ(Install(false, nullptr), E_ACCESSDENIED);
        EXPECT_EQ(Entry<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer")(), E_ACCESSDENIED);
        EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, L"Kovra.ClsPriceJustVou"), L"") << "the others are removed";
    }
    EXPECT_EQ(Install(false, nullptr), S_OK);
    ExpectNothing(HKEY_LOCAL_MACHINE);
}

TEST_F(RegistrationTest, FailedRegistrationLeavesAnEarlierOneAsItWas) {
    {
        const LockedKey locked(L"Kovra.ClsKovraProof");
        EXPECT_EQ(Install(true, nullptr), E_ACCESSDENIED);
    }
    ExpectRegistered(HKEY_LOCAL_MACHINE);
}

TEST_F(RegistrationTest, FailedRegistrationGivesBackWhatOthersHad) {
    EXPECT_EQ(Install(false, nullptr), S_OK);
    // The class of another file, with a value of its own; a name without a class; a version of the type library.
    Write(ServerPath(classes[0]), nullptr, otherFileName);
    Write(ServerPath(classes[0]), L"ThreadingModel", L"Both");
    Write(classes[0].progId, nullptr, L"another description");
    Write(L"TypeLib\\" + typeLibrary + L"\\2.0", nullptr, L"newer");
    Write(L"Kovra.ClsPriceJustVou", nullptr, L"");
    {
        const LockedKey locked(L"Kovra.ClsPriceJustVou");
        EXPECT_EQ(Install(true, nullptr), E_ACCESSDENIED);
    }
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, ServerPath(classes[0])), otherFileName);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, ServerPath(classes[0]), L"ThreadingModel"), L"Both");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, std::wstring(L"CLSID\\") + classes[0].classId + L"\\ProgID"), L"");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, classes[0].progId), L"another description");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, std::wstring(classes[0].progId) + L"\\CLSID"), L"");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, L"Kovra.ClsOppSubject"), L"");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, ServerPath(classes[1])), L"");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, L"TypeLib\\" + typeLibrary + L"\\2.0"), L"newer");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, typeLibraryPath), L"");
    Remove(L"TypeLib\\" + typeLibrary + L"\\2.0");
    EXPECT_EQ(Install(true, nullptr), S_OK) << "takes the class over from the other file";
    ExpectRegistered(HKEY_LOCAL_MACHINE);
}

// An upgrade registers the new file, and then unregisters the old one.
TEST_F(RegistrationTest, WhatAnotherFileHasRegisteredSinceStays) {
    for (const test::RegisteredClass& each : classes)
        Write(ServerPath(each), nullptr, otherFileName);
    Write(typeLibraryFile, nullptr, otherFileName);
    EXPECT_EQ(Install(false, nullptr), S_OK);
    for (const test::RegisteredClass& each : classes) {
        EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, ServerPath(each)), otherFileName);
        EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, std::wstring(each.progId) + L"\\CLSID"), each.classId);
    }
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, typeLibraryFile), otherFileName);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, applicationPath), L"Kovra");
    for (const auto& [name, interfaceId] : interfaces)
        EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, std::wstring(L"Interface\\") + interfaceId), name);
    EXPECT_EQ(Install(true, nullptr), S_OK);
    ExpectRegistered(HKEY_LOCAL_MACHINE);
}

TEST_F(RegistrationTest, OneClassOfAnotherFileStays) {
    Write(ServerPath(classes[2]), nullptr, otherFileName);
    EXPECT_EQ(Install(false, nullptr), S_OK);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, ServerPath(classes[2])), otherFileName);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, std::wstring(classes[2].progId) + L"\\CLSID"), classes[2].classId);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, ServerPath(classes[3])), L"");
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, classes[3].progId), L"");
    EXPECT_EQ(Install(true, nullptr), S_OK);
}

TEST_F(RegistrationTest, OtherVersionsOfTheTypeLibraryStay) {
    const std::wstring newer = L"TypeLib\\" + typeLibrary + L"\\2.0\\0\\win64";
    Write(newer, nullptr, otherFileName);
    EXPECT_EQ(Install(false, nullptr), S_OK);
    ExpectNothing(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, newer), otherFileName);
    Remove(L"TypeLib\\" + typeLibrary);
}

TEST_F(RegistrationTest, InterfaceOfANewerVersionStays) {
    const std::wstring described = std::wstring(L"Interface\\") + interfaces[0].second + L"\\TypeLib";
    Write(described, L"Version", L"2.0");
    EXPECT_EQ(Install(false, nullptr), S_OK);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, described, L"Version"), L"2.0");
    Remove(std::wstring(L"Interface\\") + interfaces[0].second);
}

TEST_F(RegistrationTest, TypeLibraryNamesEveryClassAndInterface) {
    GUID id{};
    ASSERT_EQ(CLSIDFromString(typeLibrary.c_str(), &id), S_OK);
    server::ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(id, 1, 0, 0, library.Put()), S_OK);
    const auto expectNamed = [&](const wchar_t* guidText, const std::wstring& name) {
        GUID guid{};
        ASSERT_EQ(CLSIDFromString(guidText, &guid), S_OK);
        server::ComPtr<ITypeInfo> information;
        ASSERT_EQ(library->GetTypeInfoOfGuid(guid, information.Put()), S_OK) << server::ToUtf8(name);
        server::BString given;
        EXPECT_EQ(information->GetDocumentation(MEMBERID_NIL, given.Put(), nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(given.View(), name);
    };
    for (const auto& [progId, classId] : classes)
        expectNamed(classId, std::wstring(progId).substr(std::wstring_view(L"Kovra.").size()));
    for (const auto& [name, interfaceId] : interfaces)
        expectNamed(interfaceId, name);
}

// OLE Automation's marshaler carries the calls of a thread outside this one's apartment.
TEST_F(RegistrationTest, InterfacesAreReachedFromAnotherApartment) {
    {
        server::ComPtr<IDispatch> object;
        ASSERT_EQ(Create(L"Kovra.ClsKovraProof", object), S_OK);
        server::ComPtr<IStream> stream;
        ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(__uuidof(_ClsKovraProof), object.Get(), stream.Put()), S_OK);
        const HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        std::thread client([&] {
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            CallThroughProxy(stream.Detach());
            CoUninitialize();
            SetEvent(done);
        });
        ServeCallsUntil(done);
        client.join();
        CloseHandle(done);
    }
    EXPECT_EQ(CanUnload(), S_OK);
}

// The registration names the system's surrogate, so a client may have its instances in a process of their own.
TEST_F(RegistrationTest, InstancesLiveInTheSystemsSurrogateForAClientThatAsksForIt) {
    std::optional<test::WinesSurrogate> wines;
    if (test::OnWine())
        wines.emplace();
    if (wines && !wines->IsOfThisSize())
        GTEST_SKIP() << "this Wine starts the other size's surrogate";
    CLSID classId{};
    ASSERT_EQ(CLSIDFromProgID(L"Kovra.ClsInvSubject", &classId), S_OK);
    server::ComPtr<IDispatch> object;
    ASSERT_EQ(
        CoCreateInstance(classId, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, reinterpret_cast<void**>(object.Put())),
        S_OK);
    EXPECT_EQ(CanUnload(), S_OK) << "no instance lives in this process";
    const server::DispatchObject instance(std::move(object));
    const server::VariantHolder nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(server::ToText(instance.Call(L"Transact", server::VariantHolder(std::string("<a/>")), nothing).Get()),
              "<error code=\"91\" dsc=\"对象变量或 With 块变量未设置\"/>");
}
