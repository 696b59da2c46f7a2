#pragma once

#include "refhost/ado/Database.h"
#include "refhost/sql/engine/Catalog.h"
#include "refhost/sql/syntax/Literals.h"
#include "refhost/sql/syntax/Variables.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace refhost::sql {

/// A conversion that a literal takes on its way into SQLite.
struct Step {
    Type to;
    int style = 0;
    Surplus surplus = Surplus::cut;
};

/// A parameter of the SQLite statement: which literal or variable it comes from and what becomes of it.
struct Slot {
    std::size_t literal = 0;
    /// Place among the batch's variables, which go in as they stand; nothing for a literal.
    std::optional<std::size_t> variable;
    bool negated = false;
    /// Whether the literal goes in as it stands, text as text and 32-bit number as number.
    bool plain = false;
    std::vector<Step> steps;
};

enum class PlanKind { select, insert, update, del };

/// A statement's translation, good for all statements of its shape.
struct Plan {
    PlanKind kind = PlanKind::select;
    /// The statement in SQLite's language, a parameter ?n for `slots[n-1]`.
    std::string text;
    std::vector<Slot> slots;
    /// Literals whose values shaped the translation, in ascending order.
    std::vector<std::size_t> pinned;
    /// Columns of the answer; of a select only.
    std::shared_ptr<const Fields> fields;
    /// Their types.
    std::vector<Type> types;
    /// Of a select that sets variables: which one each column sets.
    std::vector<std::size_t> assigned;
    /// Table that an insert, update or delete writes.
    std::shared_ptr<const Table> target;
    StatementHandle statement;
};

/// The type of a literal by itself.
Type TypeOf(const Literal& literal);
/// A literal's value by itself; `negated` turns a number's sign.
Cell CellOf(const Literal& literal, bool negated);
/// A literal after its steps. Throws SQL Server's conversion errors.
Cell Evaluate(const Literal& literal, const Slot& slot);

/// Binds every parameter of the plan. What is bound may point into the statement's text.
/// @param variables of the batch, nullptr where it has none
void BindParameters(const Plan& plan, const std::vector<Literal>& literals, const Variables* variables);

/// The current row's value in a column.
host::Value ReadValue(sqlite3_stmt* statement, int column, const Type& type);

} // namespace refhost::sql
