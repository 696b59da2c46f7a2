#pragma once

#include "server/com/ComPtr.h"
#include "tests/support/com/RegisteredLibrary.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace test {

/// Kovra.dll, registered as long as a test runs.
class ServerTest : public testing::Test {
protected:
    void SetUp() override { library_.emplace(L"Kovra.dll"); }

    /// An entry point of the library.
    template <class Function> Function Entry(const char* name) const { return library_->Entry<Function>(name); }
    /// Registers or unregisters; L"user" is the current user, nullptr the machine.
    HRESULT Install(bool install, const wchar_t* scope) const { return library_->Install(install, scope); }
    HRESULT CanUnload() const { return library_->CanUnload(); }

    /// Creates a class by its ProgID. @return the result of the creation
    static HRESULT Create(const wchar_t* progId, server::ComPtr<IDispatch>& object);

private:
    std::optional<RegisteredLibrary> library_;
};

/// The default value of a key below Software\Classes; empty when there is none.
std::wstring ClassesValue(HKEY root, const std::wstring& path, const wchar_t* name = nullptr);

} // namespace test
