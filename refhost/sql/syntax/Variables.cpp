#include "refhost/sql/syntax/Variables.h"

#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <utility>

namespace refhost::sql {

Cell Copied(const Cell& value) {
    Cell copy = value;
    if (value.kind == Cell::Kind::text) {
        copy.SetText(std::string(value.Bytes()));
    } else if (value.kind == Cell::Kind::blob) {
        copy.SetBlob(std::string(value.Bytes()));
    }
    return copy;
}

std::optional<std::size_t> Variables::Find(std::string_view name) const {
    const auto found = std::find_if(variables_.begin(), variables_.end(),
                                    [name](const Variable& variable) { return EqualNames(variable.name, name); });
    if (found == variables_.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - variables_.begin());
}

void Variables::Declare(std::string name, const Type& type) {
    if (Find(name)) {
        Fail(134,
             "The variable name '{}' has already been declared. Variable names must be unique within a query batch or "
             "stored procedure.",
             name);
    }
    variables_.push_back({std::move(name), type, {}});
}

void Variables::Set(std::size_t index, const Cell& value) { variables_[index].value = Copied(value); }

} // namespace refhost::sql
