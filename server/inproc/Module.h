#pragma once

#include "server/com/Platform.h"

#include <string>

namespace server {

/// Counts what keeps this library loaded: living objects and locks of its class factories.
class ModuleReference {
public:
    ModuleReference() noexcept;
    ModuleReference(const ModuleReference&) = delete;
    ModuleReference& operator=(const ModuleReference&) = delete;
    ~ModuleReference();

    /// A lock that a client takes and gives back.
    static void Lock(bool lock) noexcept;
    /// Whether nothing keeps the library loaded.
    static bool CanUnload() noexcept;
};

/// The handle of this library.
HINSTANCE ModuleHandle() noexcept;
/// To be called once, when the library is loaded.
void SetModuleHandle(HINSTANCE handle) noexcept;
/// The path of this library's file.
std::wstring ModulePath();

} // namespace server
