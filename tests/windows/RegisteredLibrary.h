#pragma once

#include "server/com/Platform.h"

namespace test {

/// A library from this program's folder, registered for the machine as long as the object lives: Wine looks for
/// classes there alone.
class RegisteredLibrary {
public:
    /// Throws std::runtime_error when the library cannot be loaded; fails the running test when it cannot be
    /// registered.
    explicit RegisteredLibrary(const wchar_t* file);
    ~RegisteredLibrary();
    RegisteredLibrary(const RegisteredLibrary&) = delete;
    RegisteredLibrary& operator=(const RegisteredLibrary&) = delete;

    /// An entry point of the library.
    template <class Function> Function Entry(const char* name) const {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
    }
    /// Registers or unregisters; L"user" is the current user, nullptr the machine.
    HRESULT Install(bool install, const wchar_t* scope) const;
    /// What `DllCanUnloadNow` says.
    HRESULT CanUnload() const;

private:
    HMODULE library_;
};

} // namespace test
