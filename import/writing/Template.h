#pragma once

#include "import/fields/Field.h"
#include "import/messages/Language.h"
#include "import/rows/Sheet.h"

#include <string>

namespace importing {

/// Writes a workbook to fill in for a class: a sheet with a heading for each column, the required ones marked with "*",
/// a note on each that says what it takes, columns formatted for what they hold and cells that take nothing else; and
/// where `codes` has lists, a second sheet with them, which the code columns offer.
/// @param path the file (UTF-8); it is overwritten
/// Throws std::runtime_error.
void WriteTemplate(const std::string& path, const ClassFields& classFields, const CodeLists& codes, Language language);

} // namespace importing
