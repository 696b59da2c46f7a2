// Ctrl-C, Ctrl-Break and the closing of kovra.exe's console: the program ends after the row at hand, or takes all of it
// back, and says what was done.
#include "tests/support/TestAccount.h"
#include "tests/support/com/OwnConsole.h"
#include "tests/support/com/RunProgram.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <vector>

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
/// Bytes of the trace that are out when the program is interrupted: some rows of many.
constexpr DWORD written = 24'000;

std::string Number(int number) { return std::to_string(1000 + number); }

/// An SQL list of what `values` makes of each number.
std::string List(std::string (*values)(const std::string& number)) {
    std::string list;
    for (int number = 0; number < count; ++number) {
        list.append(number == 0 ? "" : ", ").append(values(Number(number)));
    }
    return list;
}

/// What a program is told by its console.
struct Event {
    const char* name;
    DWORD code;
};

class Interruption : public testing::Test {
protected:
    // This process shares the console, and goes on.
    Interruption() { SetConsoleCtrlHandler(GoOn, TRUE); }
    ~Interruption() override { SetConsoleCtrlHandler(GoOn, FALSE); }

    void SetUp() override {
        if (!console_.IsThere()) {
            GTEST_SKIP() << "this system gives no console";
        }
    }

    /// Runs a request of the elements `rows`, and tells the program of `event` when it is in the middle.
    void Interrupt(DWORD event, const test::TestAccount& account, const std::wstring& className,
                   const std::string& rows) {
        Write(account, "request.xml",
              "<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\">" + rows + "</qxinterface>");
        Write(account, "login.xml", account.LoginXml());
        const std::wstring pipe = L"\\\\.\\pipe\\kovra-test-" + std::to_wstring(GetCurrentProcessId());
        TracePipe trace(pipe);
        const test::RunningProgram program(
            account.folder(), L"transact --class " + className +
                                  L" --login login.xml --journal journal.jsonl --trace " + pipe + L" request.xml");
        trace.AwaitTheProgram();
        for (DWORD read = 0; read < written;) {
            const DWORD more = trace.Read();
            ASSERT_NE(more, 0U);
            read += more;
        }
        const HANDLE thread = Tell(program.process(), event);
        // The rest comes slowly, until the program has noticed.
        while (trace.Read() != 0) {
            Sleep(10);
        }
        run = program.Wait();
        journal = test::ReadText(account.folder() / "journal.jsonl");
        if (thread) {
            EXPECT_TRUE(GetExitCodeThread(thread, &handlersEnd));
            CloseHandle(thread);
        }
    }

    test::ProgramRun run;
    std::string journal;
    /// With what the thread ended that told the program: 1 by itself, else with the program's own exit status.
    DWORD handlersEnd = 1;

private:
    static BOOL WINAPI GoOn(DWORD) { return TRUE; }

    static void Write(const test::TestAccount& account, const char* name, const std::string& text) {
        std::ofstream(account.folder() / name, std::ios::binary) << text;
    }

    /// Tells it as the system does: by a thread that runs in the program. Ctrl-C comes from the console itself; Wine's
    /// console knows no other event that a program could note. @return the thread; nullptr for the console's
    static HANDLE Tell(void* process, DWORD event) {
        if (event == CTRL_C_EVENT) {
            EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0));
            return nullptr;
        }
        const auto routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "CtrlRoutine")));
        const HANDLE thread = CreateRemoteThread(process, nullptr, 0, routine,
                                                 reinterpret_cast<void*>(static_cast<ULONG_PTR>(event)), 0, nullptr);
        EXPECT_NE(thread, nullptr);
        return thread;
    }

    const test::OwnConsole console_{936};
};

class Row : public Interruption, public testing::WithParamInterface<Event> {
protected:
    Row() {
        account.Run("insert into code (ccode, iyear, bend) values ('1405', 2023, 1)\nGO\n"
                    "insert into Warehouse (cWhCode, cWhName) values " +
                    List([](const std::string& number) { return "('W" + number + "', 'x')"; }));
    }

