// The example clients for scripts and for Visual Basic, as a user runs them.
#include "server/adapters/XmlDocument.h"
#include "server/com/Utf16.h"
#include "tests/support/Paths.h"
#include "tests/support/ScenarioFolder.h"
#include "tests/support/com/HostedFixture.h"
#include "tests/support/com/RunProgram.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <utility>
#include <vector>

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

class ExampleClient : public test::HostedTest {
protected:
    /// Runs a scenario through the client. @return the client's exit status
    unsigned long Import(const std::string& className, const std::string& name) {
        scenario_ = sourceFolder / "tests" / "scenarios" / className / name;
        test::SetUp(account_, scenario_);
        WriteUnicode(account_.folder() / "request.xml", test::ReadText(scenario_ / "request.xml"));
        WriteUnicode(account_.folder() / "login.xml", test::ReadText(test::LoginFile(scenario_)));
        const fs::path script = sourceFolder / "examples" / "clients" / "import.vbs";
        return test::RunningCommand(account_.folder(), L"cscript.exe //nologo \"" + script.wstring() + L"\" " +
                                                           server::ToUtf16(className) +
                                                           L" request.xml login.xml result.xml")
            .Wait();
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

/// The client for Visual Basic. VBScript runs it as it stands without its types, which nothing here runs.
class VisualBasicClient : public test::HostedTest {
protected:
    /// What `statements` tell of outcomes by the client's functions. @param folder where it runs and finds its files
    static std::string Run(const fs::path& folder, const std::string& statements) {
        const std::string client = test::ReadText(sourceFolder / "examples" / "clients" / "Import.bas");
        std::string script = std::regex_replace(client, std::regex(R"(Attribute VB_Name[^\n]*\n| As \w+)"), "");
        // Wine's scripting host creates no document, but takes one that it is given.
        const std::regex document(R"(CreateObject\("Msxml2.DOMDocument"\))");
        script = std::regex_replace(script, document, "NewDocument()");
        std::ofstream(folder / "client.vbs", std::ios::binary) << script << R"(
Dim files, target
Set files = CreateObject("Scripting.FileSystemObject")

Function NewDocument()
  Dim connection, records
  Set connection = CreateObject("ADODB.Connection")
  connection.Open "Provider=KovraAccount;Data Source=:memory:"
  Set records = CreateObject("ADODB.Recordset")
  records.Open "select 1 as one", connection, 3, 1, 1
  Set NewDocument = CreateObject("KovraHost.RsXmlHelper").RecordsetToXml(records)
End Function

Function TextOf(path)
  Dim file
  Set file = files.OpenTextFile(path, 1, False, -1)
  If Not file.AtEndOfStream Then TextOf = file.ReadAll
  file.Close
End Function

Sub Tell(outcomes)
  Dim line
  If IsEmpty(outcomes) Then Exit Sub
  For line = 0 To UBound(outcomes, 1)
    target.Write outcomes(line, 0) & vbTab & outcomes(line, 2) & vbTab & outcomes(line, 1) & vbTab & _
      outcomes(line, 3) & vbLf
  Next
End Sub

Set target = files.CreateTextFile("outcomes.txt", True, True)
On Error Resume Next
)" << statements << R"(
If Err.Number <> 0 Then target.Write Err.Description & vbLf
target.Close
)";
        test::RunningCommand(folder, L"cscript.exe //nologo client.vbs").Wait();
        return ReadUnicode(folder / "outcomes.txt");
    }
};

std::vector<fs::path> ResultFolders() {
    const fs::directory_iterator folders(sourceFolder / "tests" / "clients" / "results");
    return {begin(folders), end(folders)};
}

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

TEST_F(VisualBasicClient, GivesATableOfTheOutcomes) {
    const test::TestAccount account;
    account.Run("insert into Warehouse (cWhCode, cWhName) values ('01', N'原料库')\nGO\n"
                "insert into code (ccode, iyear, bend) values ('1405', 2023, 1)");
    WriteUnicode(account.folder() / "login.xml", account.LoginXml());
    WriteUnicode(
        account.folder() / "request.xml",
        "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>01</cWhCode><cInvHead>1405</cInvHead>"
        "</row><row><cWhCode>99</cWhCode><cInvHead>1405</cInvHead></row></qxinterface>");
    EXPECT_EQ(Run(account.folder(), R"(
Dim login
Set login = CreateObject("KovraHost.Login")
login.LoadXML TextOf("login.xml")
Tell KovraImport("ClsInvSubject", TextOf("request.xml"), login)
)"),
              "1\t0\t仓库编码：01， ， \tok\n2\t101\t仓库编码：99， ， \t仓库编码不合法。\n");
    EXPECT_EQ(account.Rows("select cWhCode from IA_HeadSet").size(), 1U);
}

TEST_F(VisualBasicClient, TellsTheOutcomesOfEveryResult) {
    const std::vector<fs::path> folders = ResultFolders();
    ASSERT_FALSE(folders.empty());
    const test::TestAccount account;
    for (const fs::path& folder : folders) {
        SCOPED_TRACE(folder.filename());
        for (const char* name : {"request.xml", "result.xml"}) {
            WriteUnicode(account.folder() / name, test::ReadText(folder / name));
        }
        EXPECT_EQ(Run(account.folder(), R"(Tell KovraOutcomes(TextOf("request.xml"), TextOf("result.xml")))"),
                  test::ReadText(folder / "outcomes.txt"));
    }
}
