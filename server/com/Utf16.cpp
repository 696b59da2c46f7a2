#include "server/com/Utf16.h"

#include "ModPub/Utf16.h"

namespace server {

std::wstring ToUtf16(std::string_view text) { return ModPub::ToUtf16<wchar_t>(text); }
std::string ToUtf8(std::wstring_view text) { return ModPub::FromUtf16(text); }

} // namespace server
