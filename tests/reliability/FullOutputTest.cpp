// The program's own output where there is no room for it.

#include "tests/reliability/Soundness.h"
#include "tests/support/Program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace test {
namespace {

class FullOutput : public testing::Test {
protected:
    FullOutput() {
        WriteBytes(account_.folder() / "login.xml", account_.LoginXml());
        WriteBytes(account_.folder() / "request.xml", RequestOf(import_, 0, 3));
    }

    static void WriteToFullDevice() {
        if (dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO) == -1) {
            _exit(126);
        }
    }

    const NumberedImport& import_ = NumberedImports().front();
    NumberedAccount account_{3};
};

TEST_F(FullOutput, ResultThatCannotBeWrittenIsSaid) {
    Program program(account_.folder(),
                    {"transact", "--class", import_.className, "--login", "login.xml", "request.xml"},
                    WriteToFullDevice);
    const Ended ended = program.Wait();
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.error, "All 3 rows accepted.\nkovra: standard output: No space left on device\n");
    EXPECT_EQ(WholeNumbers(import_, account_), 3);
}

TEST_F(FullOutput, RowsThatCannotBeWrittenAreSaid) {
    Program program(account_.folder(), {"sql", "--login", "login.xml", "-e", "select cWhCode from Warehouse"},
                    WriteToFullDevice);
    const Ended ended = program.Wait();
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.error, "kovra: standard output: No space left on device\n");
}

TEST_F(FullOutput, TraceThatCannotBeWrittenIsSaidAfterTheResult) {
    Program program(account_.folder(), {"transact", "--class", import_.className, "--login", "login.xml", "--trace",
                                        "/dev/full", "request.xml"});
    const Ended ended = program.Wait();
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.output, AcceptedResult(import_, 0, 3) + "\n");
    EXPECT_EQ(ended.error, "All 3 rows accepted.\nkovra: /dev/full: No space left on device\n");
}

} // namespace
} // namespace test
