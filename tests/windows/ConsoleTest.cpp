// kovra.exe on a console of code page 936, as Chinese systems have it.
#include "server/com/Platform.h"
#include "tests/windows/RunProgram.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A console of this process's own, where it is given one.
class OwnConsole {
public:
    OwnConsole() {
        FreeConsole();
        if (AllocConsole()) {
            SetConsoleOutputCP(936);
            SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
            screen_ = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  &inherited, OPEN_EXISTING, 0, nullptr);
        }
    }
    ~OwnConsole() {
        if (screen_ != INVALID_HANDLE_VALUE) {
            CloseHandle(screen_);
        }
        FreeConsole();
    }
    OwnConsole(const OwnConsole&) = delete;
    OwnConsole& operator=(const OwnConsole&) = delete;

    bool IsThere() const { return screen_ != INVALID_HANDLE_VALUE && GetConsoleOutputCP() == 936; }
    HANDLE screen() const noexcept { return screen_; }
    /// What stands on the screen, without blanks: a Chinese character takes two cells, which systems fill in different
    /// ways.
    std::wstring Text() const {
        CONSOLE_SCREEN_BUFFER_INFO info{};
        GetConsoleScreenBufferInfo(screen_, &info);
        std::wstring text(
            static_cast<std::size_t>(info.dwSize.X) * static_cast<std::size_t>(info.dwCursorPosition.Y + 1), L' ');
        DWORD read = 0;
        ReadConsoleOutputCharacterW(screen_, text.data(), static_cast<DWORD>(text.size()), {0, 0}, &read);
        text.resize(read);
        std::erase(text, L' ');
        std::erase(text, L'\0');
        return text;
    }

private:
    HANDLE screen_ = INVALID_HANDLE_VALUE;
};

TEST(ConsoleOfCodePage936, ShowsChinese) {
    const OwnConsole console;
    if (!console.IsThere()) {
        GTEST_SKIP() << "this system gives no console";
    }
    EXPECT_EQ(test::RunProgramOn(console.screen(), L"--lang zh login check --login 没有.xml"), 2U);
    EXPECT_NE(console.Text().find(L"没有这个文件或文件夹"), std::wstring::npos)
        << testing::PrintToString(console.Text());
}

} // namespace
