#include "refhost/odbc/Utf16.h"

#include "ModPub/Utf16.h"

namespace refhost::odbc {

std::string ToUtf8(Utf16View text) { return ModPub::FromUtf16(text); }
Utf16Text ToUtf16(std::string_view text) { return ModPub::ToUtf16<SQLWCHAR>(text); }

} // namespace refhost::odbc
