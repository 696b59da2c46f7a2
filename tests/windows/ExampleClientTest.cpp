// The example client for scripts, as a user runs it.
#include "server/adapters/XmlDocument.h"
#include "server/com/Utf16.h"
#include "tests/support/Paths.h"
#include "tests/support/ScenarioFolder.h"
#include "tests/windows/HostedTest.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

namespace fs = std::filesystem;

/// With its drive: the client runs in another folder.
const fs::path sourceFolder = test::SourceFolder();

void WriteUnicode(const fs::path& file, const std::string& text) {
    const std::wstring wide = L'\xFEFF' + server::ToUtf16(text);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(wide.data()), static_cast<std::streamsize>(wide.size() * sizeof(wchar_t)));
}

std::string ReadUnicode(const fs::path& file) {
    const std::string bytes = test::ReadText(file);
    std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
    bytes.copy(reinterpret_cast<char*>(wide.data()), wide.size() * sizeof(wchar_t));
    EXPECT_TRUE(wide.starts_with(L'\xFEFF'));
    return server::ToUtf8(wide.substr(1));
}

/// Runs a command line in `folder`. @return its exit status
DWORD RunIn(const fs::path& folder, std::wstring commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &startup,
                        &process))
        throw std::runtime_error("the command cannot be run");
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &status));
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
}

class ExampleClient : public test::HostedTest {
protected:
    /// Runs a scenario through the client. @return the client's exit status
    DWORD Import(const std::string& className, const std::string& name) {
        scenario_ = sourceFolder / "tests" / "scenarios" / className / name;
        account_.Run(test::ReadText(scenario_ / "setup.sql"));
        WriteUnicode(account_.folder() / "request.xml", test::ReadText(scenario_ / "request.xml"));
        WriteUnicode(account_.folder() / "login.xml", test::ReadText(scenario_ / "login.xml"));
        const fs::path script = sourceFolder / "examples" / "clients" / "import.vbs";
        return RunIn(account_.folder(), L"cscript.exe //nologo \"" + script.wstring() + L"\" " +
                                            server::ToUtf16(className) + L" request.xml login.xml result.xml");
    }

    /// Documents count, not how they are laid out: Wine's MSXML adds line breaks and tabs.
    void ExpectResult() const {
        server::XmlDocument result;
        server::XmlDocument expected;
        EXPECT_TRUE(result.LoadXML(ReadUnicode(account_.folder() / "result.xml")));
        EXPECT_TRUE(expected.LoadXML(test::ReadText(scenario_ / "expected.xml")));
        EXPECT_EQ(result.Xml(), expected.Xml());
    }

private:
    test::TestAccount account_;
    fs::path scenario_;
};

using Imported = std::pair<const char*, const char*>;
class ExampleClientOfEachClass : public ExampleClient, public testing::WithParamInterface<Imported> {};

} // namespace

TEST_P(ExampleClientOfEachClass, WritesTheResultDocument) {
    EXPECT_EQ(Import(GetParam().first, GetParam().second), 0U);
    ExpectResult();
}

INSTANTIATE_TEST_SUITE_P(All, ExampleClientOfEachClass,
                         testing::Values(Imported("ClsInvSubject", "add"), Imported("ClsOppSubject", "add"),
                                         Imported("ClsOppSubjectST", "add"), Imported("ClsKovra", "ordinary-items"),
                                         Imported("ClsKovraProof", "add-saves"), Imported("ClsPriceJustVou", "saved")),
                         [](const auto& imported) { return std::string(imported.param.first); });

TEST_F(ExampleClient, TellsByItsExitStatusThatTheRequestWasRefused) {
    EXPECT_EQ(Import("ClsInvSubject", "unknown-operation"), 1U);
    ExpectResult();
}
