#include "server/inproc/Module.h"

#include <atomic>

namespace server {

namespace {

std::atomic<long> references = 0;
HINSTANCE moduleHandle = nullptr;

} // namespace

ModuleReference::ModuleReference() noexcept { ++references; }
ModuleReference::~ModuleReference() { --references; }

void ModuleReference::Lock(bool lock) noexcept {
    if (lock)
        ++references;
    else
        --references;
}

bool ModuleReference::CanUnload() noexcept { return references == 0; }

HINSTANCE ModuleHandle() noexcept { return moduleHandle; }
void SetModuleHandle(HINSTANCE handle) noexcept { moduleHandle = handle; }

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(moduleHandle, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

} // namespace server
