#pragma once

#include <string_view>

namespace refhost::xml {

/// Whether `bytes` are well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF.
bool IsUtf8(std::string_view bytes) noexcept;

} // namespace refhost::xml
