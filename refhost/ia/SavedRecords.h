#pragma once

#include "host/DOMDocument.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace refhost {

/// One record of a recordset saved as XML: its values as text, Null and what was never set left out.
class SavedRecord {
public:
    explicit SavedRecord(const host::DOMNode& row) : values_(row.Attributes()) {}

    const std::vector<host::DOMAttribute>& values() const { return values_; }
    /// The value of a column; empty where it has none.
    std::string_view Text(std::string_view column) const;
    /// The same as a number; nothing where it is none.
    std::optional<double> Amount(std::string_view column) const;

private:
    std::vector<host::DOMAttribute> values_;
};

/// A recordset saved in ADO's XML persistence layout, read once.
class SavedRecords {
public:
    /// Throws `host::Error` for a document in whose schema a column lacks its data type.
    explicit SavedRecords(const host::DOMDocument& document);

    const std::vector<SavedRecord>& records() const { return records_; }

    struct Cell {
        /// Its place among the columns of the schema.
        std::size_t column;
        std::string_view name;
        std::string_view text;
        /// Whether its column takes numbers.
        bool number;
    };
    /// A record's values in the order of the schema's columns, without those that the schema does not name.
    std::vector<Cell> CellsOf(const SavedRecord& record) const;

private:
    std::vector<std::string> columns_;
    std::vector<std::string> types_;
    std::vector<SavedRecord> records_;
};

} // namespace refhost
