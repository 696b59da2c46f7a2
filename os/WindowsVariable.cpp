#include "os/Variable.h"
#include "os/WindowsApi.h"
#include "text/Utf16.h"

namespace os {

std::optional<std::string> Variable(const std::string& name) {
    const std::wstring wide = text::ToUtf16<wchar_t>(name);
    std::wstring value;
    // The length of an empty value is told apart from a failure by the error alone, which a success leaves as it was.
    SetLastError(ERROR_SUCCESS);
    DWORD length = GetEnvironmentVariableW(wide.c_str(), nullptr, 0);
    // Another thread may set it in between.
    while (length > value.size()) {
        value.resize(length);
        length = GetEnvironmentVariableW(wide.c_str(), value.data(), length);
    }
    if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) {
        return std::nullopt;
    }
    value.resize(length);
    return text::FromUtf16<wchar_t>(value);
}

} // namespace os
