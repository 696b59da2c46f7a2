#include "import/file/ReadFileFacts.h"

#include "import/file/ReadBytes.h"
#include "import/file/Sha256.h"

namespace importing {

FileFacts ReadFileFacts(const std::string& path) {
    const std::string bytes = ReadBytes(path);
    return {.path = path, .size = bytes.size(), .hash = Sha256Of(bytes)};
}

} // namespace importing
