// `bench/many-clients`, with few rows: what it tells, what it leaves on a server, and that it fails when rows are
// refused.

#include "tests/support/Paths.h"
#include "tests/support/Program.h"
#include "tests/support/TdsServer.h"
#include "tests/support/TestAccount.h"

#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

class ManyClients : public testing::Test {
protected:
    /// Runs the script with a `program` that imports, with two rows a process, of one and of three processes.
    test::Ended Run(const std::string& program, const std::string& server) const {
        const std::string script = (test::SourceFolder() / "bench/many-clients").string();
        test::Process process([&] {
            dup2(open((folder_.path() / "out.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
            dup2(open((folder_.path() / "err.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
            server.empty() ? unsetenv("KOVRA_TEST_ODBC") : setenv("KOVRA_TEST_ODBC", server.c_str(), 1);
            return execl(script.c_str(), script.c_str(), program.c_str(), "2", "1", "3", nullptr);
        });
        test::Ended ended = process.Wait();
        ended.output = test::ReadBytes(folder_.path() / "out.txt");
        ended.error = test::ReadBytes(folder_.path() / "err.txt");
        return ended;
    }

    /// The lines of a run's table as "NAME PROCESSES: REFUSED refused".
    static std::vector<std::string> Lines(const std::string& output) {
        static const std::regex line("^(\\w+ \\w+) +(\\d+) +\\d+ +(\\d+) +[0-9.]+ +[0-9.]+$",
                                     std::regex::ECMAScript | std::regex::multiline);
        std::vector<std::string> lines;
        for (std::sregex_iterator at(output.begin(), output.end(), line), end; at != end; ++at) {
            lines.push_back((*at)[1].str() + " " + (*at)[2].str() + ": " + (*at)[3].str() + " refused");
        }
        return lines;
    }

    test::TemporaryFolder folder_;
};

TEST_F(ManyClients, RefuseNothingToEachOtherOnEveryKindOfAccount) {
    const test::TemporaryFolder databases;
    const test::TdsServer server("", {.databases = databases.path()});
    // A database that the string names has nothing to do with it.
    const test::Ended ended = Run(test::ProgramPath(), server.ConnectionString() + ";Database=elsewhere;App=test");
    EXPECT_EQ(ended.status, 0) << ended.output << ended.error;
    std::vector<std::string> expected;
    for (const char* const name :
         {"embedded settings", "embedded provisions", "server settings", "server provisions"}) {
        for (const char* const processes : {"1", "3"}) {
            expected.push_back(std::string(name) + " " + processes + ": 0 refused");
        }
    }
    EXPECT_EQ(Lines(ended.output), expected) << ended.output;
    // Its database is gone, the system database is not: it is everybody's.
    std::vector<std::string> left;
    for (const auto& file : std::filesystem::directory_iterator(databases.path())) {
        left.push_back(file.path().filename());
    }
    EXPECT_EQ(left, std::vector<std::string>{"QxSystem.db"});
}

TEST_F(ManyClients, FailWhenRowsAreRefused) {
    // A program that lets one of its processes import nothing.
    const std::string program = (folder_.path() / "kovra").string();
    test::WriteBytes(program,
                     "#!/bin/sh\ncase \"$*\" in *ClsInvSubject*request-1.xml) echo nothing >&2; exit 1 ;; esac\n"
                     "exec " +
                         test::ProgramPath() + " \"$@\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const test::Ended ended = Run(program, "");
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(Lines(ended.output),
              (std::vector<std::string>{"embedded settings 1: 0 refused", "embedded settings 3: 2 refused",
                                        "embedded provisions 1: 0 refused", "embedded provisions 3: 0 refused"}))
        << ended.output;
    EXPECT_NE(ended.error.find("error-1.txt: nothing\n"), std::string::npos) << ended.error;
}

} // namespace