    void Interrupt(DWORD event) {
        std::string rows;
        for (int number = 0; number < count; ++number) {
            rows += "<row><cWhCode>W" + Number(number) + "</cWhCode><cInvHead>1405</cInvHead></row>";
        }
        Interruption::Interrupt(event, account, L"ClsInvSubject", rows);
    }

    int Written() const { return static_cast<int>(account.Rows("select cWhCode from IA_HeadSet").size()); }

    const test::TestAccount account;
};

TEST_P(Row, IsDoneAndThoseBeforeItAreKept) {
    Interrupt(GetParam().code);
    EXPECT_EQ(run.status, 130U) << run.error;
    const int done = Written();
    EXPECT_GT(done, 0);
    EXPECT_LT(done, count);
    std::string expected = "<qxinterface docid=\"D\" proc=\"ADD\">";
    for (int number = 0; number < done; ++number) {
        expected += "<item key=\"仓库编码：W" + Number(number) + "， ， \" code=\"0\" dsc=\"ok\"/>";
    }
    EXPECT_EQ(run.output, expected + "</qxinterface>\n");
    EXPECT_NE(run.error.find("Interrupted after " + std::to_string(done) +
                             " of 300 rows. What was accepted stays; send the rest in a new request.\n"),
              std::string::npos)
        << run.error;
    EXPECT_EQ(std::ranges::count(journal, '\n'), done + 2);
    EXPECT_TRUE(journal.ends_with("\n{\"end\":\"interrupted\"}\n")) << journal;
    // The system ends a program whose console is closed when its handler returns: not before the program has.
    if (GetParam().code == CTRL_CLOSE_EVENT) {
        EXPECT_EQ(handlersEnd, run.status);
    }
}

INSTANTIATE_TEST_SUITE_P(Events, Row,
                         testing::Values(Event{"CtrlC", CTRL_C_EVENT}, Event{"CtrlBreak", CTRL_BREAK_EVENT},
                                         Event{"Close", CTRL_CLOSE_EVENT}),
                         [](const auto& parameter) { return parameter.param.name; });

class Voucher : public Interruption {};

TEST_F(Voucher, IsTakenBackWhenTheConsoleIsClosed) {
    const test::TestAccount account(test::AccountContent::demo);
    account.Run("insert into inventory (cInvCode, cInvName, cInvCCode, cValueType, iInvRCost, bService, bInvType, "
                "bPTOModel) values " +
                List([](const std::string& number) {
                    return "('N" + number + "', N'存货', '0103', N'计划价法', 25, 0, 0, 0)";
                }) +
                "\nGO\ninsert into InvCheckFreeIA870 (cInvCode, fInvRCost) values " +
                List([](const std::string& number) { return "('N" + number + "', 25)"; }));
    std::string entries;
    for (int number = 0; number < count; ++number) {
        entries += "<entry><cInvCode>N" + Number(number) + "</cInvCode><iCJVACost>26.5</iCJVACost></entry>";
    }
    Interrupt(CTRL_CLOSE_EVENT, account, L"ClsPriceJustVou",
              "<row><header><ID>TJ1</ID><cMaker>李工</cMaker><dCJVDate>2024-01-15</dCJVDate></header><body>" + entries +
                  "</body></row>");
    EXPECT_EQ(run.status, 130U) << run.error;
    EXPECT_EQ(handlersEnd, run.status);
    EXPECT_NE(run.output.find("dsc=\"出现用户中断\""), std::string::npos) << run.output;
    EXPECT_NE(run.error.find("Everything was rolled back: nothing was imported.\n"), std::string::npos) << run.error;
    EXPECT_TRUE(journal.ends_with("\n{\"end\":\"undone\"}\n")) << journal;
    EXPECT_EQ(account.Rows("select ID from CostJustVouch"), std::vector<std::string>());
    EXPECT_EQ(account.Rows("select AutoID from CostJustVouchs"), std::vector<std::string>());
}

} // namespace
