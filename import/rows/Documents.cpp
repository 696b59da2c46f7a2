#include "import/rows/Documents.h"

#include <optional>
#include <set>
#include <string_view>

namespace importing {

void RefuseWithTheirDocuments(const ClassFields& classFields, const Columns& columns, std::span<Row* const> rows) {
    const std::optional<std::size_t> number = columns.Find(classFields.document);
    if (classFields.document.empty() || !number) {
        return;
    }
    std::set<std::string_view> refused;
    for (const Row* const row : rows) {
        if (!row->refusals.empty()) {
            refused.insert(row->values[*number]);
        }
    }
    for (Row* const row : rows) {
        if (row->refusals.empty() && refused.contains(row->values[*number])) {
            row->refusals.push_back({std::nullopt, {message::documentRefused, {row->values[*number]}}, {}});
        }
    }
}

} // namespace importing
