// Any bytes as a spreadsheet: an archive as a workbook, XML as the sheet of one, anything else as a CSV file.
#include "import/rows/Spreadsheet.h"

#include "fuzz/Require.h"
#include "import/reading/UnreadableFile.h"
#include "import/request/BuildRequest.h"
#include "tests/import/PackageFile.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace {

using fuzz::Require;

/// Whether a request has a quote that is not doubled.
bool HasBareQuote(std::string_view request) {
    std::size_t quotes = 0;
    for (const char c : request) {
        if (c == '\'') {
            ++quotes;
        } else if (quotes % 2 != 0) {
            return true;
        } else {
            quotes = 0;
        }
    }
    return quotes % 2 != 0;
}

void CheckPlaces(const importing::Sheet& sheet) {
    const std::size_t columns = sheet.columns.fields.size();
    for (const importing::Row& row : sheet.rows) {
        Require(row.line > sheet.headerLine, "a row stands above its headings");
        Require(row.values.size() == columns, "a row has not a value for each column");
        for (const importing::Correction& correction : row.corrections) {
            Require(correction.column < columns && correction.now == row.values[correction.column],
                    "a correction is not what is taken");
        }
        for (const importing::Finding& finding : row.refusals) {
            Require(!Words(finding.note, importing::Language::chinese).empty() &&
                        !Words(finding.note, importing::Language::english).empty(),
                    "a refusal says nothing");
        }
    }
}

/// Puts the input where it is read from, in one file that every run overwrites.
std::string Write(std::string_view input) {
    static const test::TestFolder folder;
    static const std::string path = folder.File("input");
    if (input.starts_with('<')) {
        test::PackageFile::OfSheet(std::string(input), "<si><t>01</t></si><si><t>1001</t></si>",
                                   "<cellXfs><xf numFmtId='0'/><xf numFmtId='14'/></cellXfs>")
            .Write(path);
    } else {
        std::ofstream(path, std::ios::binary) << input;
    }
    return path;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = Write({reinterpret_cast<const char*>(data), size});
    try {
        importing::Spreadsheet spreadsheet(path, {}, {.hidden = importing::SheetOptions::Hidden::include}, nullptr);
        const importing::Sheet sheet = spreadsheet.Read({});
        CheckPlaces(sheet);
        if (sheet.faults.empty()) {
            Require(!HasBareQuote(BuildRequest(sheet, "fuzz", "ADD")), "a request has a bare quote");
        }
    } catch (const importing::UnreadableFile& error) {
        Require(*error.what() != '\0', "a refused file says nothing");
    }
    return 0;
}
