#pragma once

#include "cli/Console.h"
#include "import/rows/Sheet.h"
#include "text/Json.h"

#include <cstddef>

namespace cli {

/// Tells cell by cell what was corrected, what is refused and what is worth a look. On a terminal each list ends after
/// some lines and tells how many there are more.
void TellFindings(const importing::Sheet& sheet, Console& console);

/// Tells why nothing of a table may be imported.
void TellFaults(const importing::Sheet& sheet, Console& console);

/// Writes what `TellFindings` and `TellFaults` tell as members of the object that is open, whole.
void WriteFindings(text::JsonWriter& json, const importing::Sheet& sheet, Language language);

/// How many of a table's rows are taken.
std::size_t CountTaken(const importing::Sheet& sheet);

} // namespace cli
