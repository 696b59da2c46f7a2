#pragma once

#include "refhost/sql/types/Types.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace refhost::sql {

struct Expression;
struct Select;
struct Window;
using ExpressionPtr = std::unique_ptr<Expression>;
using SelectPtr = std::unique_ptr<Select>;

/// A name of one to four parts, the last one the object's or column's own; parts left out ("db..table") are empty.
struct Name {
    std::vector<std::string> parts;

    const std::string& Last() const { return parts.back(); }
    /// As the statement wrote it, for messages.
    std::string Text() const;
};

enum class Node {
    literal,  ///< `literal`
    null,     ///< NULL
    default_, ///< DEFAULT in a value list
    column,   ///< `name`
    star,     ///< * or t.*: `name` holds the parts before the star
    negate,   ///< -x
    plus,     ///< +x
    binary,   ///< `text` is one of + - * / %
    function, ///< `name`, arguments; `flag` when DISTINCT
    convert,  ///< cast or convert: `type`, arguments value and, if given, style; `flag`: try_cast, try_convert
    caseOf,   ///< pairs of when and then; `flag`: the first argument is the operand; an odd one out is the else
    subquery, ///< `select` as a value
    variable, ///< @name or @@name in `text`
    collate,  ///< value, and the collation's name in `text`
    // Conditions from here on.
    compare, ///< `text` is one of = <> < <= > >=
    conjunction,
    disjunction,
    negation,
    isNull,   ///< `flag`: IS NOT NULL
    like,     ///< value, pattern and, if given, escape; `flag`: NOT
    between,  ///< value, low, high; `flag`: NOT
    inList,   ///< value and the list; `flag`: NOT
    inSelect, ///< value and `select`; `flag`: NOT
    exists,   ///< `select`
};

inline bool IsCondition(Node node) { return node >= Node::compare; }

struct OrderItem {
    ExpressionPtr value;
    bool descending = false;
};

struct Expression {
    Node node = Node::null;
    std::string text;
    Name name;
    std::size_t literal = 0;
    bool flag = false;
    Type type;
    std::vector<ExpressionPtr> arguments;
    SelectPtr select;
    /// OVER (…) of a function, nullptr without one.
    std::unique_ptr<Window> window;
    /// WITHIN GROUP (ORDER BY …) of a function.
    std::vector<OrderItem> within;
};

struct SelectItem {
    ExpressionPtr value;
    std::string alias;
    /// "@name" where the item sets a variable and is no column.
    std::string variable;
};

struct Window {
    std::vector<ExpressionPtr> partition;
    std::vector<OrderItem> order;
    /// "ROWS BETWEEN …" in the words that both languages share; empty without one.
    std::string frame;
};

inline ExpressionPtr Make(Node node) {
    auto expression = std::make_unique<Expression>();
    expression->node = node;
    return expression;
}

inline ExpressionPtr Make(Node node, ExpressionPtr first) {
    ExpressionPtr expression = Make(node);
    expression->arguments.push_back(std::move(first));
    return expression;
}

inline ExpressionPtr Make(Node node, ExpressionPtr first, ExpressionPtr second) {
    ExpressionPtr expression = Make(node, std::move(first));
    expression->arguments.push_back(std::move(second));
    return expression;
}

enum class Join { inner, left, right, full, cross, crossApply, outerApply };

/// One table of a FROM clause, or two joined ones.
struct Source {
    // A table or a derived table …
    Name name;
    SelectPtr select;
    std::string alias;
    std::vector<std::string> columnAliases;
    // … or a join.
    std::unique_ptr<Source> left;
    std::unique_ptr<Source> right;
    Join join = Join::inner;
    ExpressionPtr on;
};

enum class SetOperation { none, unionDistinct, unionAll, except, intersect };

/// A query of a WITH clause, known by its name in what follows it.
struct CommonTable {
    std::string name;
    std::vector<std::string> columns;
    SelectPtr select;
};
using CommonTables = std::vector<CommonTable>;

