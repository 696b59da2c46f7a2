#pragma once

#include <string>
#include <string_view>

#include <sql.h>
#include <sqltypes.h>

namespace refhost::odbc {

using Utf16View = std::basic_string_view<SQLWCHAR>;
using Utf16Text = std::basic_string<SQLWCHAR>;

/// The text in UTF-8; a lone surrogate takes its three-byte form.
std::string ToUtf8(Utf16View text);

/// The text in UTF-16; a byte that begins no character becomes U+FFFD.
Utf16Text ToUtf16(std::string_view text);

} // namespace refhost::odbc
