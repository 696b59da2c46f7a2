// Files that another program has open, as Excel has a workbook.
#include "server/com/Platform.h"
#include "tests/support/ScenarioFolder.h"
#include "tests/support/TestAccount.h"
#include "tests/support/com/RunProgram.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// A file that this process has open as long as the object lives.
class Held {
public:
    /// @param shared what others may do meanwhile: FILE_SHARE_…
    Held(const fs::path& path, const std::string& text, DWORD shared) {
        std::ofstream(path, std::ios::binary) << text;
        handle_ = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, shared, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    ~Held() { CloseHandle(handle_); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    HANDLE handle_;
};

class HeldFile : public testing::Test {
protected:
    fs::path Path(const wchar_t* name) const { return account_.folder() / name; }
    test::ProgramRun Request() const {
        return test::RunProgram(account_.folder(), L"request --class ClsInvSubject -o 请求.xml 设置.csv");
    }

    static constexpr const char* rows = "仓库编码,存货科目\n01,1405\n";

private:
    test::TestAccount account_;
};

TEST_F(HeldFile, ThatNobodyElseMayReadIsToldOf) {
    const Held held(Path(L"设置.csv"), rows, 0);
    const test::ProgramRun run = Request();
    EXPECT_EQ(run.status, 2U);
    EXPECT_NE(run.error.find("设置.csv: another program has the file open; close it there and try again."),
              std::string::npos)
        << run.error;
}

TEST_F(HeldFile, ThatOthersMayReadIsRead) {
    const Held held(Path(L"设置.csv"), rows, FILE_SHARE_READ);
    EXPECT_EQ(Request().status, 0U);
    EXPECT_TRUE(fs::exists(Path(L"请求.xml")));
}

TEST_F(HeldFile, IsNotReplacedAndSaysWhoHoldsIt) {
    std::ofstream(Path(L"设置.csv"), std::ios::binary) << rows;
    const Held held(Path(L"请求.xml"), "old", FILE_SHARE_READ | FILE_SHARE_WRITE);
    const test::ProgramRun run = Request();
    EXPECT_EQ(run.status, 2U);
    EXPECT_NE(run.error.find("'请求.xml': another program has the file open; close it there and try again"),
              std::string::npos)
        << run.error;
    EXPECT_EQ(test::ReadText(Path(L"请求.xml")), "old");
    EXPECT_FALSE(fs::exists(Path(L"请求.xml.part")));
}

} // namespace
