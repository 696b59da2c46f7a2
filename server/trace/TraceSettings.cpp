#include "server/trace/TraceSettings.h"

#include "server/com/Platform.h"

#include <cstdlib>

namespace server {
namespace {

constexpr const wchar_t* key = L"Software\\Kovra";
/// RRF_SUBKEY_WOW6464KEY: processes of both sizes read the same place. It is younger than some compilers' headers.
constexpr DWORD view64 = 0x00010000;

/// The longest text that a place may have for a file, in characters.
constexpr DWORD longest = 4096;

std::wstring Variable(const wchar_t* name) {
    std::wstring value(longest, L'\0');
    const DWORD length = GetEnvironmentVariableW(name, value.data(), longest);
    value.resize(length < longest ? length : 0);
    return value;
}

std::wstring Text(HKEY root, const wchar_t* name) {
    std::wstring value(longest, L'\0');
    DWORD size = longest * sizeof(wchar_t);
    const LSTATUS status = RegGetValueW(root, key, name, RRF_RT_REG_SZ | view64, nullptr, value.data(), &size);
    return status == ERROR_SUCCESS ? std::wstring(value.c_str()) : std::wstring();
}

DWORD Number(HKEY root, const wchar_t* name) {
    DWORD value = 0;
    DWORD size = sizeof value;
    const LSTATUS status = RegGetValueW(root, key, name, RRF_RT_REG_DWORD | view64, nullptr, &value, &size);
    return status == ERROR_SUCCESS ? value : 0;
}

TraceSettings Settings(std::wstring file, bool times, unsigned long limit) {
    TraceSettings settings{.file = std::move(file), .times = times};
    if (limit != 0) {
        settings.limit = limit;
    }
    return settings;
}

} // namespace

std::optional<TraceSettings> ReadTraceSettings() {
    if (std::wstring file = Variable(L"KOVRA_TRACE"); !file.empty()) {
        return Settings(std::move(file), !Variable(L"KOVRA_TRACE_TIMES").empty(),
                        std::wcstoul(Variable(L"KOVRA_TRACE_LIMIT").c_str(), nullptr, 10));
    }
    for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        if (std::wstring file = Text(root, L"Trace"); !file.empty()) {
            return Settings(std::move(file), Number(root, L"TraceTimes") != 0, Number(root, L"TraceLimit"));
        }
    }
    return std::nullopt;
}

} // namespace server
