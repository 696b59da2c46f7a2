#pragma once

#include "server/com/Platform.h"

#include <string>

namespace test {

/// A console of this process's own, as long as the object lives.
class OwnConsole {
public:
    explicit OwnConsole(UINT codePage);
    ~OwnConsole();
    OwnConsole(const OwnConsole&) = delete;
    OwnConsole& operator=(const OwnConsole&) = delete;

    /// Whether the system gave one, with that code page.
    bool IsThere() const;
    /// What a process that inherits it writes to.
    HANDLE screen() const noexcept { return screen_; }
    /// What stands on the screen, without blanks: a Chinese character takes two cells, which systems fill in different
    /// ways.
    std::wstring Text() const;

private:
    UINT codePage_;
    HANDLE screen_ = INVALID_HANDLE_VALUE;
};

} // namespace test
