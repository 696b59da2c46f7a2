#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace os {

/// What came of reading an encoding.
struct Decoded {
    /// In UTF-8.
    std::string text;
    /// How many bytes were read: fewer than there are where the next ones are not in the encoding.
    std::size_t read = 0;
};

/// Reads `bytes` in the encoding `name` ("UTF-8", "GB18030", "UTF-16LE", "CP936", "ISO-8859-1" …, in any letter case).
/// Nothing when the system does not know the encoding.
std::optional<Decoded> Decode(std::string_view bytes, const std::string& name);

} // namespace os
