#pragma once

#include "cli/messages/Messages.h"
#include "import/rows/Spreadsheet.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

/// A spreadsheet and how it is read, as the command line says it.
struct SheetArguments {
    std::string file;
    /// Empty to find it out by the headings.
    std::string className;
    /// Empty to take the one that fits.
    std::string sheet;
    /// The line of the headings, counted from 1; 0 to look for it.
    std::size_t headerRow = 0;
    /// "heading=field" each; "heading=" leaves the column out.
    std::vector<std::string> map;
    /// Of a CSV file; empty to find it out.
    std::string encoding;
    /// "include", "skip", or empty to refuse a table with hidden rows.
    std::string hidden;
    bool fixCodes = false;
    bool allowDuplicates = false;
};

/// The fields of a class. Throws std::runtime_error in the language of `texts` when there is no class of that name.
const importing::ClassFields& FieldsOfClass(const std::string& name, const UsageTexts& texts);

/// Opens the spreadsheet. Throws importing::UnreadableFile, and std::runtime_error in the language of `texts` for an
/// unknown class or a map without "=".
importing::Spreadsheet OpenSpreadsheet(const SheetArguments& arguments, const UsageTexts& texts);

} // namespace cli
