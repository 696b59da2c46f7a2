#include "import/checks/RowChecks.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace importing {

void CheckedRow::Refuse(std::string_view element, Message message, std::vector<std::string> arguments) {
    if (WasRead(element)) {
        row_.row.refusals.push_back({outcome_.columns.Find(element), {message, std::move(arguments)}, {}});
    }
}

void CheckedRow::Refuse(Message message, std::vector<std::string> arguments) {
    row_.row.refusals.push_back({std::nullopt, {message, std::move(arguments)}, {}});
}

bool CheckedRow::WasRead(std::string_view element) const {
    const std::optional<std::size_t> column = outcome_.columns.Find(element);
    return !column || !(*this)[element].empty() ||
           std::ranges::none_of(row_.row.refusals, [&](const Finding& finding) { return finding.column == column; });
}

} // namespace importing