struct Select {
    CommonTables with;
    bool distinct = false;
    ExpressionPtr top;
    bool topPercent = false;
    bool topTies = false;
    std::vector<SelectItem> items;
    std::optional<Name> into;
    std::vector<std::unique_ptr<Source>> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
    /// Of a set operation: what is combined with `next`; `orderBy` belongs to the whole and stands in the first.
    SetOperation operation = SetOperation::none;
    SelectPtr next;
    std::vector<OrderItem> orderBy;
    /// OFFSET … ROWS FETCH … ROWS ONLY behind it, nullptr without them.
    ExpressionPtr offset;
    ExpressionPtr fetch;
};

/// OUTPUT of a statement that writes: of each row what was there before ("deleted"), what is there now ("inserted").
struct Output {
    std::vector<SelectItem> items;
    /// The table that the rows go into, with the columns named there; nothing for rows that go to the caller.
    std::optional<Name> into;
    std::vector<std::string> intoColumns;
};
/// One into a table and one to the caller at most.
using Outputs = std::vector<Output>;

struct Insert {
    Name table;
    std::vector<std::string> columns;
    std::vector<std::vector<ExpressionPtr>> rows;
    SelectPtr select;
    bool defaultValues = false;
    Outputs outputs;
};

struct Assignment {
    std::string column;
    ExpressionPtr value;
};

struct Update {
    CommonTables with;
    Name target;
    ExpressionPtr top;
    std::vector<Assignment> assignments;
    Outputs outputs;
    std::vector<std::unique_ptr<Source>> from;
    ExpressionPtr where;
};

struct Delete {
    CommonTables with;
    Name target;
    ExpressionPtr top;
    Outputs outputs;
    std::vector<std::unique_ptr<Source>> from;
    ExpressionPtr where;
};

/// WHEN … THEN … of a MERGE.
struct MergeClause {
    enum class Rows { matched, notMatched, notMatchedBySource };
    enum class Action { insert, update, del };

    Rows rows = Rows::matched;
    /// Behind AND, nullptr without one.
    ExpressionPtr condition;
    Action action = Action::update;
    /// Of an update.
    std::vector<Assignment> assignments;
    /// Of an insert; without values it is one of DEFAULT VALUES.
    std::vector<std::string> columns;
    std::vector<ExpressionPtr> values;
};

/// The clause as messages name it.
std::string_view NameOf(MergeClause::Rows rows);

struct Merge {
    CommonTables with;
    Name target;
    std::string alias;
    std::unique_ptr<Source> source;
    ExpressionPtr on;
    std::vector<MergeClause> clauses;
    Outputs outputs;
};

struct ColumnDefinition {
    std::string name;
    Type type;
    std::optional<bool> nullable;
    bool identity = false;
    std::int64_t seed = 1;
    std::int64_t increment = 1;
    /// The default's expression as written, empty without one, and the name of its constraint.
    std::string defaultText;
    std::string defaultName;
    /// Of a computed column, which has no type of its own: its expression as written, and whether it is PERSISTED.
    std::string computedText;
    bool persisted = false;
};

enum class ConstraintKind { primaryKey, unique, check, foreignKey };

/// What becomes of rows whose key goes: ON DELETE and ON UPDATE.
enum class ReferenceRule { noAction, cascade, setNull, setDefault };

/// What a foreign key points at.
struct Reference {
    Name table;
    /// Empty where they are those of the primary key.
    std::vector<std::string> columns;
    ReferenceRule onDelete = ReferenceRule::noAction;
    ReferenceRule onUpdate = ReferenceRule::noAction;
};

struct IndexColumn {
    std::string name;
    bool descending = false;
};

struct Constraint {
    ConstraintKind kind = ConstraintKind::check;
    std::string name;
    std::vector<IndexColumn> columns;
    /// Of a check: the condition, and as written.
    ExpressionPtr condition;
    std::string conditionText;
    /// Of a foreign key.
    Reference reference;
    /// Column that the constraint was written at, empty for one of the table.
    std::string column;
};

struct DefaultConstraint {
    /// Empty without one.
    std::string name;
    std::string column;
    std::string text;
};

struct CreateTable {
    Name table;
    std::vector<ColumnDefinition> columns;
    std::vector<Constraint> constraints;
};

struct CreateView {
    Name view;
    std::vector<std::string> columns;
    SelectPtr select;
    /// The whole statement as written.
    std::string text;
};

