#include "os/FileError.h"
#include "os/Files.h"
#include "os/WindowsApi.h"
#include "text/Utf16.h"

namespace os {
namespace {

/// Whether another program has the file open and lets nobody replace it.
bool IsHeld(const std::wstring& file) noexcept {
    const HANDLE opened = CreateFileW(file.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        return GetLastError() == ERROR_SHARING_VIOLATION;
    }
    CloseHandle(opened);
    return false;
}

} // namespace

std::FILE* OpenFile(const std::string& name, const char* mode) {
    return _wfopen(text::ToUtf16<wchar_t>(name).c_str(), text::ToUtf16<wchar_t>(mode).c_str());
}

std::error_code LastFileError() noexcept {
    const DWORD error = GetLastError();
    switch (error) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
        return std::make_error_code(std::errc::device_or_resource_busy);
    default:
        break;
    }
    // Windows tells its own errors in the code page of the system.
    const std::error_code own(static_cast<int>(error), std::system_category());
    const std::error_condition known = own.default_error_condition();
    return known.category() == std::generic_category() ? std::error_code(known.value(), known.category()) : own;
}

std::error_code Rename(const std::string& from, const std::string& to) {
    const std::wstring file = text::ToUtf16<wchar_t>(to);
    if (MoveFileExW(text::ToUtf16<wchar_t>(from).c_str(), file.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return {};
    }
    const std::error_code reason = LastFileError();
    // Windows denies access to what another program holds.
    return IsHeld(file) ? std::make_error_code(std::errc::device_or_resource_busy) : reason;
}

} // namespace os

extern "C" std::FILE* kovra_fopen(const char* name, const char* mode);

/// What os/Utf8Fopen.h puts in the place of `fopen`.
std::FILE* kovra_fopen(const char* name, const char* mode) { return os::OpenFile(name, mode); }
