#include "refhost/ia/SavedRecords.h"

#include "ModPub/Numbers.h"
#include "host/Error.h"

#include <algorithm>
#include <array>

namespace refhost {
namespace {

/// The types by which the schema calls columns of numbers.
constexpr std::array<std::string_view, 7> numberTypes = {"i2", "int", "r4", "float", "number", "ui1", "i8"};

} // namespace

std::string_view SavedRecord::Text(std::string_view column) const {
    const auto found = std::ranges::find(values_, column, &host::DOMAttribute::name);
    return found == values_.end() ? std::string_view() : found->value;
}

std::optional<double> SavedRecord::Amount(std::string_view column) const { return ModPub::NumericValue(Text(column)); }

SavedRecords::SavedRecords(const host::DOMDocument& document)
    : columns_(document.AttributesAt("/xml/s:Schema/s:ElementType/s:AttributeType", "name")),
      types_(document.AttributesAt("/xml/s:Schema/s:ElementType/s:AttributeType/s:datatype", "dt:type")) {
    if (types_.size() != columns_.size()) {
        throw host::Error(host::error_number::unspecified, "记录集的架构不完整。");
    }
    for (const host::DOMNodePtr& row : document.SelectNodes("/xml/rs:data/z:row")) {
        records_.emplace_back(*row);
    }
}

std::vector<SavedRecords::Cell> SavedRecords::CellsOf(const SavedRecord& record) const {
    std::vector<Cell> cells;
    cells.reserve(record.values().size());
    auto behind = columns_.begin();
    for (const auto& [name, value] : record.values()) {
        // Values mostly stand in the columns' order.
        auto found = std::find(behind, columns_.end(), name);
        if (found == columns_.end()) {
            found = std::find(columns_.begin(), behind, name);
            found = found == behind ? columns_.end() : found;
        }
        if (found != columns_.end()) {
            behind = found + 1;
            const auto column = static_cast<std::size_t>(found - columns_.begin());
            const bool number = std::ranges::find(numberTypes, types_[column]) != numberTypes.end();
            cells.push_back({column, name, value, number});
        }
    }
    std::ranges::sort(cells, {}, &Cell::column);
    return cells;
}

} // namespace refhost
