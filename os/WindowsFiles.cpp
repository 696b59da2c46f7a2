#include "os/Files.h"
#include "text/Utf16.h"

namespace os {

std::FILE* OpenFile(const std::string& name, const char* mode) {
    return _wfopen(text::ToUtf16<wchar_t>(name).c_str(), text::ToUtf16<wchar_t>(mode).c_str());
}

} // namespace os

extern "C" std::FILE* kovra_fopen(const char* name, const char* mode);

/// What os/Utf8Fopen.h puts in the place of `fopen`.
std::FILE* kovra_fopen(const char* name, const char* mode) { return os::OpenFile(name, mode); }
