// Every command block of the READMEs and of the pages in docs/zh and docs/en runs as written, in a clean copy.

#include "tests/docs/Pages.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <optional>

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view command = "sh";
constexpr std::string_view commandThatEnds = "sh exit=";
/// What a fence may hold on a page whose commands are run.
constexpr std::array<std::string_view, 5> otherFences = {"text", "xml", "sql", "json", "jsonl"};

/// The exit status that a block of commands must end with; nothing for another fence.
std::optional<int> WantedStatus(const test::Fence& fence) {
    if (fence.info == command) {
        return 0;
    }
    if (fence.info.starts_with(commandThatEnds)) {
        return std::stoi(fence.info.substr(commandThatEnds.size()));
    }
    return std::nullopt;
}

/// The pages, relative to the root of the sources.
std::vector<std::string> PagesWithCommands() {
    std::vector<std::string> pages = {"README.md", "README.zh-CN.md"};
    for (const char* folder : {"docs/zh", "docs/en"}) {
        for (const auto& entry : fs::directory_iterator(test::SourceFolder() / folder)) {
            pages.push_back(std::string(folder) + "/" + entry.path().filename().string());
        }
    }
    std::ranges::sort(pages);
    return pages;
}

/// The sources as someone gets them who has built the program and nothing else.
class CleanCopy {
public:
    CleanCopy() {
        for (const char* name : {"docs", "examples", "schemas", "scripts", "README.md", "README.zh-CN.md"}) {
            fs::copy(test::SourceFolder() / name, root() / name, fs::copy_options::recursive);
        }
        fs::create_directories(root() / "build/release");
        fs::create_symlink(test::ProgramPath(), root() / "build/release/kovra");
        fs::create_directory(logs());
    }
    fs::path root() const { return folder_.path(); }
    fs::path logs() const { return root() / "build/logs"; }

private:
    test::TemporaryFolder folder_;
};

/// Runs the blocks of a page in one shell, as a reader types them, and notes what each wrote and ended with.
class Session {
public:
    explicit Session(const std::vector<test::Fence>& fences) {
        std::string script = "cd '" + copy_.root().string() + "'\n";
        for (std::size_t i = 0; i < fences.size(); ++i) {
            const std::optional<int> wanted = WantedStatus(fences[i]);
            if (!wanted) {
                continue;
            }
            const std::string log = Log(i).string();
            std::ofstream(log + ".sh") << fences[i].text;
            // A block that must fail may: it is one command, whose status is the block's.
            script.append(*wanted == 0 ? "set -e\n" : "set +e\n");
            script.append("source '" + log + ".sh' >'" + log + ".out' 2>'" + log + ".err'\n");
            script.append("echo $? >'" + log + ".status'\n");
        }
        const fs::path file = copy_.logs() / "session.sh";
        std::ofstream(file) << script;
        // The demonstration takes the program that is built already.
        const std::string line = "KOVRA_PROGRAM='" + test::ProgramPath() + "' bash --norc -o pipefail '" +
                                 file.string() + "' </dev/null >'" + (copy_.logs() / "session.log").string() + "' 2>&1";
        status_ = WEXITSTATUS(std::system(line.c_str()));
    }

    /// The exit status of block `i`; nothing when it or one before it ended the session.
    std::optional<int> Status(std::size_t i) const {
        const std::string text = Read(i, ".status");
        return text.empty() ? std::nullopt : std::optional(std::stoi(text));
    }
    std::string Output(std::size_t i) const { return Read(i, ".out"); }
    std::string Errors(std::size_t i) const { return Read(i, ".err"); }
    int status() const { return status_; }

private:
    fs::path Log(std::size_t i) const { return copy_.logs() / ("block-" + std::to_string(i)); }
    std::string Read(std::size_t i, const char* ending) const {
        const fs::path file = Log(i).string() + ending;
        return fs::exists(file) ? test::ReadText(file) : "";
    }

    CleanCopy copy_;
    int status_ = -1;
};

