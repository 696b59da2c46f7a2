// kovra.exe on the machine's own components, and with the registered classes.
#include "server/com/Utf16.h"
#include "tests/support/ScenarioFolder.h"
#include "tests/support/com/HostedFixture.h"
#include "tests/support/com/RegisteredClasses.h"
#include "tests/support/com/RunProgram.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using test::Comparable;

class ProgramOnCom : public test::HostedTest, public testing::WithParamInterface<fs::path> {
protected:
    /// Imports the scenario at hand by `kovra transact --trace trace.jsonl OPTION`, and holds result, statements and
    /// rows against what it expects.
    static void ExpectScenario(const std::wstring& option) {
        const fs::path& folder = GetParam();
        const test::TestAccount account;
        test::SetUp(account, folder);
        fs::copy_file(test::LoginFile(folder), account.folder() / "login.xml");
        fs::copy_file(folder / "request.xml", account.folder() / "request.xml");
        const test::ProgramRun run = test::RunProgram(
            account.folder(), L"transact --class " + folder.parent_path().filename().wstring() +
                                  L" --login login.xml --trace trace.jsonl " + option + L" request.xml");
        SCOPED_TRACE(run.error);
        test::ExpectResult(folder, run.output);
        test::ExpectStatementsAndRows(folder, account.folder() / "trace.jsonl", account, test::Documents::msxml);
    }
};

// The classes in the program itself, over MSXML, ADO and the host's registered components.
TEST_P(ProgramOnCom, GivesResultAndStatements) { ExpectScenario(L"--host com"); }

INSTANTIATE_TEST_SUITE_P(All, ProgramOnCom, testing::ValuesIn(test::ScenarioFolders()), test::ScenarioName);

class Server : public test::HostedTest {
protected:
    Server() {
        account_.Run("insert into Warehouse (cWhCode, cWhName) values ('01', N'原料库')\nGO\n"
                     "insert into code (ccode, iyear, bend) values ('1405', 2023, 1)");
        Write("login.xml", account_.LoginXml());
    }
    void Write(const char* name, const std::string& text) const {
        std::ofstream(account_.folder() / name, std::ios::binary) << text;
    }
    test::ProgramRun Transact(const std::string& request, const std::wstring& more = {}) const {
        Write("request.xml", request);
        return test::RunProgram(account_.folder(),
                                L"transact --server --class ClsInvSubject --login login.xml " + more + L" request.xml");
    }
    const test::TestAccount& account() const { return account_; }

    static std::string Rows(const std::string& rows, const std::string& proc = "ADD") {
        return "<qxinterface roottag=\"row\" docid=\"D\" proc=\"" + proc + "\">" + rows + "</qxinterface>";
    }
    static constexpr const char* good = "<row><cWhCode>01</cWhCode><cInvHead>1405</cInvHead></row>";
    static constexpr const char* unknownWarehouse = "<row><cWhCode>99</cWhCode><cInvHead>1405</cInvHead></row>";

private:
    test::TestAccount account_;
};

TEST_F(Server, ImportsByTheRegisteredClassAndTellsWhatCameOfIt) {
    const test::ProgramRun run = Transact(Rows(std::string(good) + unknownWarehouse));
    EXPECT_EQ(run.status, 1U);
    EXPECT_EQ(
        Comparable(run.output),
        Comparable("<qxinterface docid=\"D\" proc=\"ADD\"><item key=\"仓库编码：01， ， \" code=\"0\" dsc=\"ok\"/>"
                   "<item key=\"仓库编码：99， ， \" code=\"101\" dsc=\"仓库编码不合法。\"/></qxinterface>"));
    EXPECT_EQ(run.error, "1 row accepted, 1 row refused.\n"
                         "  row 2 (仓库编码：99): 仓库编码不合法。\n");
    EXPECT_EQ(account().Rows("select cWhCode from IA_HeadSet").size(), 1U);
}

// A setting that is refused while it is written has two outcomes, and a row of the same key behind it its own.
TEST_F(Server, CountsARowThatIsRefusedWhileItIsWrittenOnce) {
    EXPECT_EQ(Transact(Rows(good)).status, 0U);
    const test::ProgramRun run = Transact(Rows(std::string(good) + unknownWarehouse));
    EXPECT_EQ(run.status, 1U);
    EXPECT_EQ(run.error, "2 rows refused, none accepted.\n"
                         "  row 1 (仓库编码：01): 对照关系已经存在，无法插入新记录。\n"
                         "  row 2 (仓库编码：99): 仓库编码不合法。\n");
}

TEST_F(Server, CountsARowThatCorrectsTheOneBeforeIt) {
    const std::string wrong = "<row><cWhCode>01</cWhCode><cInvHead>9999</cInvHead></row>";
    EXPECT_TRUE(
        Transact(Rows(wrong + good)).error.starts_with("1 row accepted, 1 row refused.\n  row 1 (仓库编码：01): "));
}

