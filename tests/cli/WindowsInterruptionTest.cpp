// Ctrl-C on kovra.exe's console: the program ends after the row at hand and says what was done.
#include "tests/support/TestAccount.h"
#include "tests/support/com/OwnConsole.h"
#include "tests/support/com/RunProgram.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

/// The end of a named pipe that reads the trace of a program. It holds little, so that the program waits near the place
/// that was read to.
class TracePipe {
public:
    explicit TracePipe(const std::wstring& name)
        : pipe_(
              CreateNamedPipeW(name.c_str(), PIPE_ACCESS_INBOUND, PIPE_TYPE_BYTE | PIPE_WAIT, 1, 0, most, 0, nullptr)) {
        EXPECT_NE(pipe_, INVALID_HANDLE_VALUE);
    }
    ~TracePipe() { CloseHandle(pipe_); }
    TracePipe(const TracePipe&) = delete;
    TracePipe& operator=(const TracePipe&) = delete;

    void AwaitTheProgram() const {
        EXPECT_TRUE(ConnectNamedPipe(pipe_, nullptr) || GetLastError() == ERROR_PIPE_CONNECTED);
    }
    /// Reads what is there, at least a byte. @return how many bytes; 0 at the trace's end
    DWORD Read() {
        DWORD read = 0;
        return ReadFile(pipe_, bytes_.data(), most, &read, nullptr) ? read : 0;
    }

private:
    static constexpr DWORD most = 512;

    std::array<char, most> bytes_{};
    HANDLE pipe_;
};

constexpr int count = 300;

std::string Code(int number) { return "W" + std::to_string(1000 + number); }

class Interruption : public testing::Test {
protected:
    Interruption() {
        std::string setup = "insert into code (ccode, iyear, bend) values ('1405', 2023, 1)\nGO\n"
                            "insert into Warehouse (cWhCode, cWhName) values ";
        std::string request = "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\">";
        for (int number = 0; number < count; ++number) {
            setup += (number == 0 ? "('" : ", ('") + Code(number) + "', 'x')";
            request += "<row><cWhCode>" + Code(number) + "</cWhCode><cInvHead>1405</cInvHead></row>";
        }
        account_.Run(setup);
        Write("request.xml", request + "</qxinterface>");
        Write("login.xml", account_.LoginXml());
        // This process shares the console, and goes on.
        SetConsoleCtrlHandler(GoOn, TRUE);
    }
    ~Interruption() override { SetConsoleCtrlHandler(GoOn, FALSE); }

    const test::TestAccount& account() const { return account_; }

private:
    static BOOL WINAPI GoOn(DWORD) { return TRUE; }

    void Write(const char* name, const std::string& text) const {
        std::ofstream(account_.folder() / name, std::ios::binary) << text;
    }

    test::TestAccount account_;
};

TEST_F(Interruption, KeepsTheRowsThatWereDone) {
    const test::OwnConsole console(936);
    if (!console.IsThere()) {
        GTEST_SKIP() << "this system gives no console";
    }
    const std::wstring pipe = L"\\\\.\\pipe\\kovra-test-" + std::to_wstring(GetCurrentProcessId());
    TracePipe trace(pipe);
    const test::RunningProgram program(account().folder(),
                                       L"transact --class ClsInvSubject --login login.xml --journal journal.jsonl "
                                       L"--trace " +
                                           pipe + L" request.xml");
    trace.AwaitTheProgram();
    // Some rows of many are written; then the rest comes slowly, until the program has noticed.
    for (DWORD read = 0; read < 24'000;) {
        const DWORD more = trace.Read();
        ASSERT_NE(more, 0U);
        read += more;
    }
    ASSERT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0));
    while (trace.Read() != 0) {
        Sleep(10);
    }
    const test::ProgramRun run = program.Wait();
    EXPECT_EQ(run.status, 130U) << run.error;
    const auto done = static_cast<int>(account().Rows("select cWhCode from IA_HeadSet").size());
    EXPECT_GT(done, 0);
    EXPECT_LT(done, count);
    std::string expected = "<qxinterface docid=\"D\" proc=\"ADD\">";
    for (int number = 0; number < done; ++number) {
        expected += "<item key=\"仓库编码：" + Code(number) + "， ， \" code=\"0\" dsc=\"ok\"/>";
    }
    EXPECT_EQ(run.output, expected + "</qxinterface>\n");
    EXPECT_NE(run.error.find("Interrupted after " + std::to_string(done) +
                             " rows of 300 rows. What was accepted stays; send "
                             "the rest in a new request.\n"),
              std::string::npos)
        << run.error;
    const std::string journal = test::ReadText(account().folder() / "journal.jsonl");
    EXPECT_EQ(std::ranges::count(journal, '\n'), done + 2);
    EXPECT_TRUE(journal.ends_with("\n{\"end\":\"interrupted\"}\n")) << journal;
}

} // namespace
