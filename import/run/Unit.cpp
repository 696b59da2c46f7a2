#include "import/run/Unit.h"

#include <map>
#include <optional>
#include <string_view>

namespace importing {

std::vector<Unit> UnitsOf(Outcome& outcome) {
    std::vector<Unit> units;
    std::map<std::string_view, std::size_t> documents;
    const std::string_view element = outcome.classFields->document;
    const std::optional<std::size_t> number = element.empty() ? std::nullopt : outcome.columns.Find(element);
    for (RowOutcome& each : outcome.rows) {
        if (each.state != RowState::notReached || !each.row.refusals.empty()) {
            continue;
        }
        if (!number) {
            units.push_back({{&each}});
            continue;
        }
        const auto [found, isNew] = documents.try_emplace(each.row.values[*number], units.size());
        if (isNew) {
            units.emplace_back();
        }
        units[found->second].rows.push_back(&each);
    }
    return units;
}

} // namespace importing
