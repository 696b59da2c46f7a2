#include "import/file/ReadBytes.h"

#include "import/reading/UnreadableFile.h"
#include "os/Files.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

namespace importing {

std::string ReadBytes(const std::string& path) {
    std::ifstream file(os::PathOf(path), std::ios::binary);
    if (!file) {
        throw UnreadableFile({Message::fileNotRead, {path, std::strerror(errno)}});
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace importing
