#include "import/reading/Cell.h"

#include <algorithm>

namespace importing {

bool Line::Empty() const noexcept {
    return std::ranges::all_of(cells, [](const Cell& cell) {
        return cell.kind == Cell::Kind::empty ||
               (cell.kind == Cell::Kind::text && cell.text.find_first_not_of(" \t\r\n") == std::string::npos);
    });
}

std::string ColumnName(std::size_t column) {
    constexpr std::size_t letters = 26;
    std::string name;
    for (std::size_t rest = column + 1; rest != 0; rest = (rest - 1) / letters) {
        name.insert(name.begin(), static_cast<char>('A' + (rest - 1) % letters));
    }
    return name;
}

std::string CellName(std::size_t column, std::size_t line) { return ColumnName(column) + std::to_string(line); }

} // namespace importing
