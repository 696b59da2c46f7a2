#pragma once

#include "cli/messages/Messages.h"
#include "refhost/ado/Database.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// How the rows of a result are written.
enum class RowFormat {
    table, ///< headings, rows and their count, for people
    json,  ///< one JSON object a row and line
    csv,   ///< a line of names and one a row, as RFC 4180 has them; Null and the empty text are both empty
};

/// "table", "json" or "csv"; nothing for any other text.
std::optional<RowFormat> RowFormatNamed(std::string_view name) noexcept;

/// The text of one result set, line feeds included.
/// @param width columns of the terminal, 0 for as wide as it comes; of a table only
std::string ResultText(const refhost::ResultSet& result, RowFormat format, std::size_t width, const Messages& messages);

} // namespace cli
