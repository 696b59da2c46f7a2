// Imports killed at any moment, as by a power cut of the process: what was committed is there, and nothing else.

#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "tests/reliability/Soundness.h"
#include "tests/support/FaultyEnvironment.h"
#include "tests/support/Program.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <random>
#include <thread>

#include <gtest/gtest.h>
#include <sys/mman.h>

namespace test {
namespace {

using Clock = std::chrono::steady_clock;

/// Kills of each class; the variable KOVRA_KILLS sets another number.
int KillsOfAClass() {
    const char* const text = std::getenv("KOVRA_KILLS");
    return text == nullptr ? (sanitized ? 10 : 50) : std::atoi(text);
}

/// How far an import has come, in memory that outlives its process.
struct Progress {
    std::atomic<bool> inTransaction = false;
    /// Commits that were begun, and those that had returned when the next operation began.
    std::atomic<int> begun = 0;
    std::atomic<int> returned = 0;
};

class SharedProgress {
public:
    SharedProgress()
        : memory_(mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
          progress_(new (memory_) Progress) {}
    ~SharedProgress() { munmap(memory_, sizeof(Progress)); }
    SharedProgress(const SharedProgress&) = delete;
    SharedProgress& operator=(const SharedProgress&) = delete;

    Progress& operator*() const { return *progress_; }
    Progress* operator->() const { return progress_; }

private:
    void* memory_;
    Progress* progress_;
};

/// Hooks that keep the progress.
Faults Watch(const NumberedImport& import, Progress& progress) {
    const auto before = [&import, &progress](std::string_view operation) {
        progress.returned = progress.begun.load();
        if (operation == "BeginTrans") {
            progress.inTransaction = true;
        }
        if (operation.starts_with(import.commit)) {
            ++progress.begun;
        }
    };
    return {.statement = before, .transaction = before};
}

class Killed : public testing::TestWithParam<NumberedImport> {};

TEST_P(Killed, LeavesWhatWasCommitted) {
    const NumberedImport& import = GetParam();
    const int count = import.commit == commitTrans ? 40 : 300;
    const int kills = KillsOfAClass();
    const NumberedAccount original(count);
    const std::string request = RequestOf(import, 0, count);
    std::mt19937 random(20240115);

    // How long an import takes undisturbed, by the program and in a copy of this process.
    std::array<Clock::duration, 2> needed = {};
    int killed = 0;
    int amidst = 0;
    for (int run = 0; killed < kills && !HasFailure(); ++run) {
        ASSERT_LT(run, 20 * kills + 2) << "the imports end before they are killed";
        const TestAccount account(original);
        WriteBytes(account.folder() / "login.xml", account.LoginXml());
        WriteBytes(account.folder() / "request.xml", request);
        const SharedProgress progress;
        const bool byProgram = run % 2 == 0;
        Clock::duration& whole = needed.at(byProgram ? 0 : 1);

        const auto ends = [&](auto process) {
            const Clock::time_point begin = Clock::now();
            if (whole != Clock::duration::zero()) {
                std::this_thread::sleep_for(std::chrono::duration_cast<Clock::duration>(
                    std::uniform_real_distribution(0.0, 1.0)(random) * whole));
                process.Kill();
            }
            const Ended ended = process.Wait();
            if (ended.signal == 0) {
                whole = Clock::now() - begin;
            }
            return ended;
        };
        const Ended ended =
            byProgram
                ? ends(Program(account.folder(),
                               {"transact", "--class", import.className, "--login", "login.xml", "request.xml"}))
                : ends(Process([&] {
                      FaultyEnvironment environment(Watch(import, *progress));
                      refhost::Login login(account.LoginXml(), environment);
                      return Transact(import, environment, login, request) == AcceptedResult(import, 0, count) ? 0 : 1;
                  }));

        const int present = WholeNumbers(import, account);
        if (ended.signal == 0) {
            EXPECT_EQ(ended.status, 0);
            EXPECT_EQ(present, count);
            continue;
        }
        ASSERT_EQ(ended.signal, SIGKILL);
        ++killed;
        if (import.atOnce) {
            EXPECT_TRUE(present == 0 || present == count) << present;
        }
        if (!byProgram) {
            const int each = import.atOnce ? count : 1;
            EXPECT_GE(present, progress->returned * each);
            EXPECT_LE(present, progress->begun * each);
        }
        if ((present != 0 && present != count) || (import.atOnce && progress->inTransaction && present == 0)) {
            ++amidst;
        }
        if (killed % 5 == 0) {
            ExpectCanGoOn(import, account, present, count);
        }
    }
    EXPECT_GT(amidst, 0) << "no import was killed between its first and its last commit";
    std::printf("reliability: %s: %d kills survived, %d of them between the first write and the last\n",
                import.className, killed, amidst);
}

INSTANTIATE_TEST_SUITE_P(Imports, Killed, testing::ValuesIn(NumberedImports()), NameOfImport);

} // namespace
} // namespace test
