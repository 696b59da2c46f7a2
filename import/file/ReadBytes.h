#pragma once

#include <string>

namespace importing {

/// The whole of the file `path` (UTF-8). Throws UnreadableFile.
std::string ReadBytes(const std::string& path);

} // namespace importing
