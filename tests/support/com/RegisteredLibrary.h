#pragma once

#include "server/com/Platform.h"

namespace test {

/// A library from this program's folder, registered for the machine as long as the object lives, since Wine looks for
/// classes there alone. It takes the names that the system's own libraries hold, and gives them back.
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
    /// Registers or unregisters.
    /// @param words of the command line: L"user" is the current user, nullptr the machine; L"replace" takes the names
    /// of
    ///        others
    HRESULT Install(bool install, const wchar_t* words) const;
    /// What `DllCanUnloadNow` says.
    HRESULT CanUnload() const;

private:
    HMODULE library_;
};

} // namespace test
