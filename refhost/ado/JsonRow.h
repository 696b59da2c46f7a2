#pragma once

#include "refhost/ado/Database.h"

#include <cstddef>
#include <string>

namespace refhost {

/// Appends one row as a JSON object, members in column order: Null is `null`, bits are `true` and `false`, numbers are
/// bare and exact, dates are "YYYY-MM-DD" with " hh:mm:ss" where they have a time of day, bytes are "0x…" in hex.
void AppendJsonRow(std::string& json, const ResultSet& result, std::size_t row);

/// A value as people read it: Null is empty, bits are 1 and 0, everything else as in a JSON row, without quotes.
std::string PlainText(const host::Value& value);

} // namespace refhost
