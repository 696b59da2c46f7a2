#include "import/writing/Files.h"

#include "import/file/ReadBytes.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

namespace importing {

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
    for (int number = 2; std::filesystem::exists(std::filesystem::u8path(free)) && ReadBytes(free) != bytes; ++number) {
        free = fmt::format("{}-{}{}", name, number, ending);
    }
    std::error_code error;
    std::filesystem::rename(std::filesystem::u8path(part), std::filesystem::u8path(free), error);
    if (error) {
        throw std::runtime_error(free + ": " + error.message());
    }
    return free;
}

void WriteFile(const std::string& path, std::string_view bytes) {
    std::ofstream file(std::filesystem::u8path(path), std::ios::binary);
    file << bytes << std::flush;
    if (!file) {
        throw std::runtime_error(path + ": " + std::strerror(errno));
    }
}

} // namespace importing
