#pragma once

#include "refhost/odbc/Odbc.h"
#include "text/Utf16.h"

#include <string>
#include <string_view>

namespace refhost::odbc {

using Utf16View = std::basic_string_view<SQLWCHAR>;
using Utf16Text = std::basic_string<SQLWCHAR>;

/// The text in UTF-8; a lone surrogate takes its three-byte form.
inline std::string ToUtf8(Utf16View text) { return text::FromUtf16(text); }

/// The text in UTF-16; a byte that begins no character becomes U+FFFD.
inline Utf16Text ToUtf16(std::string_view text) { return text::ToUtf16<SQLWCHAR>(text); }

} // namespace refhost::odbc
