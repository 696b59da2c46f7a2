#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ModPub {

/// `text` without its leading and trailing blanks (U+0020 only; tabs and full-width blanks stay).
std::string_view Trim(std::string_view text) noexcept;

/// `text` (UTF-8) with each letter replaced by its upper or lower case, one for one: Latin with its supplement and
/// Extended-A, Greek, Cyrillic and full-width Latin. Everything else, invalid bytes included, stands as it is.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

/// Length of `text` (UTF-8) in UTF-16 units, the characters of the run-time; an invalid byte counts as one.
std::size_t Utf16Length(std::string_view text) noexcept;

} // namespace ModPub
