#include "cli/Table.h"

#include "cli/DisplayWidth.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace cli {
namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t narrowest = 8;

void AppendCell(std::string& text, std::string_view cell, std::size_t width, Table::Alignment alignment) {
    const std::size_t taken = DisplayWidth(cell);
    const std::size_t fill = width > taken ? width - taken : 0;
    if (alignment == Table::Alignment::right) {
        text.append(fill, ' ').append(cell);
    } else {
        text.append(cell).append(fill, ' ');
    }
}

void EndLine(std::string& text) {
    text.erase(text.find_last_not_of(' ') + 1);
    text.push_back('\n');
}

} // namespace

Table::Table(std::vector<Column> columns) : columns_(std::move(columns)) {
    for (Column& column : columns_) {
        column.heading = Printable(column.heading);
    }
}

void Table::AddRow(std::vector<std::string> cells) {
    if (cells.size() != columns_.size()) {
        throw std::invalid_argument("a row of this table has " + std::to_string(columns_.size()) + " cells");
    }
    for (std::string& cell : cells) {
        cell = Printable(cell);
    }
    rows_.push_back(std::move(cells));
}

std::vector<std::size_t> Table::Widths(std::size_t width) const {
    std::vector<std::size_t> widths;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        std::size_t widest = DisplayWidth(columns_[column].heading);
        for (const std::vector<std::string>& row : rows_) {
            widest = std::max(widest, DisplayWidth(row[column]));
        }
        widths.push_back(widest);
    }
    if (width == 0) {
        return widths;
    }
    std::size_t total = std::accumulate(widths.begin(), widths.end(), gap * (widths.size() - 1));
    while (total > width) {
        // The widest gives way, down to the second widest, so that short columns stay whole.
        const auto widest = std::ranges::max_element(widths);
        std::size_t next = narrowest;
        for (auto other = widths.begin(); other != widths.end(); ++other) {
            next = other == widest ? next : std::max(next, *other);
        }
        const std::size_t floor = std::max(narrowest, next == *widest ? next - 1 : next);
        const std::size_t narrowed = std::max(floor, *widest > total - width ? *widest - (total - width) : 0);
        if (narrowed >= *widest) {
            break;
        }
        total -= *widest - narrowed;
        *widest = narrowed;
    }
    return widths;
}

void Table::AppendRow(std::string& text, const std::vector<std::string>& cells,
                      const std::vector<std::size_t>& widths) const {
    std::vector<std::string_view> rest(cells.begin(), cells.end());
    do {
        for (std::size_t column = 0; column < rest.size(); ++column) {
            text.append(column == 0 ? 0 : gap, ' ');
            AppendCell(text, TakeLine(rest[column], widths[column]), widths[column], columns_[column].alignment);
        }
        EndLine(text);
    } while (std::ranges::any_of(rest, [](std::string_view cell) { return !cell.empty(); }));
}

std::string Table::Text(std::size_t width) const {
    const std::vector<std::size_t> widths = Widths(width);
    std::vector<std::string> headings;
    std::vector<std::string> rule;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        headings.push_back(columns_[column].heading);
        rule.emplace_back(widths[column], '-');
    }
    std::string text;
    AppendRow(text, headings, widths);
    AppendRow(text, rule, widths);
    for (const std::vector<std::string>& row : rows_) {
        AppendRow(text, row, widths);
    }
    return text;
}

} // namespace cli
