#include "os/Variable.h"

#include <cstdlib>

namespace os {

std::optional<std::string> Variable(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

} // namespace os
