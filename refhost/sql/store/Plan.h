#pragma once

#include "refhost/ado/Database.h"
#include "refhost/sql/store/Catalog.h"
#include "refhost/sql/syntax/Literals.h"
#include "refhost/sql/syntax/Variables.h"

#include <cstdint>
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

/// The literal that a parameter is bound to. SQLite keeps what is bound from one run to the next, and most literals of
/// a statement are the same in all of them.
struct BoundLiteral {
    /// Whether it is bound to `body`, which it may point into, as a text with or without N.
    bool holds = false;
    bool national = false;
    std::string body;
};

enum class PlanKind { select, insert, update, del };

/// A statement's translation, good for all statements of its shape.
struct Plan {
    PlanKind kind = PlanKind::select;
    /// The statement in SQLite's language, a parameter ?n for `slots[n-1]`.
    std::string text;
    std::vector<Slot> slots;
    /// What the statement names; known of what stands alone.
    NamedTables named;
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
    /// Whether it is a part of a MERGE, as which messages tell it.
    bool merge = false;
    /// Of a write that is made row by row, which has no text of its own; nullptr for all others.
    std::shared_ptr<struct RowPlan> rows;
    /// What a look-up has answered lately; nullptr for everything else.
    std::shared_ptr<class RepeatedAnswers> answers;
    /// Of an insert: the counts of the tables that it changes.
    std::vector<std::uint64_t*> changes;
    /// Nothing where definitions have changed since it was run last.
    StatementHandle statement;
    /// What `statement` is bound to, for each of `slots`; empty where it was never run.
    mutable std::vector<BoundLiteral> bound;
};

/// A write that chooses its rows before it writes the first of them: a MERGE, and every write with an OUTPUT.
struct RowPlan {
    struct Write {
        /// Query of the rows: the number of the target's row, the values that `write` takes, and what OUTPUT may name.
        Plan choose;
        /// Writes one row. Its parameter ?n is the nth column of `choose`; where OUTPUT wants it, it gives the row as
        /// it is then.
        Plan write;
        /// The columns that `write` gives values, in their order.
        std::vector<const Column*> columns;
        /// For each OUTPUT clause the query of what it tells; the values of `choose` and `write` are k_row(0), ….
        std::vector<Plan> outputs;
    };

    std::vector<Write> writes;
    /// For each OUTPUT clause the insert of its rows, with the columns of the output as its parameters; one without
    /// text where they go to the caller.
    std::vector<Plan> into;
    /// Whether a MERGE wants it, which writes no row twice.
    bool merge = false;
};

/// The type of a literal by itself.
Type TypeOf(const Literal& literal);
/// A literal's value by itself; `negated` turns a number's sign.
Cell CellOf(const Literal& literal, bool negated);
/// A literal after its steps. Throws SQL Server's conversion errors.
Cell Evaluate(const Literal& literal, const Slot& slot);

/// Has a plan's statement made. Throws like `Prepare`.
void PrepareStatement(Plan& plan, sqlite3* db);
/// Binds every parameter of the plan but those whose literal stays bound from the run before. What is bound may point
/// into the statement's text, which is to live for this run.
/// @param variables of the batch, nullptr where it has none
void BindParameters(const Plan& plan, const std::vector<Literal>& literals, const Variables* variables);

/// Binds a value to a parameter, which keeps a copy.
void BindCell(sqlite3_stmt* statement, int index, const Cell& cell);
/// Prepares the statements of a plan that writes row by row. Throws like `Prepare`.
void PrepareRows(RowPlan& rows, sqlite3* db);

/// The current row's value in a column.
host::Value ReadValue(sqlite3_stmt* statement, int column, const Type& type);

} // namespace refhost::sql
