// Classes that are registered in the other size than the program's.
#include "server/com/Utf16.h"
#include "tests/support/com/HostedFixture.h"
#include "tests/support/com/OnWine.h"
#include "tests/support/com/RunProgram.h"
#include "tests/support/com/WinesSurrogate.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <regex>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

constexpr bool is64 = sizeof(void*) == 8;
constexpr REGSAM otherView = is64 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
/// The names of classes and their applications are the same for both sizes.
constexpr REGSAM shared = 0;
const std::string otherSize = is64 ? " 32-bit " : " 64-bit ";

bool HasBothSizes() {
    BOOL on64 = FALSE;
    return is64 || (IsWow64Process(GetCurrentProcess(), &on64) && on64);
}

/// "Kovra.ClsKovra" as a class of the other size alone, as long as the object lives.
class OtherSizesClass {
public:
    /// @param surrogate what runs it in a process of its own; nullptr for nothing
    explicit OtherSizesClass(const std::wstring& file, const wchar_t* surrogate = nullptr) {
        Set(progId + L"\\CLSID", shared, nullptr, classId);
        Set(L"CLSID\\" + classId + L"\\InprocServer32", otherView, nullptr, file);
        if (surrogate) {
            Set(L"CLSID\\" + classId, otherView, L"AppID", application);
            Set(L"AppID\\" + application, shared, L"DllSurrogate", surrogate);
        }
    }
    ~OtherSizesClass() {
        Delete(L"", shared, progId);
        Delete(L"CLSID", otherView, classId);
        Delete(L"AppID", shared, application);
    }
    OtherSizesClass(const OtherSizesClass&) = delete;
    OtherSizesClass& operator=(const OtherSizesClass&) = delete;

private:
    const std::wstring progId = L"Kovra.ClsKovra";
    const std::wstring classId = L"{5D1A9E0B-1E55-4C0A-9C57-6A3F5B0C7D10}";
    const std::wstring application = L"{5D1A9E0B-1E55-4C0A-9C57-6A3F5B0C7D11}";

    static HKEY Open(const std::wstring& path, REGSAM view) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + path).c_str(), 0, nullptr, 0,
                                  KEY_ALL_ACCESS | view, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        return key;
    }
    static void Set(const std::wstring& path, REGSAM view, const wchar_t* name, const std::wstring& value) {
        const HKEY key = Open(path, view);
        EXPECT_EQ(RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                                 static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
        RegCloseKey(key);
    }
    static void Delete(const std::wstring& path, REGSAM view, const std::wstring& name) {
        const HKEY key = Open(path, view);
        RegDeleteTreeW(key, name.c_str());
        RegCloseKey(key);
    }
};

/// What `kovra doctor` says.
std::string Doctor() {
    const test::TestAccount account;
    const test::ProgramRun run = test::RunProgram(account.folder(), L"doctor");
    return run.output + run.error;
}

/// The line of a table that begins with a name; empty when there is none.
std::string LineOf(const std::string& name, const std::string& text) {
    const std::size_t begin = text.find("\n" + name + " ");
    return begin == std::string::npos ? std::string() : text.substr(begin + 1, text.find('\n', begin + 1) - begin - 1);
}

class DoctorOnTheOtherSize : public testing::Test {
protected:
    void SetUp() override {
        if (!HasBothSizes()) {
            GTEST_SKIP() << "this system has one size";
        }
    }
};

TEST_F(DoctorOnTheOtherSize, TellsFileAndVersion) {
    const std::wstring file = fs::absolute(L"Kovra.dll").wstring();
    const OtherSizesClass registered(file);
    const std::string said = Doctor();
    const std::string line = LineOf("Kovra.ClsKovra", said);
    EXPECT_NE(line.find(otherSize), std::string::npos) << said;
    EXPECT_TRUE(std::regex_search(line, std::regex(" [0-9]+\\.[0-9]+\\.[0-9]+\\.0 "))) << line;
    EXPECT_NE(line.find(" of the other size "), std::string::npos) << line;
    EXPECT_TRUE(line.ends_with(server::ToUtf8(file))) << line;
    EXPECT_NE(said.find("\nSome are there in the other size: ask the kovra.exe of that size about them.\n"),
              std::string::npos)
        << said;
}

