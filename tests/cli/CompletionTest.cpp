// Completion for bash, and the manual page: both know every command and option of the help.

#include "cli/Classes.h"
#include "tests/cli/ProgramFixture.h"

#include <array>
#include <cstdlib>
#include <regex>
#include <set>

namespace test {
namespace {

constexpr std::array commands = {
    "transact",      "query",           "template",    "request",        "import",         "imports list",
    "imports show",  "imports undo",    "sql",         "account create", "account backup", "account restore",
    "account check", "account upgrade", "login check", "login init",     "trace show"};

/// The long options that the help of a command names.
std::set<std::string> Options(const std::string& help) {
    static const std::regex option("(?:^|\n)  (?:-[a-z],)?(--[a-z-]+)");
    std::set<std::string> options;
    for (auto found = std::sregex_iterator(help.begin(), help.end(), option); found != std::sregex_iterator();
         ++found) {
        options.insert((*found)[1]);
    }
    return options;
}

class Completion : public Program {
protected:
    void SetUp() override {
        if (ProgramIsForWindows()) {
            GTEST_SKIP() << "Windows has neither bash nor manual pages, and the program more options there";
        }
    }

    /// What bash offers at the end of a line.
    std::set<std::string> Offered(const std::string& line) const {
        Write("complete.sh", "PATH='" + std::filesystem::path(ProgramPath()).parent_path().string() +
                                 "':$PATH\nsource '" + (SourceFolder() / "cli/shell/kovra.bash").string() +
                                 "'\nCOMP_WORDS=(" + line +
                                 ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_kovra\n"
                                 "printf '%s\\n' \"${COMPREPLY[@]}\" > offered.txt\n");
        EXPECT_EQ(std::system(("cd '" + account().folder().string() + "' && bash complete.sh").c_str()), 0);
        std::istringstream words(Read(account().folder() / "offered.txt"));
        std::set<std::string> offered;
        for (std::string word; words >> word;) {
            offered.insert(word);
        }
        return offered;
    }
};

TEST_F(Completion, OffersTheOptionsOfEachCommand) {
    for (const char* command : commands) {
        const std::set<std::string> options = Options(Kovra(std::string(command) + " --help").output);
        EXPECT_GE(options.size(), 2U) << command;
        EXPECT_EQ(Offered(std::string("kovra ") + command + " --"), options) << command;
    }
    EXPECT_EQ(Offered("kovra --"), (std::set<std::string>{"--help", "--version", "--lang"}));
}

TEST_F(Completion, OffersCommandsAndValues) {
    using Words = std::set<std::string>;
    EXPECT_EQ(Offered("kovra log"), Words{"login"});
    EXPECT_EQ(Offered("kovra login ''"), (Words{"check", "init", "--lang", "--help"}));
    Words classes;
    for (const cli::ImportClass& importClass : cli::ImportClasses()) {
        classes.emplace(importClass.name);
    }
    EXPECT_EQ(Offered("kovra transact --class ''"), classes);
    EXPECT_EQ(Offered("kovra transact --class ClsOpp"), (Words{"ClsOppSubject", "ClsOppSubjectST"}));
    EXPECT_EQ(Offered("kovra template ClsOpp"), (Words{"ClsOppSubject", "ClsOppSubjectST"}));
    EXPECT_EQ(Offered("kovra sql --"), (Words{"--login", "--execute", "--format", "--timeout", "--lang", "--help"}));
    EXPECT_EQ(Offered("kovra request --hidden ''"), (Words{"include", "skip"}));
    EXPECT_EQ(Offered("kovra transact --format ''"), (Words{"xml", "table", "json"}));
    EXPECT_EQ(Offered("kovra transact --login log"), Words{"login.xml"});
    EXPECT_EQ(Offered("kovra sql log"), Words{"login.xml"});
    EXPECT_EQ(Offered("kovra sql -e log"), Words{});
    EXPECT_EQ(Offered("kovra --lang en transact -q log"), Words{"login.xml"});
    EXPECT_EQ(Offered("kovra imports undo ''"), (Words{"--login", "--lang", "--help"}));
}

TEST_F(Completion, TheManualPageHasEveryOptionAndExitStatus) {
    if (std::system("command -v help2man > /dev/null") != 0) {
        GTEST_SKIP() << "help2man is not installed";
    }
    const std::string make = "cd '" + account().folder().string() + "' && LC_ALL=C '" +
                             (SourceFolder() / "cli/shell/make-manual").string() + "' '" + ProgramPath() +
                             "' help2man kovra.1";
    ASSERT_EQ(std::system(make.c_str()), 0);
    const std::string page = Read(Path("kovra.1"));
    for (const char* command : commands) {
        EXPECT_TRUE(Contains(page, std::string("\n.B kovra ") + command));
        for (const std::string& option : Options(Kovra(std::string(command) + " --help").output)) {
            const std::string troff = std::regex_replace(option, std::regex("-"), "\\-");
            EXPECT_TRUE(Contains(page, troff)) << command;
        }
    }
    for (const char* status : {"\n0\n", "\n1\n", "\n2\n", "\n3\n", "\n130\n"}) {
        EXPECT_TRUE(Contains(page, status));
    }
    EXPECT_TRUE(Contains(page, "NO_COLOR"));
}

} // namespace
} // namespace test
