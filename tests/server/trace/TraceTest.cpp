// The trace that Kovra.dll writes where the machine's settings ask for one.
#include "server/com/Utf16.h"
#include "server/trace/SharedTraceFile.h"
#include "tests/support/com/HostedFixture.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

constexpr const char* request = "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>01</cWhCode>"
                                "<cInvHead>1405</cInvHead></row></qxinterface>";

/// Values in Software\Kovra, of the user or the machine, and variables, as long as the object lives.
class Settings {
public:
    Settings() = default;
    ~Settings() {
        for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
            RegDeleteTreeW(root, L"Software\\Kovra");
        }
        for (const wchar_t* name : {L"KOVRA_TRACE", L"KOVRA_TRACE_TIMES", L"KOVRA_TRACE_LIMIT"}) {
            SetEnvironmentVariableW(name, nullptr);
        }
    }
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    static void Variable(const wchar_t* name, const std::wstring& value) {
        SetEnvironmentVariableW(name, value.c_str());
    }
    static void Text(const wchar_t* name, const std::wstring& value, HKEY root = HKEY_CURRENT_USER) {
        EXPECT_EQ(RegSetKeyValueW(root, L"Software\\Kovra", name, REG_SZ, value.c_str(),
                                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }
    static void Number(const wchar_t* name, DWORD value, HKEY root = HKEY_CURRENT_USER) {
        EXPECT_EQ(RegSetKeyValueW(root, L"Software\\Kovra", name, REG_DWORD, &value, sizeof value), ERROR_SUCCESS);
    }
};

class Trace : public test::HostedTest {
protected:
    Trace() {
        account_.Run("insert into Warehouse (cWhCode) values ('01')\nGO\n"
                     "insert into code (ccode, iyear, bend) values ('1405', 2023, 1)");
    }

    /// Imports one setting. @return whether it was accepted
    bool Import() const {
        const std::string result =
            test::Transact(L"Kovra.ClsInvSubject", server::VariantHolder(std::string(request)),
                           test::Login("<login QxDbName=\"" + account_.connectionString() +
                                       ";Pwd=verysecret\" cIYear=\"2023\" cUserPassWord=\"verysecret\"/>"));
        return result.find("dsc=\"ok\"") != std::string::npos;
    }
    fs::path File(const wchar_t* name) const { return account_.folder() / name; }

private:
    test::TestAccount account_;
    Settings settings_;
};

TEST_F(Trace, IsOffByDefault) {
    EXPECT_FALSE(server::ReadTraceSettings());
    EXPECT_TRUE(Import());
}

TEST_F(Trace, GoesToTheFileThatTheRegistryNamesWithoutPasswords) {
    Settings::Text(L"Trace", File(L"记录.jsonl").wstring());
    EXPECT_TRUE(Import());
    const std::string trace = test::ReadText(File(L"记录.jsonl"));
    EXPECT_TRUE(trace.starts_with("{\"op\":\"Connect\"")) << trace;
    EXPECT_NE(trace.find("Pwd=***"), std::string::npos);
    EXPECT_EQ(trace.find("verysecret"), std::string::npos);
    EXPECT_EQ(trace.find("\"us\":"), std::string::npos);
}

TEST_F(Trace, GoesToTheFileThatTheMachinesRegistryNames) {
    Settings::Text(L"Trace", File(L"machine.jsonl").wstring(), HKEY_LOCAL_MACHINE);
    EXPECT_TRUE(Import());
    EXPECT_TRUE(test::ReadText(File(L"machine.jsonl")).starts_with("{\"op\":\"Connect\""));
}

TEST_F(Trace, TakesTheUsersRegistryBeforeTheMachines) {
    Settings::Text(L"Trace", File(L"machine.jsonl").wstring(), HKEY_LOCAL_MACHINE);
    Settings::Number(L"TraceTimes", 1, HKEY_LOCAL_MACHINE);
    Settings::Number(L"TraceLimit", 100, HKEY_LOCAL_MACHINE);
    Settings::Text(L"Trace", File(L"user.jsonl").wstring());
    EXPECT_TRUE(Import());
    EXPECT_FALSE(fs::exists(File(L"machine.jsonl")));
    // The place that names the file tells the rest, too.
    EXPECT_FALSE(fs::exists(File(L"user.jsonl.1")));
    EXPECT_EQ(test::ReadText(File(L"user.jsonl")).find("\"us\":"), std::string::npos);
}

TEST_F(Trace, TakesNothingFromAPlaceThatNamesNoFile) {
    Settings::Text(L"Trace", L"");
    Settings::Number(L"TraceTimes", 1);
    Settings::Text(L"Trace", File(L"machine.jsonl").wstring(), HKEY_LOCAL_MACHINE);
    EXPECT_TRUE(Import());
    EXPECT_EQ(test::ReadText(File(L"machine.jsonl")).find("\"us\":"), std::string::npos);
}

TEST_F(Trace, IsOffWhereThePlacesNameNoText) {
    Settings::Number(L"Trace", 1);
    Settings::Number(L"Trace", 1, HKEY_LOCAL_MACHINE);
    EXPECT_FALSE(server::ReadTraceSettings());
    EXPECT_TRUE(Import());
}

TEST_F(Trace, ThatSomebodyElseHoldsDoesNotDisturbAnImport) {
    const std::wstring file = File(L"held.jsonl").wstring();
    const HANDLE held =
        CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    Settings::Text(L"Trace", file, HKEY_LOCAL_MACHINE);
    EXPECT_TRUE(Import());
    CloseHandle(held);
    EXPECT_EQ(test::ReadText(file), "");
}

TEST_F(Trace, GoesOnWhereAnEarlierOneEnded) {
    Settings::Variable(L"KOVRA_TRACE", File(L"trace.jsonl").wstring());
    Import();
    const std::size_t once = test::ReadLines(File(L"trace.jsonl")).size();
    Import();
    EXPECT_GT(test::ReadLines(File(L"trace.jsonl")).size(), once);
}

TEST_F(Trace, TakesTheVariableBeforeTheRegistry) {
    Settings::Text(L"Trace", File(L"registry.jsonl").wstring());
    Settings::Variable(L"KOVRA_TRACE", File(L"variable.jsonl").wstring());
    EXPECT_TRUE(Import());
    EXPECT_TRUE(fs::exists(File(L"variable.jsonl")));
    EXPECT_FALSE(fs::exists(File(L"registry.jsonl")));
}

TEST_F(Trace, TellsTimesWhereTheyAreAskedFor) {
    Settings::Text(L"Trace", File(L"trace.jsonl").wstring());
    Settings::Number(L"TraceTimes", 1);
    EXPECT_TRUE(Import());
    for (const std::string& line : test::ReadLines(File(L"trace.jsonl"))) {
        EXPECT_NE(line.find(",\"us\":"), std::string::npos) << line;
    }
}

TEST_F(Trace, ThatCannotBeWrittenDoesNotDisturbAnImport) {
    Settings::Variable(L"KOVRA_TRACE", (File(L"nowhere") / L"trace.jsonl").wstring());
    EXPECT_TRUE(Import());
    // A folder is no file.
    Settings::Variable(L"KOVRA_TRACE", File(L"").wstring());
    EXPECT_NE(test::Transact(L"Kovra.ClsInvSubject", server::VariantHolder(std::string("<a")), test::Login("<login/>")),
              "");
}

TEST_F(Trace, PutsAFullFileAside) {
    Settings::Variable(L"KOVRA_TRACE", File(L"trace.jsonl").wstring());
    Settings::Variable(L"KOVRA_TRACE_LIMIT", L"100");
    server::SharedTraceFile file(*server::ReadTraceSettings());
    const std::string first(100, 'a');
    for (const std::string& line : {first, std::string("b\n"), std::string(98, 'c'), std::string("d\n")}) {
        file.Add(line);
    }
    EXPECT_EQ(test::ReadText(File(L"trace.jsonl.1")), "b\n" + std::string(98, 'c'));
    EXPECT_EQ(test::ReadText(File(L"trace.jsonl")), "d\n");
}

TEST_F(Trace, KeepsTheLinesOfTwoWritersWhole) {
    Settings::Variable(L"KOVRA_TRACE", File(L"trace.jsonl").wstring());
    server::SharedTraceFile one(*server::ReadTraceSettings());
    server::SharedTraceFile other(*server::ReadTraceSettings());
    one.Add("1\n");
    other.Add("2\n");
    one.Add("3\n");
    EXPECT_EQ(test::ReadText(File(L"trace.jsonl")), "1\n2\n3\n");
}

} // namespace
