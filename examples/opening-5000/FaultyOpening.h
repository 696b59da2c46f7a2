#pragma once

#include "import/rows/Sheet.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// Opening balances of 5,000 items as people type them: every kind of fault that the import corrects or refuses, at
/// random places that are always the same, with what was meant at each.
namespace opening {

inline constexpr std::size_t rowCount = 5000;

/// The columns, in order.
enum Column { warehouse, item, quantity, cost, amount, date, memo, columnCount };

/// What is wrong with a row so that it must be refused: in one cell, or in the row as a whole.
struct Fault {
    std::optional<std::size_t> column;
    importing::Note note;
};

struct Row {
    /// In the file.
    std::size_t line = 0;
    /// What was meant, as the request should have it.
    std::array<std::string, columnCount> meant;
    /// What is typed; the kinds of cells are those of the file.
    std::array<importing::Cell, columnCount> typed;
    std::optional<Fault> fault;
    /// The cell that is typed in a way that is corrected; at most one.
    std::optional<importing::Correction> correction;
    /// The amount is not quantity times unit cost, and is meant so.
    bool warned = false;
};

/// The rows, the same in every run.
std::vector<Row> Rows();

/// The codes that the rows mean.
importing::CodeLists Codes();

/// T-SQL batches, each with its GO, that give an empty account everything that the rows mean: start date, calendar,
/// ledger accounts, warehouses, items.
std::string AccountSql();

/// Writes rows as they are typed, under headings and with a line of totals. Throws std::runtime_error.
void WriteWorkbook(const std::string& path, const std::vector<Row>& rows);

/// Corrects the faults in a file of refused rows that was made of `rows`, and writes them to `corrected`: what was
/// meant in each cell that is at fault, everything else as it stands. Throws std::runtime_error.
void CorrectRefused(const std::string& refused, const std::vector<Row>& rows, const std::string& corrected);

} // namespace opening
