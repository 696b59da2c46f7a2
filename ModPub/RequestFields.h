#pragma once

#include "ModPub/GetNodeText.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ModPub {

/// The fields that a class reads of a request, by the names of their elements.
struct RequestFields {
    /// Children of a row; or, of a document, of its element `header` and of each `body/entry`.
    std::vector<std::string> row = {};
    std::vector<std::string> header = {};
    std::vector<std::string> entry = {};
    /// Whether every other child of a row becomes a column of the table: then only a field in another letter case is
    /// not read.
    bool othersAreColumns = false;
};

/// A member of `Row` that holds the text of the child element `name`.
template <class Row> struct RowField {
    std::string_view name;
    std::string Row::*field;
};

/// A row with the texts of the children of `element`, empty where there is none. Throws as `GetNodeText`.
template <class Row, std::size_t count>
Row ReadFields(const host::DOMNode& element, const std::array<RowField<Row>, count>& fields) {
    Row row;
    for (const RowField<Row>& field : fields) {
        row.*field.field = GetNodeText(element, field.name);
    }
    return row;
}

/// The names of the fields, in their order.
template <class Row, std::size_t count> std::vector<std::string> Names(const std::array<RowField<Row>, count>& fields) {
    std::vector<std::string> names;
    names.reserve(count);
    for (const RowField<Row>& field : fields) {
        names.emplace_back(field.name);
    }
    return names;
}

} // namespace ModPub
