#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace importing {

/// One cell as its file has it, before anything is made of it.
struct Cell {
    enum class Kind {
        empty,
        text,
        /// `text` holds its digits as a spreadsheet shows them without a format, at most 15 of them.
        number,
        /// A number that its format shows as a date; `text` is "YYYY-MM-DD", with " hh:mm:ss" where it has a time.
        date,
        /// A number with a date's format that is no day: the 29 February 1900 of the 1900 date system, or beyond 9999.
        noDate,
        /// `text` is "TRUE" or "FALSE".
        boolean,
        /// `text` is the error as the spreadsheet shows it, "#N/A" say.
        error,
        /// A formula that the spreadsheet has stored no value of; `text` is the formula.
        noValue,
    };

    Kind kind = Kind::empty;
    std::string text;
};

/// One line of a table: a record of a CSV file or a row of a sheet.
struct Line {
    /// Where it stands, counted from 1: the row of the sheet, or the line of the file that the record begins in.
    std::size_t number = 0;
    /// The cells from the first column on; missing ones are empty.
    std::vector<Cell> cells;
    /// Hidden by hand or by a filter.
    bool hidden = false;

    /// Whether no cell holds anything but blanks.
    bool Empty() const noexcept;
};

/// A column's letters as spreadsheets name it: 0 is "A", 26 is "AA".
std::string ColumnName(std::size_t column);

/// A cell's address, "C17".
std::string CellName(std::size_t column, std::size_t line);

} // namespace importing