// Programs of 32 bits mean another folder when they say System32.
TEST_F(DoctorOnTheOtherSize, ShowsWhereAFileOfTheSystemFolderLies) {
    wchar_t system[MAX_PATH]{};
    ASSERT_NE(GetSystemDirectoryW(system, MAX_PATH), 0U);
    const OtherSizesClass registered(std::wstring(system) + L"\\none.dll");
    wchar_t folder[MAX_PATH]{};
    ASSERT_NE(is64 ? GetSystemWow64DirectoryW(folder, MAX_PATH) : GetSystemDirectoryW(folder, MAX_PATH), 0U);
    const std::string line = LineOf("Kovra.ClsKovra", Doctor());
    EXPECT_TRUE(line.ends_with(" " + server::ToUtf8(folder) + "\\none.dll")) << line;
}

TEST_F(DoctorOnTheOtherSize, TellsWhyTheSurrogateCannotCreateAClass) {
    const OtherSizesClass registered(fs::absolute(L"Kovra.dll").wstring(), L"C:\\nowhere\\surrogate.exe");
    const std::string line = LineOf("Kovra.ClsKovra", Doctor());
    EXPECT_NE(line.find(" cannot be created (surrogate): 0x"), std::string::npos) << line;
}

/// A library of the other size, registered as long as the object lives.
class OtherSizesLibrary {
public:
    explicit OtherSizesLibrary(const wchar_t* name) : file_(folder / name) { Run(L"/n /i:replace "); }
    ~OtherSizesLibrary() { Run(L"/u "); }
    OtherSizesLibrary(const OtherSizesLibrary&) = delete;
    OtherSizesLibrary& operator=(const OtherSizesLibrary&) = delete;

    /// Whether the system runs programs of that size, and the libraries are built.
    static bool AreThere() {
        DWORD type = 0;
        return is64 && GetBinaryTypeW((SystemFolder() / L"dllhost.exe").c_str(), &type) && type == SCS_32BIT_BINARY &&
               fs::exists(folder / L"KovraTestAdo.dll");
    }

private:
    static inline const fs::path folder = fs::absolute(L"../windows-x86");

    static fs::path SystemFolder() {
        wchar_t path[MAX_PATH]{};
        return GetSystemWow64DirectoryW(path, MAX_PATH) == 0 ? fs::path() : fs::path(path);
    }
    void Run(const std::wstring& option) const {
        const std::wstring command =
            L"\"" + (SystemFolder() / L"regsvr32.exe").wstring() + L"\" /s " + option + L"\"" + file_.wstring() + L"\"";
        EXPECT_EQ(test::RunningCommand(folder, command).Wait(), 0U);
    }

    fs::path file_;
};

/// What a 32-bit ERP's machine has; of this program's own size the login alone.
struct OtherSizesMachine {
    std::optional<test::WinesSurrogate> wines;
    OtherSizesLibrary ado{L"KovraTestAdo.dll"};
    OtherSizesLibrary host{L"KovraHost.dll"};
    OtherSizesLibrary server{L"Kovra.dll"};

    OtherSizesMachine() {
        if (test::OnWine()) {
            wines.emplace();
        }
    }
};

TEST(SurrogateOfTheOtherSize, ImportsForAClientThatAsksForTheClassByItsName) {
    if (!OtherSizesLibrary::AreThere()) {
        GTEST_SKIP() << "this takes a system of 64 bits with its 32-bit half, and the libraries of build/windows-x86";
    }
    const OtherSizesMachine machine;
    const std::string said = Doctor();
    EXPECT_NE(LineOf("Kovra.ClsPriceJustVou", said).find(" can be created (surrogate) "), std::string::npos) << said;

    const test::TestAccount account;
    account.Run("insert into Warehouse (cWhCode, cWhName) values ('01', N'原料库')\nGO\n"
                "insert into code (ccode, iyear, bend) values ('1405', 2023, 1)");
    const test::RegisteredLibrary login(L"KovraHost.dll");
    EXPECT_EQ(
        test::Comparable(test::Transact(
            L"Kovra.ClsInvSubject",
            server::VariantHolder(std::string("<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row>"
                                              "<cWhCode>01</cWhCode><cInvHead>1405</cInvHead></row></qxinterface>")),
            test::Login(account.LoginXml()))),
        test::Comparable("<qxinterface docid=\"D\" proc=\"ADD\"><item key=\"仓库编码：01， ， \" code=\"0\" "
                         "dsc=\"ok\"/></qxinterface>"));
    EXPECT_EQ(account.Rows("select cWhCode from IA_HeadSet").size(), 1U);
}

} // namespace
