#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// A table for people: headings, a rule, one line a row, columns as wide as what they hold on a terminal. Texts are
/// UTF-8; control characters inside them show as escapes.
class Table {
public:
    enum class Alignment { left, right };
    struct Column {
        Column(std::string_view text, Alignment side = Alignment::left) : heading(text), alignment(side) {}

        std::string heading;
        Alignment alignment;
    };

    /// @param columns at least one
    explicit Table(std::vector<Column> columns);

    /// Adds a row; it has one cell a column. Throws std::invalid_argument otherwise.
    void AddRow(std::vector<std::string> cells);

    std::size_t RowCount() const noexcept { return rows_.size(); }

    /// The table, each line with its line feed and without blanks at its end.
    /// @param width columns of the terminal, or 0 for as wide as it comes. A table that is wider has its widest columns
    ///        narrowed, to no less than 8, and their texts go on in the next line.
    std::string Text(std::size_t width = 0) const;

private:
    std::vector<std::size_t> Widths(std::size_t width) const;
    void AppendRow(std::string& text, const std::vector<std::string>& cells,
                   const std::vector<std::size_t>& widths) const;

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace cli
