#include "import/writing/Files.h"

#include "import/file/ReadBytes.h"
#include "tests/import/PackageFile.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace {

using importing::ReadBytes;
using importing::WriteFile;
using importing::WriteKeepingOthers;

TEST(PathBeside, StandsInTheSameFolder) {
    EXPECT_EQ(importing::PathBeside("a/b.c/x.xlsx", "new", ".csv"), "a/b.c/x.new.csv");
    EXPECT_EQ(importing::PathBeside("a\\b.c\\x", "new", ".csv"), "a\\b.c\\x.new.csv");
    EXPECT_EQ(importing::PathBeside(".hidden", "new", ".csv"), ".hidden.new.csv");
}

TEST(WriteKeepingOthers, LeavesAFileThatSomebodyChanged) {
    const test::TestFolder folder;
    const std::string path = folder.File("期初.拒绝.csv");
    const auto write = [](const char* text) { return [text](const std::string& to) { WriteFile(to, text); }; };
    EXPECT_EQ(WriteKeepingOthers(path, write("one")), path);
    EXPECT_EQ(WriteKeepingOthers(path, write("one")), path);
    EXPECT_EQ(WriteKeepingOthers(path, write("two")), folder.File("期初.拒绝-2.csv"));
    EXPECT_EQ(WriteKeepingOthers(path, write("three")), folder.File("期初.拒绝-3.csv"));
    EXPECT_EQ(WriteKeepingOthers(path, write("two")), folder.File("期初.拒绝-2.csv"));
    EXPECT_EQ(ReadBytes(path), "one");
    EXPECT_EQ(ReadBytes(folder.File("期初.拒绝-3.csv")), "three");
}

TEST(WriteKeepingOthers, SaysWhatCannotBeWritten) {
    const test::TestFolder folder;
    EXPECT_THROW(WriteKeepingOthers(folder.File("none/x.csv"), [](const std::string& to) { WriteFile(to, "x"); }),
                 std::runtime_error);
}

} // namespace
