#pragma once

#include "refhost/sql/types/Convert.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::sql {

/// A copy of a value that owns its bytes.
Cell Copied(const Cell& value);

/// A variable of a batch.
struct Variable {
    std::string name;
    Type type;
    /// A value of that type, which owns its bytes; Null at first.
    Cell value;
};

/// The variables of a batch, in the order of their declarations. Names are blind to letter case.
class Variables {
public:
    std::optional<std::size_t> Find(std::string_view name) const;
    /// Throws SQL Server's error when the name is taken.
    void Declare(std::string name, const Type& type);
    const Variable& operator[](std::size_t index) const { return variables_[index]; }
    std::size_t Size() const { return variables_.size(); }
    /// Gives a variable a copy of a value of its type.
    void Set(std::size_t index, const Cell& value);

private:
    std::vector<Variable> variables_;
};

} // namespace refhost::sql
