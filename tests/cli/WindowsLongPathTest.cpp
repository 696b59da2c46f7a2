// Paths beyond the 259 characters that older programs end at, of Chinese names.
#include "server/com/Platform.h"
#include "tests/support/TestAccount.h"
#include "tests/support/com/RunProgram.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class LongPath : public testing::Test {
protected:
    /// Makes the folders. Where the system has long paths switched off, there is nothing to test.
    void SetUp() override {
        for (int depth = 1; depth <= deepest; ++depth) {
            name_ = Folders(depth);
            if (!CreateDirectoryW((top_.path() / name_).c_str(), nullptr)) {
                GTEST_SKIP() << "long paths are switched off here";
            }
        }
    }
    /// Lays the folders side by side, since the run-time library removes none at such a path.
    void TearDown() override {
        for (int depth = deepest; depth > 1; --depth) {
            MoveFileW((top_.path() / Folders(depth)).c_str(), (top_.path() / std::to_wstring(depth)).c_str());
        }
    }
    void Write(const wchar_t* name, const std::string& text) const {
        std::ofstream(top_.path() / (name_ + name), std::ios::binary) << text;
    }
    bool IsThere(const wchar_t* name) const { return fs::exists(top_.path() / (name_ + name)); }

    /// Runs kovra.exe outside of the folders, with the login that lies in them.
    test::ProgramRun Run(const std::wstring& command, const std::wstring& rest = {}) const {
        return test::RunProgram(top_.path(), command + L" --login " + In(L"login.xml") + L" " + rest);
    }
    std::wstring In(const wchar_t* name) const { return name_ + name; }

private:
    static constexpr int deepest = 5;

    /// So many folders inside each other, with a stroke behind the last.
    static std::wstring Folders(int depth) {
        std::wstring path;
        for (; depth > 0; --depth) {
            path += std::wstring(70, L'长') + L"\\";
        }
        return path;
    }

    test::TemporaryFolder top_;
    std::wstring name_;
};

TEST_F(LongPath, TakesAccountWorkbookReportAndRequest) {
    Write(L"login.xml",
          "<login QxDbName=\"Provider=KovraAccount;Data Source=account.db\" cAcc_Id=\"001\" cIYear=\"2024\" "
          "cUserId=\"demo\" CurDate=\"2024-01-31\" cUserName=\"demo\"/>");
    const test::ProgramRun created = Run(L"account create", L"--demo");
    EXPECT_EQ(created.status, 0U) << created.error;

    Write(L"设置.csv", "仓库编码,存货科目\n01,140301\n");
    const test::ProgramRun imported =
        Run(L"import --class ClsInvSubject --commit", L"--report " + In(L"报告.html") + L" " + In(L"设置.csv"));
    EXPECT_EQ(imported.status, 0U) << imported.error;
    EXPECT_TRUE(IsThere(L"报告.html"));

    Write(L"请求.xml", "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\"><row><cWhCode>02</cWhCode>"
                       "<cInvHead>140301</cInvHead></row></qxinterface>");
    const test::ProgramRun sent = Run(L"transact --class ClsInvSubject", In(L"请求.xml"));
    EXPECT_EQ(sent.status, 0U) << sent.error;
    EXPECT_EQ(Run(L"sql", L"-e \"select cWhCode from IA_HeadSet order by cWhCode\"").output,
              "{\"cWhCode\":\"01\"}\n{\"cWhCode\":\"02\"}\n");
}

} // namespace
