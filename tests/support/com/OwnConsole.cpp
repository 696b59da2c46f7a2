#include "tests/support/com/OwnConsole.h"

#include <cstddef>

namespace test {

OwnConsole::OwnConsole(UINT codePage) : codePage_(codePage) {
    FreeConsole();
    if (AllocConsole()) {
        SetConsoleOutputCP(codePage);
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        screen_ = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                              OPEN_EXISTING, 0, nullptr);
    }
}

OwnConsole::~OwnConsole() {
    if (screen_ != INVALID_HANDLE_VALUE) {
        CloseHandle(screen_);
    }
    FreeConsole();
}

bool OwnConsole::IsThere() const { return screen_ != INVALID_HANDLE_VALUE && GetConsoleOutputCP() == codePage_; }

std::wstring OwnConsole::Text() const {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    GetConsoleScreenBufferInfo(screen_, &info);
    std::wstring text(static_cast<std::size_t>(info.dwSize.X) * static_cast<std::size_t>(info.dwCursorPosition.Y + 1),
                      L' ');
    DWORD read = 0;
    ReadConsoleOutputCharacterW(screen_, text.data(), static_cast<DWORD>(text.size()), {0, 0}, &read);
    text.resize(read);
    std::erase(text, L' ');
    std::erase(text, L'\0');
    return text;
}

} // namespace test
