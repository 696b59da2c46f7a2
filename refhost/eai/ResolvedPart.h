#pragma once

#include "refhost/eai/Mapping.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace refhost {

/// The record's column that belongs to `field`. Throws `host::Error` for a mapping that names no column of the record,
/// and the database's error.
std::size_t ColumnOf(const MappedField& field, const host::Recordset& record, const std::string& mappingName);

/// A part of a mapping over records of given columns.
class ResolvedPart {
public:
    /// Throws like `ColumnOf`.
    ResolvedPart(const MappedPart& part, const host::Recordset& records, const std::string& mappingName);

    /// Whether it is over these columns.
    bool IsOver(const host::Recordset& records) const;
    /// The name of an element's column as the records spell it, or nullptr.
    const std::string* ColumnOf(std::string_view element) const;

private:
    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    std::vector<std::string> fields_;
    std::unordered_map<std::string, std::string, TextHash, std::equal_to<>> columns_;
};

} // namespace refhost