struct CreateIndex {
    std::string name;
    Name table;
    bool unique = false;
    std::vector<IndexColumn> columns;
};

enum class ObjectKind { table, view, index };

struct Drop {
    ObjectKind kind = ObjectKind::table;
    bool ifExists = false;
    std::vector<Name> names;
};

struct AlterTable {
    Name table;
    std::vector<ColumnDefinition> addColumns;
    std::vector<Constraint> addConstraints;
    std::vector<DefaultConstraint> addDefaults;
    /// ALTER COLUMN.
    std::optional<ColumnDefinition> changed;
    std::vector<std::string> dropConstraints;
    std::vector<std::string> dropColumns;
    /// Whether rows that are there must satisfy what is added; WITH NOCHECK asks for nothing.
    bool checksRows = true;
};

struct Truncate {
    Name table;
};

enum class TransactionVerb { begin, commit, rollback, save };

struct Transaction {
    TransactionVerb verb = TransactionVerb::begin;
    /// The name written, of the transaction or of a savepoint; empty without one.
    std::string name;
};

enum class Option {
    identityInsert,
    noCount,
    xactAbort,
    dateFormat, ///< the order of numbers in dates
    other,      ///< one that changes nothing that this database does
};

/// SET option ON or OFF, or SET DATEFORMAT order.
struct SetOption {
    Option option = Option::other;
    /// Of IDENTITY_INSERT.
    std::optional<Name> table;
    bool on = false;
    /// Of DATEFORMAT: mdy, dmy and so on as written.
    std::string order;
};

/// What the table of a table variable is called; the language has no such name.
inline std::string TableOfVariable(const std::string& variable) { return "#" + variable; }

struct VariableDefinition {
    std::string name;
    Type type;
    /// nullptr without one.
    ExpressionPtr value;
};

struct Declare {
    std::vector<VariableDefinition> variables;
    /// Of table variables, see `TableOfVariable`.
    std::vector<CreateTable> tables;
};

struct SetVariable {
    std::string name;
    ExpressionPtr value;
};

struct Print {
    ExpressionPtr value;
};

/// USE: the database that names without one mean from here on.
struct Use {
    std::string database;
};

/// EXEC ('text' + …).
struct ExecuteText {
    ExpressionPtr text;
};

struct ProcedureArgument {
    /// "@name" of a named one, else empty.
    std::string name;
    ExpressionPtr value;
    bool output = false;
};

struct ExecuteProcedure {
    Name procedure;
    std::vector<ProcedureArgument> arguments;
};

/// RAISERROR (message, severity, state, arguments …).
struct RaiseError {
    std::vector<ExpressionPtr> arguments;
};

/// THROW number, message, state; or THROW alone, which throws again what was caught.
struct Throw {
    std::vector<ExpressionPtr> arguments;
};

enum class Jump { breakLoop, continueLoop, endBatch };

struct Statement;
using Statements = std::vector<Statement>;

/// BEGIN … END.
struct Block {
    Statements statements;
};

/// IF condition statement [ELSE statement].
struct Conditional {
    ExpressionPtr condition;
    Statements then;
    Statements otherwise;
};

/// WHILE condition statement.
struct Loop {
    ExpressionPtr condition;
    Statements body;
};

/// BEGIN TRY … END TRY BEGIN CATCH … END CATCH.
struct TryCatch {
    Statements tried;
    Statements caught;
};

struct Statement {
    std::variant<SelectPtr, Insert, Update, Delete, Merge, CreateTable, CreateView, CreateIndex, Drop, AlterTable,
                 Truncate, Transaction, SetOption, Use, Declare, SetVariable, Print, ExecuteText, ExecuteProcedure,
                 RaiseError, Throw, Jump, Block, Conditional, Loop, TryCatch>
        kind;

    /// The statement when it is of this kind, else nullptr.
    template <class Kind> const Kind* As() const { return std::get_if<Kind>(&kind); }
    /// The query when the statement is one, else nullptr.
    const Select* Query() const {
        const SelectPtr* select = As<SelectPtr>();
        return select != nullptr ? select->get() : nullptr;
    }
};

} // namespace refhost::sql
