#pragma once

#include "import/reading/PartReader.h"
#include "import/reading/SerialDate.h"
#include "import/reading/Table.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace importing {

/// The rows of a worksheet (ECMA-376 part 1, 18.3.1).
class SheetTable : public Table {
public:
    /// What the sheets of a workbook share.
    struct Shared {
        const std::vector<std::string>& strings;
        const std::vector<bool>& dateStyles;
        DateSystem dateSystem;
    };

    /// Throws UnreadableFile when the part is not there.
    SheetTable(Archive& archive, const std::string& part, Shared shared);

    /// Throws UnreadableFile.
    bool Next(Line& line) override;
    void Rewind() override;
    const std::vector<MergedCells>& Merged() const override { return merged_; }

private:
    struct Position {
        std::size_t column = 0;
        std::size_t line = 0;
    };

    /// Reads "C17".
    static std::optional<Position> ReadPosition(std::string_view name);
    void ReadRow(Line& line);
    /// Reads the cell that has just begun. `next` is the column of one that names none, `count` how many the line has.
    void ReadCell(Line& line, std::size_t next, std::size_t& count);
    void Interpret(Cell& cell, std::string_view type, std::size_t style) const;
    void InterpretNumber(Cell& cell, std::size_t style) const;
    void ReadMerge(std::string_view block);
    [[noreturn]] void Broken() const;

    Archive& archive_;
    std::string part_;
    /// Always there; made anew to begin again.
    std::optional<PartReader> reader_;
    Shared shared_;
    std::vector<MergedCells> merged_;
    std::size_t line_ = 0;
    std::uint64_t mostCells_;
    std::uint64_t cells_ = 0;
    std::string type_;
};

} // namespace importing
