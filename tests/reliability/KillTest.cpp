// Imports killed anywhere, as by a power cut of the process: what was committed is there, and nothing else. Where is
// told by what they have done, never by time.

#include "refhost/Environment.h"
#include "refhost/eai/Login.h"
#include "tests/reliability/Soundness.h"
#include "tests/reliability/TracePipe.h"
#include "tests/support/FaultyEnvironment.h"
#include "tests/support/Program.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>
#include <random>
#include <utility>

#include <gtest/gtest.h>
#include <sys/mman.h>

namespace test {
namespace {

/// Kills of each class; the variable KOVRA_KILLS sets another number.
int KillsOfAClass() {
    const char* const text = std::getenv("KOVRA_KILLS");
    return text == nullptr ? (sanitized ? 10 : 50) : std::atoi(text);
}

/// How far an import has come, in memory that outlives its process.
struct Progress {
    std::atomic<int> operations = 0;
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

/// Hooks that keep the progress, and kill the process in front of operation `killAt`, counted from 1.
Faults Watch(const NumberedImport& import, Progress& progress, std::size_t killAt) {
    const auto before = [&import, &progress, killAt](std::string_view operation) {
        progress.returned = progress.begun.load();
        if (static_cast<std::size_t>(++progress.operations) == killAt) {
            raise(SIGKILL);
        }
        if (operation == "BeginTrans") {
            progress.inTransaction = true;
        }
        if (operation.starts_with(import.commit)) {
            ++progress.begun;
        }
    };
    return {.statement = before, .transaction = before};
}

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

class Killed : public testing::TestWithParam<NumberedImport> {
protected:
    /// Runs the import in a copy of this process, which ends in front of operation `killAt`.
    Ended InACopy(const TestAccount& account, std::size_t killAt) {
        const NumberedImport& import = GetParam();
        Process process([&] {
            FaultyEnvironment environment(Watch(import, *progress_, killAt));
            refhost::Login login(account.LoginXml(), environment);
            return Transact(import, environment, login, request_) == AcceptedResult(import, 0, count_) ? 0 : 1;
        });
        return process.Wait();
    }

    /// Runs the import by the program, which ends at what it is about when so many bytes of its trace are read: in the
    /// midst of an operation, too.
    /// @return also how many were read
    std::pair<Ended, std::size_t> ByProgram(const TestAccount& account, std::size_t killAt) {
        WriteBytes(account.folder() / "login.xml", account.LoginXml());
        WriteBytes(account.folder() / "request.xml", request_);
        const TracePipe pipe(account.folder() / "trace");
        Program program(account.folder(), {"transact", "--class", GetParam().className, "--login", "login.xml",
                                           "--trace", "trace", "request.xml"});
        const std::size_t read = pipe.Read(killAt);
        if (read == killAt) {
            program.Kill();
        }
        return {program.Wait(), read};
    }

    const int count_ = GetParam().commit == commitTrans ? 40 : 300;
    const std::string request_ = RequestOf(GetParam(), 0, count_);
    SharedProgress progress_;
};

TEST_P(Killed, LeavesWhatWasCommitted) {
    const NumberedImport& import = GetParam();
    const int kills = KillsOfAClass();
    const NumberedAccount original(count_);

    // How much an import does undisturbed.
    const TestAccount first(original);
    ASSERT_EQ(InACopy(first, never).status, 0);
    const auto operations = static_cast<std::size_t>(progress_->operations);
    const TestAccount second(original);
    const auto [undisturbed, bytes] = ByProgram(second, never);
    ASSERT_EQ(undisturbed.status, 0);
    for (const TestAccount* account : {&first, &second}) {
        ASSERT_EQ(WholeNumbers(import, *account), count_);
    }
    ASSERT_GT(bytes, 2 * TracePipe::ahead);

    std::mt19937 random(20240115);
    int amidst = 0;
    for (int run = 0; run < kills && !HasFailure(); ++run) {
        const TestAccount account(original);
        new (&*progress_) Progress;
        const bool byProgram = run % 2 == 0;
        const std::size_t last = byProgram ? bytes - TracePipe::ahead : operations;
        const std::size_t killAt = std::uniform_int_distribution<std::size_t>(1, last)(random);
        const Ended ended = byProgram ? ByProgram(account, killAt).first : InACopy(account, killAt);
        ASSERT_EQ(ended.signal, SIGKILL) << (byProgram ? "byte " : "operation ") << killAt;

        const int present = WholeNumbers(import, account);
        if (import.atOnce) {
            EXPECT_TRUE(present == 0 || present == count_) << present;
        }
        if (!byProgram) {
            // No commit was under way.
            EXPECT_EQ(progress_->returned, progress_->begun);
            EXPECT_EQ(present, progress_->returned * (import.atOnce ? count_ : 1)) << "operation " << killAt;
        }
        if ((present != 0 && present != count_) || (import.atOnce && progress_->inTransaction && present == 0)) {
            ++amidst;
        }
        if (run % 5 == 4) {
            ExpectCanGoOn(import, account, present, count_);
        }
    }
    EXPECT_GT(amidst, 0) << "no import was killed between its first and its last commit";
    std::printf("reliability: %s: %d kills survived, %d of them between the first write and the last\n",
                import.className, kills, amidst);
}

INSTANTIATE_TEST_SUITE_P(Imports, Killed, testing::ValuesIn(NumberedImports()), NameOfImport);

} // namespace
} // namespace test
