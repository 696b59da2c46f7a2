#pragma once

#include "import/messages/Language.h"
#include "import/outcome/Outcome.h"

#include <string>

namespace importing {

/// Where the refused rows of the file `input` go: "期初.拒绝.xlsx" beside "期初.xlsx", with the ending of a CSV file
/// where it is none of a workbook. Paths are in UTF-8.
std::string RefusedRowsPath(const std::string& input, Language language);

/// Writes the rows that are refused, as a workbook where `path` ends with ".xlsx", else as a CSV file in UTF-8 with a
/// byte order mark: two columns with the reasons and the line in the file, then the file's own columns, their cells as
/// they stood. Texts that a spreadsheet could take for formulas are defused. The file can be corrected and imported:
/// the reading leaves out the two columns and takes the texts as they were.
/// @param path the file (UTF-8); it is overwritten
/// Throws std::runtime_error when it cannot be written.
void WriteRefusedRows(const Outcome& outcome, Language language, const std::string& path);

} // namespace importing
