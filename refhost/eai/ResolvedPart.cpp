#include "refhost/eai/ResolvedPart.h"

namespace refhost {

std::size_t ColumnOf(const MappedField& field, const host::Recordset& record, const std::string& mappingName) {
    try {
        return record.FieldIndex(field.column);
    } catch (const host::Error& error) {
        if (error.number() != host::error_number::itemNotFound) {
            throw;
        }
        throw MappingError(mappingName, "记录中没有列" + field.column);
    }
}

ResolvedPart::ResolvedPart(const MappedPart& part, const host::Recordset& records, const std::string& mappingName) {
    for (const MappedField& field : part.fields) {
        columns_.emplace(field.element, records.FieldAt(refhost::ColumnOf(field, records, mappingName)).name);
    }
    for (std::size_t index = 0; index < records.FieldCount(); ++index) {
        fields_.push_back(records.FieldAt(index).name);
    }
}

bool ResolvedPart::IsOver(const host::Recordset& records) const {
    bool same = records.FieldCount() == fields_.size();
    for (std::size_t index = 0; same && index < fields_.size(); ++index) {
        same = records.FieldAt(index).name == fields_[index];
    }
    return same;
}

const std::string* ResolvedPart::ColumnOf(std::string_view element) const {
    const auto found = columns_.find(element);
    return found == columns_.end() ? nullptr : &found->second;
}

} // namespace refhost
