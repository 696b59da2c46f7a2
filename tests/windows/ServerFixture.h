#pragma once

#include "server/com/ComPtr.h"
#include "server/com/Platform.h"

#include <string>

#include <gtest/gtest.h>

namespace test {

/// Kovra.dll from this program's folder, registered for the machine as long as a test runs: Wine looks for classes
/// there alone.
class ServerTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// An entry point of the library.
    template <class Function> Function Entry(const char* name) const {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
    }
    /// Registers or unregisters; L"user" is the current user, nullptr the machine.
    HRESULT Install(bool install, const wchar_t* scope) const;
    HRESULT CanUnload() const;

    /// Creates a class by its ProgID. @return the result of the creation
    static HRESULT Create(const wchar_t* progId, server::ComPtr<IDispatch>& object);

private:
    HMODULE library_ = nullptr;
};

/// The default value of a key below Software\Classes; empty when there is none.
std::wstring ClassesValue(HKEY root, const std::wstring& path, const wchar_t* name = nullptr);

} // namespace test
