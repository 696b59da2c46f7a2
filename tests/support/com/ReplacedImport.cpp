#include "tests/support/com/ReplacedImport.h"

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>

namespace test {

namespace {

/// Where the library's table of imports holds the address of `name`.
void** FindEntry(const wchar_t* library, const char* name) {
    auto* const base = reinterpret_cast<std::byte*>(GetModuleHandleW(library));
    if (!base)
        throw std::runtime_error("the library is not loaded");
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* imported = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; imported->Name != 0; ++imported) {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + imported->OriginalFirstThunk);
        auto* addresses = reinterpret_cast<IMAGE_THUNK_DATA*>(base + imported->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal))
                continue;
            const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(entry->Name), name) == 0)
                return reinterpret_cast<void**>(&addresses->u1.Function);
        }
    }
    throw std::runtime_error(std::string(name) + " is not imported");
}

void SetEntry(void** entry, void* function) {
    DWORD protection = 0;
    if (!VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection))
        throw std::runtime_error("the table of imports cannot be written");
    *entry = function;
    VirtualProtect(entry, sizeof *entry, protection, &protection);
}

} // namespace

ReplacedImport::ReplacedImport(const wchar_t* library, const char* name, void* replacement)
    : entry_(FindEntry(library, name)), original_(*entry_) {
    SetEntry(entry_, replacement);
}

ReplacedImport::~ReplacedImport() { SetEntry(entry_, original_); }

} // namespace test
