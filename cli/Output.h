#pragma once

#include <cstddef>
#include <string_view>

namespace cli {

/// Writes `text` to standard output. Throws std::system_error when it does not take everything.
void WriteOutput(std::string_view text);

/// Writes a text (UTF-8) that people read to standard output, in the locale's encoding. Throws likewise.
void WriteForPeople(std::string_view text);

/// The columns of the terminal that standard output is; 0 when it is none.
std::size_t OutputWidth();

} // namespace cli
