#pragma once

#include "server/com/Platform.h"

namespace test {

/// Whether this is Wine and not Windows itself.
inline bool OnWine() noexcept { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

} // namespace test
