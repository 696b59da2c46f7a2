#include "import/writing/Files.h"

#include "import/file/ReadBytes.h"
#include "import/reading/UnreadableFile.h"
#include "os/FileError.h"
#include "os/Files.h"
#include "os/Replacement.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include <fmt/format.h>

namespace importing {
namespace {

/// Whether a file holds these bytes. One that another program lets nobody read is taken to hold others.
bool Holds(const std::string& path, std::string_view bytes) {
    try {
        return ReadBytes(path) == bytes;
    } catch (const UnreadableFile&) {
        return false;
    }
}

} // namespace

std::string PathBeside(const std::string& input, std::string_view what, std::string_view ending) {
    const std::size_t slash = input.find_last_of("/\\");
    const std::size_t name = slash == std::string::npos ? 0 : slash + 1;
    const std::size_t dot = input.rfind('.');
    const bool hasEnding = dot != std::string::npos && dot > name;
    return input.substr(0, hasEnding ? dot : input.size()).append(".").append(what).append(ending);
}

std::string WriteKeepingOthers(const std::string& path, const std::function<void(const std::string& path)>& write) {
    const std::size_t dot = path.rfind('.');
    const std::string name = path.substr(0, dot);
    const std::string ending = path.substr(dot);
    const std::string part = name + ".part" + ending;
    write(part);
    const std::string bytes = ReadBytes(part);
    std::string free = path;
    int number = 1;
    while (std::filesystem::exists(os::PathOf(free))) {
        if (Holds(free, bytes)) {
            std::error_code unimportant;
            std::filesystem::remove(os::PathOf(part), unimportant);
            return free;
        }
        free = fmt::format("{}-{}{}", name, ++number, ending);
    }
    if (const std::error_code reason = os::Rename(part, free)) {
        throw os::FileFault(free, reason);
    }
    return free;
}

void WriteFile(const std::string& path, std::string_view bytes) {
    os::Replacement replacement(path);
    std::ofstream file(os::PathOf(replacement.path()), std::ios::binary);
    file << bytes << std::flush;
    if (!file) {
        throw os::FileFault(path, os::LastFileError());
    }
    file.close();
    replacement.Keep();
}

} // namespace importing
