#pragma once

#include "import/outcome/Outcome.h"

#include <string>

namespace importing {

/// Size and hash of the file `path` (UTF-8). Throws UnreadableFile.
FileFacts ReadFileFacts(const std::string& path);

} // namespace importing