TEST_F(Server, EndsWithThreeForAnErrorResult) {
    const test::ProgramRun run = Transact("<a");
    EXPECT_EQ(run.status, 3U);
    EXPECT_EQ(run.error, "The request was refused as a whole (100): 解析XML时发生错误,请你检查XML参数格式\n"
                         "Nothing was imported.\n");
}

TEST_F(Server, WritesTheOutcomesAsATable) {
    EXPECT_EQ(Transact(Rows(good), L"--format table").output, "Row  Outcome   Code  Key           Message\n"
                                                              "---  --------  ----  ------------  -------\n"
                                                              "  1  accepted     0  仓库编码：01  ok\n");
}

TEST_F(Server, DoctorFindsEverythingWhereItIsRegistered) {
    const test::ProgramRun run = test::RunProgram(account().folder(), L"doctor --login login.xml");
    EXPECT_EQ(run.status, 0U) << run.output << run.error;
    std::vector<std::string> names = {"Msxml2.DOMDocument", "ADODB.Connection", "ADODB.Recordset"};
    std::ranges::transform(test::kovraClasses, std::back_inserter(names),
                           [](const test::RegisteredClass& one) { return server::ToUtf8(one.progId); });
    // The login is the caller's own.
    std::ranges::transform(std::span(test::hostClasses).subspan(1), std::back_inserter(names),
                           [](const test::RegisteredClass& one) { return server::ToUtf8(one.progId); });
    for (const std::string& name : names) {
        const std::size_t line = run.output.find("\n" + name + " ");
        ASSERT_NE(line, std::string::npos) << name << "\n" << run.output;
        EXPECT_NE(run.output.substr(line + 1, run.output.find('\n', line + 1) - line).find("can be created"),
                  std::string::npos)
            << name;
    }
    EXPECT_NE(run.output.find("Kovra.dll\n"), std::string::npos);
    EXPECT_NE(run.output.find("The account opens: Provider=KovraAccount;"), std::string::npos);
    EXPECT_TRUE(run.output.ends_with("\nEverything that Kovra needs is here.\n")) << run.output;
}

TEST(Doctor, TellsOfWhatIsNotRegistered) {
    const test::TestAccount account;
    std::ofstream(account.folder() / "login.xml", std::ios::binary)
        << "<login QxDbName=\"Provider=Nobody;Pwd=verysecret\"/>";
    const test::ProgramRun run = test::RunProgram(account.folder(), L"doctor --login login.xml");
    EXPECT_EQ(run.status, 1U);
    const std::size_t line = run.output.find("\nKovra.ClsKovra ");
    ASSERT_NE(line, std::string::npos) << run.output;
    EXPECT_NE(run.output.substr(line + 1, run.output.find('\n', line + 1) - line).find("is not registered"),
              std::string::npos);
    EXPECT_NE(run.output.find("\nThe account cannot be opened: "), std::string::npos) << run.output;
    EXPECT_EQ(run.output.find("verysecret"), std::string::npos);
    // Kovra's six classes and the host's six, and ADO where the machine has none.
    std::size_t missing = 0;
    for (std::size_t at = run.output.find("is not registered"); at != std::string::npos;
         at = run.output.find("is not registered", at + 1)) {
        ++missing;
    }
    EXPECT_GE(missing, 12U) << run.output;
    EXPECT_NE(run.output.find("\nOf what Kovra needs, " + std::to_string(missing) + " cannot be created here.\n"),
              std::string::npos)
        << run.output;
}

TEST(Program, TakesANameThatBeginsWithAStrokeForAFile) {
    const test::TestAccount account;
    std::ofstream(account.folder() / "login.xml", std::ios::binary) << account.LoginXml();
    const test::ProgramRun run =
        test::RunProgram(account.folder(), L"transact --class ClsInvSubject --login login.xml /nowhere/request.xml");
    EXPECT_EQ(run.status, 2U);
    EXPECT_NE(run.error.find("'/nowhere/request.xml'"), std::string::npos) << run.error;
}

TEST(Doctor, LeavesTheRegisteredClassToItsErrorNumber) {
    const test::TestAccount account;
    std::ofstream(account.folder() / "login.xml", std::ios::binary) << account.LoginXml();
    std::ofstream(account.folder() / "request.xml", std::ios::binary) << "<a/>";
    const test::ProgramRun run =
        test::RunProgram(account.folder(), L"transact --server --class ClsInvSubject --login login.xml request.xml");
    EXPECT_EQ(run.status, 1U);
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(run.error.starts_with("429: ")) << run.error;
}

} // namespace
