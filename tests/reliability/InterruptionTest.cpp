// Ctrl-C and SIGTERM: the program ends after the row at hand and says what was done.

#include "tests/reliability/Soundness.h"
#include "tests/reliability/TracePipe.h"
#include "tests/support/NumberedImport.h"
#include "tests/support/Program.h"

#include <algorithm>
#include <csignal>

#include <gtest/gtest.h>

namespace test {
namespace {

constexpr int planned = 300;
/// Bytes of the trace that are out when the signal is sent: some rows of many.
constexpr std::size_t written = 24'000;

class Interruption : public testing::TestWithParam<NumberedImport> {
protected:
    Interruption() {
        WriteBytes(account_.folder() / "login.xml", account_.LoginXml());
        WriteBytes(account_.folder() / "request.xml", RequestOf(GetParam(), 0, planned));
    }

    /// Runs the import and sends it `signal` when it is in the middle.
    Ended Interrupted(int signal) const {
        const TracePipe pipe(account_.folder() / "trace");
        Program program(account_.folder(), {"transact", "--class", GetParam().className, "--login", "login.xml",
                                            "--trace", "trace", "--journal", "journal", "request.xml"});
        EXPECT_EQ(pipe.Read(written), written);
        program.Signal(signal);
        pipe.ReadAll();
        return program.Wait();
    }

    const NumberedAccount account_{planned};
};

class RowByRow : public Interruption {};
class AtOnce : public Interruption {};

TEST_P(RowByRow, KeepsTheRowsThatWereDone) {
    const Ended ended = Interrupted(SIGINT);
    EXPECT_EQ(ended.signal, 0);
    EXPECT_EQ(ended.status, 130);
    const int done = WholeNumbers(GetParam(), account_);
    EXPECT_GT(done, 0);
    EXPECT_LT(done, planned);
    EXPECT_EQ(ended.output, AcceptedResult(GetParam(), 0, done) + "\n");
    EXPECT_NE(ended.error.find("Interrupted after " + std::to_string(done) + " "), std::string::npos) << ended.error;
    const std::string journal = ReadBytes(account_.folder() / "journal");
    EXPECT_EQ(std::ranges::count(journal, '\n'), done + 2);
    EXPECT_TRUE(journal.ends_with("\n{\"end\":\"interrupted\"}\n")) << journal;
}

INSTANTIATE_TEST_SUITE_P(Imports, RowByRow,
                         testing::Values(NumberedImports()[0], NumberedImports()[3], NumberedImports()[4]),
                         NameOfImport);

TEST_P(AtOnce, RollsEverythingBackAndSaysSo) {
    const Ended ended = Interrupted(SIGTERM);
    EXPECT_EQ(ended.signal, 0);
    EXPECT_EQ(ended.status, 130);
    EXPECT_EQ(WholeNumbers(GetParam(), account_), 0);
    EXPECT_EQ(Halves(GetParam(), account_), std::vector<std::string>());
    EXPECT_NE(ended.output.find("dsc=\"出现用户中断\""), std::string::npos) << ended.output;
    EXPECT_NE(ended.error.find("Everything was rolled back: nothing was imported.\n"), std::string::npos)
        << ended.error;
    EXPECT_TRUE(ReadBytes(account_.folder() / "journal").ends_with("{\"end\":\"undone\"}\n"));
}

INSTANTIATE_TEST_SUITE_P(Imports, AtOnce, testing::Values(NumberedImports()[5]), NameOfImport);

} // namespace
} // namespace test
