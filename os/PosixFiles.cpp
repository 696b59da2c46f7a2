#include "os/FileError.h"
#include "os/Files.h"

#include <cerrno>

namespace os {

std::FILE* OpenFile(const std::string& name, const char* mode) { return std::fopen(name.c_str(), mode); }

std::error_code LastFileError() noexcept { return {errno, std::generic_category()}; }

std::error_code Rename(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : LastFileError();
}

} // namespace os
