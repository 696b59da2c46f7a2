// KovraHost.dll as a library: its registration, its life, and what it tells of a component at work.
#include "server/com/BString.h"
#include "server/com/Utf16.h"
#include "tests/support/com/ExpectError.h"
#include "tests/support/com/HostFixture.h"
#include "tests/support/com/RegisteredClasses.h"
#include "tests/support/com/ScriptedObject.h"
#include "tests/support/com/ServerFixture.h"

#include <iterator>
#include <span>

namespace {

using server::Arguments;
using server::DispatchObject;
using server::VariantHolder;

constexpr std::span<const test::RegisteredClass> classes = test::hostClasses;

void ExpectRegistered(HKEY root) {
    test::ExpectRegistered(root, classes, L"KovraHost.dll", L"{E2C2B4D6-68BF-48E5-828F-5F494DA3613D}");
}

const std::wstring companionsClass = L"ZendaTool.clsZendaT\\CLSID";
constexpr const wchar_t* foreignClass = L"{12345678-1234-1234-1234-123456789ABC}";

/// The cost-adjustment component's name stands for another server's class as long as the object lives.
class ForeignCompanion {
public:
    explicit ForeignCompanion(HKEY root = HKEY_LOCAL_MACHINE) : root_(root) {
        EXPECT_EQ(RegSetKeyValueW(root, (L"Software\\Classes\\" + companionsClass).c_str(), nullptr, REG_SZ,
                                  foreignClass, static_cast<DWORD>((wcslen(foreignClass) + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }
    ~ForeignCompanion() {
        EXPECT_EQ(test::ClassesValue(root_, companionsClass), foreignClass) << "nobody took it";
        EXPECT_EQ(test::ClassesValue(root_, companionsClass, L"Replaced"), L"");
        EXPECT_EQ(RegDeleteTreeW(root_, L"Software\\Classes\\ZendaTool.clsZendaT"), ERROR_SUCCESS);
    }
    ForeignCompanion(const ForeignCompanion&) = delete;
    ForeignCompanion& operator=(const ForeignCompanion&) = delete;

private:
    HKEY root_;
};

class HostRegistration : public testing::Test {
protected:
    test::RegisteredLibrary host_{L"KovraHost.dll"};
};

using HostLibrary = test::HostTest;

} // namespace

TEST_F(HostRegistration, RegistersForTheMachine) {
    ExpectRegistered(HKEY_LOCAL_MACHINE);
    test::ExpectNotRegistered(HKEY_CURRENT_USER, classes);
    EXPECT_EQ(host_.Entry<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer")(), S_OK);
    test::ExpectNotRegistered(HKEY_LOCAL_MACHINE, classes);
    EXPECT_EQ(host_.Entry<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")(), S_OK);
    ExpectRegistered(HKEY_LOCAL_MACHINE);
}

TEST_F(HostRegistration, RegistersForTheUser) {
    EXPECT_EQ(host_.Install(false, nullptr), S_OK);
    EXPECT_EQ(host_.Install(true, L"user"), S_OK);
    ExpectRegistered(HKEY_CURRENT_USER);
    test::ExpectNotRegistered(HKEY_LOCAL_MACHINE, classes);
    EXPECT_EQ(host_.Install(false, L"user"), S_OK);
    test::ExpectNotRegistered(HKEY_CURRENT_USER, classes);
}

TEST_F(HostRegistration, NameOfAnotherServerIsNotTakenUnasked) {
    constexpr HRESULT alreadyExists = static_cast<HRESULT>(0x800700B7);
    EXPECT_EQ(host_.Install(false, nullptr), S_OK);
    const ForeignCompanion foreign;
    for (const wchar_t* const words : {L"", L"user"}) {
        EXPECT_EQ(host_.Install(true, words), alreadyExists) << "the machine's name would be hidden from the user too";
        EXPECT_EQ(test::ErrorDescription(),
                  "ZendaTool.clsZendaT已由另一组件{12345678-1234-1234-1234-123456789ABC}占用；要替换它，请用 "
                  "regsvr32 /n /i:replace 注册。");
    }
    EXPECT_EQ(host_.Entry<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")(), alreadyExists);
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        EXPECT_EQ(test::ClassesValue(root, L"KovraHost.Login"), L"") << "nothing is registered";
        EXPECT_EQ(test::ClassesValue(root, L"CLSID\\{3ABDDCCC-D2EF-42FD-A85F-8FCB790D77B9}"), L"");
    }
}

TEST_F(HostRegistration, NameOfAnotherServerIsReplacedWhenAskedAndGivenBack) {
    EXPECT_EQ(host_.Install(false, nullptr), S_OK);
    const ForeignCompanion foreign;
    EXPECT_EQ(host_.Install(true, L"replace"), S_OK);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, companionsClass), L"{BF91FE03-CCE7-46A9-9190-153022EC755F}");
    EXPECT_EQ(host_.Install(true, nullptr), S_OK) << "now the name is this library's";
    EXPECT_EQ(host_.Install(false, nullptr), S_OK);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, L"KovraHost.Login"), L"");
}

TEST_F(HostRegistration, UnregistrationLeavesTheNameOfAnotherServer) {
    const ForeignCompanion foreign;
    EXPECT_EQ(host_.Install(false, nullptr), S_OK);
    EXPECT_EQ(test::ClassesValue(HKEY_LOCAL_MACHINE, L"KovraHost.Login"), L"");
}

TEST_F(HostRegistration, WordsOfTheCommandLineComeTogether) {
    EXPECT_EQ(host_.Install(false, nullptr), S_OK);
    const ForeignCompanion foreign(HKEY_CURRENT_USER);
    EXPECT_EQ(host_.Install(true, L"User  REPLACE"), S_OK);
    EXPECT_EQ(test::ClassesValue(HKEY_CURRENT_USER, companionsClass), L"{BF91FE03-CCE7-46A9-9190-153022EC755F}");
    EXPECT_EQ(host_.Install(false, L"user"), S_OK);
}

// In a process that has imported nothing: a thread that did keeps its helper.
TEST_F(HostLibrary, DISABLED_CanBeUnloadedAfterTheLastRelease) {
    const test::RegisteredLibrary& library = libraries().host;
    EXPECT_EQ(library.CanUnload(), S_OK);
    for (const auto& [progId, classId] : classes) {
        {
            const DispatchObject object = Make(progId);
            EXPECT_EQ(library.CanUnload(), S_FALSE) << server::ToUtf8(progId);
        }
        EXPECT_EQ(library.CanUnload(), S_OK) << server::ToUtf8(progId);
    }
    // A context keeps its login.
    DispatchObject context;
    {
        const DispatchObject login = AccountLogin();
        context =
            DispatchObject(server::ToObject(Make(L"KovraHost.IaVoucherService").Call(L"Context", Holder(login)).Get()));
    }
    EXPECT_EQ(library.CanUnload(), S_FALSE);
    EXPECT_EQ(server::ToText(DispatchObject(server::ToObject(context.Get(L"Login").Get())).Get(L"cAcc_Id").Get()),
              "001");
    context = DispatchObject();
    EXPECT_EQ(library.CanUnload(), S_OK);
}

TEST(FreshProcess, CanUnloadTheHostsLibrary) {
    std::wstring command = L"test-windows.exe --gtest_brief=1 --gtest_also_run_disabled_tests "
                           L"--gtest_filter=HostLibrary.DISABLED_*";
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

TEST_F(HostLibrary, RefusesUnknownMembersAndWrongNumbersOfArguments) {
    constexpr host::ErrorNumber wrongNumber = 450;
    for (const auto& [progId, classId] : classes) {
        const DispatchObject object = Make(progId);
        test::ExpectError(438, "对象不支持该属性或方法", [&] { object.Call(L"NoSuchMember"); });
    }
    for (const auto& [progId, name] :
         {std::pair(L"KovraHost.Login", L"LoadXML"), std::pair(L"KovraHost.EaiHelper", L"AddResultItem"),
          std::pair(L"ZendaTool.clsZendaT", L"save")}) {
        try {
            Make(progId).Call(name);
            ADD_FAILURE() << "no error";
        } catch (const host::Error& error) {
            EXPECT_EQ(error.number(), wrongNumber);
        }
    }
}

TEST_F(HostLibrary, TellsWhetherAComponentWorksForItself) {
    int active = -1;
    const auto login = test::MakeObject({{L"LoginYear", test::Returns("2023")},
                                         {L"AccountingMonth", test::Returns(std::int64_t{1})},
                                         {L"ConnectionString", [&](const Arguments&) -> VariantHolder {
                                              active = CallActive();
                                              throw host::Error(-2147217843, "Login failed for user 'demo'.");
                                          }}});
    EXPECT_EQ(CallActive(), 0);
    VariantHolder message = Text("");
    test::ExpectError(-2147217843, "Login failed for user 'demo'.", [&] {
        Make(L"KovraHost.ProvisionPreCheck")
            .Call(L"Check", VariantHolder(login.Get()), VariantHolder::ByReference(message));
    });
    EXPECT_EQ(active, 1);
    EXPECT_EQ(CallActive(), 0) << "after an error";
}

TEST_F(HostLibrary, TellsThatAStatementOpenedForTheCallerIsTheCallers) {
    int active = -1;
    const auto recordset =
        test::MakeObject({{L"State", test::Returns(std::int64_t{0})}, {L"Open", [&](const Arguments&) {
                                                                           active = CallActive();
                                                                           return VariantHolder();
                                                                       }}});
    Make(L"ZendaTool.clsZendaT")
        .Call(L"OpenDBS", VariantHolder(recordset.Get()), Holder(Connection()), Text("SELECT 1 AS n"));
    EXPECT_EQ(active, 0);
}

TEST_F(HostLibrary, RaisesErrorsAsNumberAndDescription) {
    const DispatchObject object = Make(L"KovraHost.Login");
    wchar_t name[] = L"QxDbName";
    LPOLESTR names = name;
    DISPID id = DISPID_UNKNOWN;
    ASSERT_EQ(object.object()->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
    DISPPARAMS none{};
    VariantHolder result;
    EXCEPINFO exception{};
    EXPECT_EQ(object.object()->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, result.Put(),
                                      &exception, nullptr),
              DISP_E_EXCEPTION);
    const server::BString source = server::BString::Adopt(exception.bstrSource);
    const server::BString description = server::BString::Adopt(exception.bstrDescription);
    EXPECT_EQ(exception.scode, static_cast<HRESULT>(0x800A01B6)) << "438";
    EXPECT_EQ(server::ToUtf8(description.View()), "对象不支持该属性或方法");
}
