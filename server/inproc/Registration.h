#pragma once

#include "server/com/Platform.h"
#include "server/inproc/ClassFactory.h"

#include <span>

namespace server {

/// For whom classes are registered: everybody on the machine, which needs administrator rights, or the current user.
enum class Scope { machine, user };

/// What a library registers.
struct Registrant {
    std::span<const ClassEntry> classes;
    /// The embedded type library, or null for none.
    const GUID* typeLibrary = nullptr;
    /// Name and version of the type library.
    const wchar_t* typeLibraryName = nullptr;
    const wchar_t* typeLibraryVersion = L"1.0";
};

/// Writes the library's classes, interfaces and type library into the registry. Throws `host::Error` when a key cannot
/// be written; what was written before is taken away again.
void Register(const Registrant& registrant, Scope scope);

/// Takes them away, but for the names that the library of the other size shares while it is registered. What is not
/// there is no error. Throws `host::Error` when a key cannot be removed; the others are.
void Unregister(const Registrant& registrant, Scope scope);

} // namespace server