class Page : public testing::TestWithParam<std::string> {
protected:
    std::vector<test::Fence> Fences() const { return test::Fences(test::ReadText(test::SourceFolder() / GetParam())); }
    std::string Place(const test::Fence& fence) const { return GetParam() + ":" + std::to_string(fence.line); }
};

TEST_P(Page, RunsAsWritten) {
    const std::vector<test::Fence> fences = Fences();
    if (std::ranges::none_of(fences, [](const test::Fence& fence) { return WantedStatus(fence).has_value(); })) {
        return;
    }
    const Session session(fences);
    for (std::size_t i = 0; i < fences.size(); ++i) {
        const std::optional<int> wanted = WantedStatus(fences[i]);
        if (!wanted) {
            continue;
        }
        const std::optional<int> status = session.Status(i);
        ASSERT_TRUE(status) << Place(fences[i]) << ": a command failed (" << session.status() << ")\n"
                            << session.Output(i) << session.Errors(i);
        EXPECT_EQ(*status, *wanted) << Place(fences[i]) << "\n" << session.Errors(i);
        // A text right behind the commands is what they write.
        if (i + 1 < fences.size() && fences[i + 1].info == "text") {
            EXPECT_EQ(session.Output(i), fences[i + 1].text) << Place(fences[i + 1]);
        }
    }
}

TEST_P(Page, SaysOfEveryBlockWhatItIs) {
    for (const test::Fence& fence : Fences()) {
        EXPECT_TRUE(WantedStatus(fence) || std::ranges::find(otherFences, fence.info) != otherFences.end())
            << Place(fence) << ": \"" << fence.info << "\"";
        if (WantedStatus(fence).value_or(0) != 0) {
            EXPECT_EQ(test::Lines(fence.text).size(), 1U) << Place(fence) << ": a block that fails is one command";
        }
    }
}

TEST_P(Page, ShowsRequestsAsTheExamplesHaveThem) {
    std::string examples;
    for (const auto& entry : fs::recursive_directory_iterator(test::SourceFolder() / "examples")) {
        if (entry.path().extension() == ".xml") {
            examples += test::ReadText(entry.path());
        }
    }
    for (const test::Fence& fence : Fences()) {
        if (fence.info == "xml" && fence.text.find("roottag=") != fence.text.npos) {
            EXPECT_NE(examples.find(fence.text), examples.npos) << Place(fence) << ": no file of examples holds this";
        }
    }
}

std::string NameOf(const std::string& page) {
    std::string name = page;
    std::ranges::replace_if(
        name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Docs, Page, testing::ValuesIn(PagesWithCommands()),
                         [](const auto& page) { return NameOf(page.param); });

// The session itself must notice what it is there for.
TEST(CommandBlocks, FailWhereACommandFails) {
    const std::vector<test::Fence> fences = {{"sh", "true\n", 1}, {"sh", "false\ntrue\n", 2}, {"sh", "true\n", 3}};
    const Session session(fences);
    EXPECT_EQ(session.Status(0), 0);
    EXPECT_EQ(session.Status(1), std::nullopt);
    EXPECT_EQ(session.Status(2), std::nullopt);
    EXPECT_NE(session.status(), 0);
}

TEST(CommandBlocks, FailInAPipe) {
    EXPECT_EQ(Session({{"sh", "kovra-that-is-not-there | cat\n", 1}}).Status(0), std::nullopt);
}

TEST(CommandBlocks, KeepWhatTheShellWasTold) {
    const std::vector<test::Fence> fences = {{"sh", "export PATH=\"$PWD/build/release:$PATH\"\n", 1},
                                             {"sh exit=2", "kovra nothing-known\n", 2},
                                             {"sh", "kovra --version | sed -n '1s/ .*//p'\n", 3}};
    const Session session(fences);
    EXPECT_EQ(session.Status(1), 2);
    EXPECT_EQ(session.Status(2), 0);
    EXPECT_EQ(session.Output(2), "kovra\n");
}

} // namespace
