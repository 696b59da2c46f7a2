#pragma once

#include <string>
#include <string_view>

namespace ModPub {

/// `text` without its leading and trailing blanks (U+0020 only; tabs and full-width blanks stay).
std::string_view Trim(std::string_view text) noexcept;

/// `text` (UTF-8) with each letter replaced by its upper or lower case, one for one: Latin with its supplement and
/// Extended-A, Greek, Cyrillic and full-width Latin. Everything else, invalid bytes included, stands as it is.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

} // namespace ModPub
