#pragma once

#include "os/Encoding.h"

#include <optional>
#include <string>
#include <string_view>

namespace importing {

/// `bytes` of the encoding `name` ("UTF-8", "GB18030", "UTF-16LE" …) in UTF-8; nothing when they are not in it. Throws
/// UnreadableFile when the encoding is unknown.
std::optional<std::string> Decode(std::string_view bytes, const std::string& name);

using os::InCodePage936;

} // namespace importing
