#include "import/outcome/Outcome.h"

#include <algorithm>

namespace importing {

std::size_t CountOf(const Outcome& outcome, RowState state) {
    return static_cast<std::size_t>(std::ranges::count(outcome.rows, state, &RowOutcome::state));
}

const std::string& ValueOf(const Outcome& outcome, const Row& row, std::string_view element) {
    static const std::string none;
    const std::optional<std::size_t> column = outcome.columns.Find(element);
    return column && *column < row.values.size() ? row.values[*column] : none;
}

} // namespace importing
