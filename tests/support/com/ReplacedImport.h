#pragma once

#include "server/com/Platform.h"

namespace test {

/// A function of the system, as one library of this process calls it, is another as long as the object lives.
class ReplacedImport {
public:
    /// @param library its name; null for the program itself
    /// Throws std::runtime_error when the library does not import the function.
    template <class Function>
    ReplacedImport(const wchar_t* library, const char* name, Function* replacement)
        : ReplacedImport(library, name, reinterpret_cast<void*>(replacement)) {}
    ReplacedImport(const wchar_t* library, const char* name, void* replacement);
    ~ReplacedImport();
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;

private:
    void** entry_;
    void* original_;
};

} // namespace test
