#include "os/Files.h"

#include "tests/support/TestAccount.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File Opened(const std::string& name, const char* mode) { return {os::OpenFile(name, mode), &std::fclose}; }

TEST(Files, AreOpenedByNamesInUtf8) {
    const test::TemporaryFolder folder;
    const std::filesystem::path path = folder.path() / u8"期初 é.txt";
    {
        const File written = Opened(os::NameOf(path), "wb");
        ASSERT_TRUE(written);
        EXPECT_EQ(std::fwrite("1401", 1, 4, written.get()), 4U);
    }
    EXPECT_TRUE(std::filesystem::exists(path));
    const File read = Opened(os::NameOf(path), "rb");
    ASSERT_TRUE(read);
    std::array<char, 8> bytes{};
    EXPECT_EQ(std::fread(bytes.data(), 1, bytes.size(), read.get()), 4U);
    EXPECT_STREQ(bytes.data(), "1401");
}

TEST(Files, ReasonWhyOneCannotBeOpenedIsInErrno) {
    const test::TemporaryFolder folder;
    errno = 0;
    EXPECT_FALSE(Opened(os::NameOf(folder.path() / u8"没有.txt"), "rb"));
    EXPECT_EQ(errno, ENOENT);
}

TEST(Files, PathOfANameHasThatName) {
    const std::string name = "期初/2024 é.xlsx";
    EXPECT_EQ(os::PathOf(name).filename(), std::filesystem::path(u8"2024 é.xlsx"));
    EXPECT_EQ(os::NameOf(os::PathOf("期初.xlsx")), "期初.xlsx");
    EXPECT_EQ(os::NameOf(os::PathOf("")), "");
}

} // namespace
