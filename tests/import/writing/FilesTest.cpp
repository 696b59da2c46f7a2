#include "import/writing/Files.h"

#include "import/file/ReadBytes.h"
#include "os/FileError.h"
#include "tests/import/PackageFile.h"
#include "text/Fault.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <gtest/gtest.h>

namespace {

std::ptrdiff_t FilesIn(const test::TestFolder& folder) {
    return std::distance(std::filesystem::directory_iterator(std::filesystem::path(folder.File("x")).parent_path()),
                         {});
}

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

TEST(WriteKeepingOthers, LeavesNothingBesideWhatItFindsAsItIs) {
    const test::TestFolder folder;
    const auto write = [](const std::string& to) { WriteFile(to, "one"); };
    EXPECT_EQ(WriteKeepingOthers(folder.File("x.csv"), write), folder.File("x.csv"));
    const auto written = std::filesystem::last_write_time(folder.File("x.csv"));
    EXPECT_EQ(WriteKeepingOthers(folder.File("x.csv"), write), folder.File("x.csv"));
    EXPECT_EQ(std::filesystem::last_write_time(folder.File("x.csv")), written);
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(WriteFile, LeavesTheFileUntilAllIsWritten) {
    const test::TestFolder folder;
    const std::string path = folder.File("报告.html");
    WriteFile(path, "old");
    // Who reads the old one goes on reading it.
    std::ifstream reader(path);
    WriteFile(path, "new");
    std::string seen;
    std::getline(reader, seen);
    EXPECT_EQ(seen, "old");
    EXPECT_EQ(ReadBytes(path), "new");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(WriteFile, KeepsTheRightsOfAFileAndTheLinkToIt) {
    const test::TestFolder folder;
    WriteFile(folder.File("real.html"), "old");
    std::filesystem::permissions(folder.File("real.html"), std::filesystem::perms(0640));
    std::filesystem::create_symlink("real.html", folder.File("link.html"));
    WriteFile(folder.File("link.html"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link.html")));
    EXPECT_EQ(ReadBytes(folder.File("real.html")), "new");
    EXPECT_EQ(std::filesystem::status(folder.File("real.html")).permissions(), std::filesystem::perms(0640));
}

TEST(WriteFile, DoesNotReplaceADevice) {
    WriteFile("/dev/null", "x");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(WriteFile, LeavesTheFileThatCannotBeReplaced) {
    const test::TestFolder folder;
    std::filesystem::create_directory(folder.File("report.html.part"));
    WriteFile(folder.File("other.html"), "x");
    std::ofstream(folder.File("report.html")) << "old";
    try {
        WriteFile(folder.File("report.html"), "new");
        ADD_FAILURE();
    } catch (const text::Fault& fault) {
        EXPECT_EQ(fault.words().chinese, "'" + folder.File("report.html") + "': 这是一个文件夹");
    }
    EXPECT_EQ(ReadBytes(folder.File("report.html")), "old");
}

TEST(FileFault, TellsWhatToDoWhereAnotherProgramHoldsTheFile) {
    const std::error_code held = std::make_error_code(std::errc::device_or_resource_busy);
    const text::Words words = os::FileFault("期初.xlsx", held).words();
    EXPECT_EQ(words.english, "'期初.xlsx': another program has the file open; close it there and try again");
    EXPECT_EQ(words.chinese, "'期初.xlsx': 另一个程序正打开着这个文件，请在那里关闭后重试");
}

TEST(ReadBytes, SaysInBothLanguagesWhyAFileIsNotRead) {
    const test::TestFolder folder;
    const std::string path = folder.File("none.xlsx");
    try {
        ReadBytes(path);
        ADD_FAILURE();
    } catch (const text::Fault& fault) {
        EXPECT_EQ(fault.words().english, "Cannot read the file " + path + ": No such file or directory.");
        EXPECT_EQ(fault.words().chinese, "无法读取文件 " + path + "：没有这个文件或文件夹。");
    }
}

TEST(WriteKeepingOthers, SaysWhatCannotBeWritten) {
    const test::TestFolder folder;
    EXPECT_THROW(WriteKeepingOthers(folder.File("none/x.csv"), [](const std::string& to) { WriteFile(to, "x"); }),
                 std::runtime_error);
}

} // namespace
