#include "import/file/ReadBytes.h"

#include "import/reading/UnreadableFile.h"
#include "os/FileError.h"
#include "os/Files.h"

#include <fstream>
#include <iterator>

namespace importing {

std::string ReadBytes(const std::string& path) {
    std::ifstream file(os::PathOf(path), std::ios::binary);
    if (!file) {
        throw UnreadableFile(path, os::FileWords(os::LastFileError()));
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace importing
