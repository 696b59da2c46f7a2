#pragma once

#include "text/Utf16.h"

#include <string>
#include <string_view>

namespace server {

/// UTF-8 to UTF-16. A surrogate in its three-byte form becomes that surrogate, so that every UTF-16 text comes back as
/// it was; a byte that begins no character becomes U+FFFD.
inline std::wstring ToUtf16(std::string_view text) { return text::ToUtf16<wchar_t>(text); }

/// UTF-16 to UTF-8. A lone surrogate takes its three-byte form.
inline std::string ToUtf8(std::wstring_view text) { return text::FromUtf16(text); }

} // namespace server
