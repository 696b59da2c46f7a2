#include "os/Files.h"

namespace os {

std::FILE* OpenFile(const std::string& name, const char* mode) { return std::fopen(name.c_str(), mode); }

} // namespace os
