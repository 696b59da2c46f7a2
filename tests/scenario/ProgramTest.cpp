// Runs every scenario through the program: its result, its trace and its rows.

#include "tests/support/Program.h"

#include "tests/scenario/ExpectedResult.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class ProgramScenario : public testing::TestWithParam<fs::path> {};

TEST_P(ProgramScenario, GivesResultAndStatements) {
    const fs::path folder = GetParam();
    const test::TestAccount account;
    test::SetUp(account, folder);
    // Names in Chinese, as accountants give them.
    const fs::path place = account.folder() / "导入 一";
    fs::create_directory(place);
    for (const char* name : {"account.db", "QxSystem.db"}) {
        fs::rename(account.folder() / name, place / name);
    }
    fs::copy_file(test::LoginFile(folder), place / "login.xml");
    fs::copy_file(folder / "request.xml", place / "请求.xml");

    const std::string className = folder.parent_path().filename().string();
    test::Program program(
        place, {"transact", "--class", className, "--login", "login.xml", "--trace", "记录.jsonl", "请求.xml"});
    const std::string expected = test::ExpectedResult(folder);
    EXPECT_EQ(program.Wait().output, expected.empty() ? "" : expected + "\n");
    for (const char* name : {"account.db", "QxSystem.db"}) {
        fs::rename(place / name, account.folder() / name);
    }
    test::ExpectStatementsAndRows(folder, place / "记录.jsonl", account, test::Documents::native);
}

INSTANTIATE_TEST_SUITE_P(All, ProgramScenario, testing::ValuesIn(test::ScenarioFolders()), test::ScenarioName);

} // namespace
