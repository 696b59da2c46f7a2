// `scripts/test`, with parts that end as a test wants.

#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <cstdlib>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

class TestScript : public testing::Test {
protected:
    TestScript() {
        fs::create_directory(folder_.path() / "scripts");
        for (const char* name : {"test", "help"}) {
            fs::copy_file(test::SourceFolder() / "scripts" / name, folder_.path() / "scripts" / name);
        }
        Write("install-packages", "true");
    }
    /// Puts a script of these commands in the place of one that `scripts/test` calls.
    void Write(const std::string& name, const std::string& commands) const {
        const fs::path path = folder_.path() / "scripts" / name;
        std::ofstream(path) << "#!/bin/sh\n" << commands << "\n";
        fs::permissions(path, fs::perms::owner_all);
    }
    /// @return the exit status
    int Run(const std::string& parts) const {
        const std::string out = (folder_.path() / "out").string();
        const std::string command =
            (folder_.path() / "scripts" / "test").string() + " " + parts + " >" + out + " 2>" + out + "-errors";
        return WEXITSTATUS(std::system(command.c_str()));
    }
    std::string Errors() const { return test::ReadText(folder_.path() / "out-errors"); }

    test::TemporaryFolder folder_;
};

TEST_F(TestScript, GoesOnBehindAPartThatFailsAndNamesItAtTheEnd) {
    Write("check", "exit 1");
    Write("test-windows", "touch windows-ran");
    EXPECT_EQ(Run("rules windows"), 1);
    EXPECT_TRUE(fs::exists(folder_.path() / "windows-ran"));
    EXPECT_EQ(Errors(), "scripts/test: failed: rules\n");
}

TEST_F(TestScript, NamesEveryPartThatFailed) {
    Write("check", "exit 1");
    Write("test-windows", "exit 3");
    EXPECT_EQ(Run("rules windows"), 1);
    EXPECT_EQ(Errors(), "scripts/test: failed: rules windows\n");
}

TEST_F(TestScript, EndsWithNothingToTellWhereEveryPartPasses) {
    Write("check", "exit 0");
    EXPECT_EQ(Run("rules"), 0);
    EXPECT_EQ(Errors(), "");
}

TEST_F(TestScript, RefusesAPartThatItDoesNotKnow) {
    EXPECT_EQ(Run("nothing"), 2);
    EXPECT_NE(Errors().find("nothing is not known"), std::string::npos);
}

} // namespace
