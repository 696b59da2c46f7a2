#pragma once

#include <optional>
#include <string>

namespace os {

/// The value of an environment variable; nothing when it is not set.
std::optional<std::string> Variable(const std::string& name);

} // namespace os
