#pragma once

#include <string>
#include <string_view>

namespace importing {

/// `text` so that no spreadsheet takes it for a formula when it opens a file of texts: with an apostrophe in front
/// where it begins with =, +, -, @, a tab or a carriage return, or with apostrophes before one of these.
std::string Defused(std::string_view text);

/// The text that `Defused` made `text` of; a text that it makes of none stays as it is.
std::string_view Undefused(std::string_view text) noexcept;

} // namespace importing
