#include "import/writing/Files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace importing {

std::string PathBeside(const std::string& input, std::string_view what, std::string_view ending) {
    const std::size_t slash = input.find_last_of("/\\");
    const std::size_t name = slash == std::string::npos ? 0 : slash + 1;
    const std::size_t dot = input.rfind('.');
    const bool hasEnding = dot != std::string::npos && dot > name;
    return input.substr(0, hasEnding ? dot : input.size()).append(".").append(what).append(ending);
}

void WriteFile(const std::string& path, std::string_view bytes) {
    std::ofstream file(std::filesystem::u8path(path), std::ios::binary);
    file << bytes << std::flush;
    if (!file) {
        throw std::runtime_error(path + ": " + std::strerror(errno));
    }
}

} // namespace importing
