#pragma once

#include "server/com/Platform.h"
#include "server/inproc/ClassFactory.h"
#include "server/inproc/ClassesRegistry.h"

#include <span>

namespace server {

/// What a library registers.
struct Registrant {
    std::span<const ClassEntry> classes;
    /// The embedded type library, or null for none.
    const GUID* typeLibrary = nullptr;
    /// Name and version of the type library.
    const wchar_t* typeLibraryName = nullptr;
    const wchar_t* typeLibraryVersion = L"1.0";
    /// The application that the system's surrogate runs the classes as, for clients of the other size; null for none.
    const GUID* application = nullptr;
};

/// Whether a class's name that another server holds is left to it, which fails the registration, or taken until the
/// library is unregistered.
enum class ForeignNames { leave, replace };

/// Writes the library's classes, interfaces and type library into the registry. A class that another file has
/// registered before, as an older version, is this file's afterwards. Throws `RegistrationError` when a name belongs to
/// another server or a key cannot be written; the registry is then what it was.
void Register(const Registrant& registrant, Scope scope, ForeignNames foreign);

/// Takes away what names this library's file and version: what another file has registered since stays, as do the names
/// that another file or the library of the other size still needs. A name that was replaced is its former server's
/// again. What is not there is no error. Throws `RegistrationError` when a key cannot be removed; the others are.
void Unregister(const Registrant& registrant, Scope scope);

} // namespace server
