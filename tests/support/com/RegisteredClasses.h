#pragma once

#include "server/com/Platform.h"

#include <span>
#include <string>

namespace test {

/// A class as the registry shall name it.
struct RegisteredClass {
    const wchar_t* progId;
    const wchar_t* classId;
};

/// Fails the running test unless `root` has the keys of all classes, as a library of this program's folder writes them.
/// @param typeLibrary the identifier of the classes' type library, empty for none
void ExpectRegistered(HKEY root, std::span<const RegisteredClass> classes, const std::wstring& file,
                      const std::wstring& typeLibrary);

/// Fails the running test when `root` has a key of one of the classes.
void ExpectNotRegistered(HKEY root, std::span<const RegisteredClass> classes);

} // namespace test
