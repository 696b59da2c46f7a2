#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// The fields that a class reads of a request, for telling which children it does not read.
struct ClassFields {
    /// Child elements of a row; or, of a document, of its element `header` and of each `body/entry`.
    std::vector<std::string> row;
    std::vector<std::string> header = {};
    std::vector<std::string> entry = {};
    /// Whether every other child of a row becomes a column of the table: then only a field in another letter case is
    /// not read.
    bool othersAreColumns = false;
};

/// The fields of a class; nothing for `ClsKovraProof` where mapping files of the user's own say what it reads.
/// Throws `host::Error` when the program's own mapping cannot be read.
std::optional<ClassFields> FieldsOf(std::string_view className);

/// The name of `names` that `name` was most likely meant to be: the same in another letter case, else one that differs
/// in at most two letters; empty when there is none.
std::string Nearest(std::string_view name, const std::vector<std::string>& names);

} // namespace cli
