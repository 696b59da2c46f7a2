#pragma once

#include "import/reading/Cell.h"

#include <cstddef>
#include <vector>

namespace importing {

/// A block of cells that its spreadsheet shows as one.
struct MergedCells {
    std::size_t firstColumn = 0;
    std::size_t firstLine = 0;
    std::size_t lastColumn = 0;
    std::size_t lastLine = 0;
};

/// The lines of one table, read one after another.
class Table {
public:
    Table() = default;
    virtual ~Table() = default;
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    /// Reads the next line into `line`, whose storage is used again; false at the end. Lines that the file leaves out
    /// are left out here too. Throws UnreadableFile.
    virtual bool Next(Line& line) = 0;

    /// Begins again at the first line. Throws UnreadableFile.
    virtual void Rewind() = 0;

    /// The merged blocks; complete once `Next` has returned false.
    virtual const std::vector<MergedCells>& Merged() const = 0;
};

} // namespace importing
