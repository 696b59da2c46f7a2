#pragma once

#include "import/cells/KnownCodes.h"
#include "import/fields/Field.h"
#include "import/fields/Headings.h"
#include "import/messages/Note.h"
#include "import/reading/Table.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace importing {

/// What the user chose for the reading of a table.
struct SheetOptions {
    /// The line of the headings, counted from 1; 0 to look for it.
    std::size_t headerLine = 0;
    HeadingMap headings = {};
    /// Codes that lost their leading zeros are mended.
    bool fixCodes = false;
    /// Rows with the same key are taken.
    bool allowDuplicates = false;
    enum class Hidden { refuse, include, skip };
    Hidden hidden = Hidden::refuse;
};

/// The account's valid codes by list; a list that is missing is not checked.
using CodeLists = std::map<CodeList, KnownCodes>;

/// Something about one cell of a row, or about the row as a whole.
struct Finding {
    /// The column's position; nothing for the row as a whole.
    std::optional<std::size_t> column;
    Note note;
    /// What was probably meant; may be empty.
    std::string proposal;
};

/// A cell whose value is not what stands in it.
struct Correction {
    std::size_t column = 0;
    std::string old;
    std::string now;
};

/// One row of the table, ready for the request or refused.
struct Row {
    /// Its line in the file.
    std::size_t line = 0;
    /// Its cells as they stand.
    std::vector<Cell> cells;
    /// The values by column; of a refused row those that could be read.
    std::vector<std::string> values;
    std::vector<Correction> corrections;
    /// Why it is refused; empty for a row that is taken.
    std::vector<Finding> refusals;
    /// What is worth a look but no reason to refuse.
    std::vector<Finding> warnings;
};

/// A whole table, every fault of it found.
struct Sheet {
    const ClassFields* classFields = nullptr;
    Columns columns;
    std::size_t headerLine = 0;
    std::vector<Row> rows;
    /// Hidden rows that were left out or taken.
    std::size_t hiddenRows = 0;
    /// Why nothing of it may be imported: faults of the headings, hidden rows, a total that does not add up.
    std::vector<Note> faults;
};

/// Reads a table for a class: finds the headings, reads every cell by its column's type, and checks what needs no
/// class: required values, codes against `codes`, rows that repeat, merged cells. A line of totals (合计, 总计, Total)
/// is left out; its sums are held against the rows'. Throws UnreadableFile.
Sheet ReadSheet(Table& table, const ClassFields& classFields, const CodeLists& codes, const SheetOptions& options);

} // namespace importing
