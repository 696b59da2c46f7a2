#pragma once

#include "refhost/sql/store/Plan.h"
#include "refhost/sql/types/DateParts.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::sql {

/// What the session knows beyond the catalog.
struct SessionState {
    /// Id of the table whose identity column takes explicit values, 0 for none.
    std::int64_t identityInsert = 0;
    /// Variables of the batch at hand, nullptr where it has none.
    Variables* variables = nullptr;
    /// SET NOCOUNT and SET XACT_ABORT.
    bool noCount = false;
    bool xactAbort = false;
    /// The style that texts are read as dates by where none is named: 0, or what SET DATEFORMAT chose.
    int dateStyle = 0;
};

/// A value expression in SQLite's language, with its type. A literal stays apart until its place says what type it
/// shall have.
struct Bound {
    enum class Kind { expression, column, literal, null };

    Kind kind = Kind::expression;
    std::string text;
    Type type;
    bool nullable = true;
    /// Of a literal.
    Slot slot;
    /// Of a column: what it belongs to.
    const Column* column = nullptr;
};

struct OutputColumn {
    std::string name;
    Bound value;
};

/// A query in pieces, so that its columns can still be converted.
struct BoundSelect {
    std::vector<OutputColumn> columns;
    /// What stands before, between and behind the columns of each member of the set operation.
    struct Member {
        std::string head;
        std::vector<Bound> values;
        std::string tail;
    };
    std::vector<Member> members;
    std::vector<std::string> operators;
    std::string tail;

    /// Whether it cannot give more than one row.
    bool single = false;

    /// The query's text; with `names`, every column gets its name (c0, c1 … when `numbered`).
    std::string Text(bool names, bool numbered) const;
};

/// Queries in SQLite's language for the key that a refused write has twice.
struct DuplicateQueries {
    /// The first key that a row of the table has already.
    std::string met;
    /// The first key that two of the write's own rows have.
    std::string repeated;
    /// Types of the key's columns.
    std::vector<Type> types;
};

/// Where the literals of what is being bound go.
enum class LiteralUse {
    parameters, ///< into parameters of a plan
    inlined,    ///< into the text, for definitions
};

/// Translates one statement: resolves names, gives every expression its type, and writes SQLite's SQL.
/// Every member throws SQL Server's errors.
class Binder {
public:
    Binder(Catalog& catalog, const SessionState& session, const std::vector<Literal>& literals, LiteralUse use)
        : catalog_(catalog), session_(session), literals_(literals), use_(use) {}

    Plan BindSelectPlan(const Select& select);
    Plan BindInsert(const Insert& insert);
    Plan BindUpdate(const Update& update);
    Plan BindDelete(const Delete& del);
    Plan BindMerge(const Merge& merge);
    /// A value converted to a type, as a query of it.
    Plan BindValuePlan(const Expression& expression, const Type& type);
    /// A condition as a query of one truth value.
    Plan BindConditionPlan(const Expression& condition);
    /// INSERT of a query's rows into a table that was made for it.
    Plan BindSelectInto(const Select& select, std::shared_ptr<const Table> target);

    // For definitions.
    BoundSelect BindSelect(const Select& select);
    /// A query inside of another statement. Throws where it is sorted without a limit.
    BoundSelect BindInner(const Select& select);
    /// A condition over the columns of one table, of which it names them alone.
    std::string BindCheck(const Expression& condition, const Table& table);
    /// The value of a computed column over the columns of its table, with its type.
    Bound BindComputed(const Column& column, const Table& table);
    /// A default as what the column stores.
    std::string BindDefault(const Column& column);
    /// The queries that find the duplicate key of an insert or update which was refused for one over `columns`; empty
    /// for a write whose rows are not asked for again.
    DuplicateQueries BindDuplicates(const Insert* insert, const Update* update,
                                    const std::shared_ptr<const Table>& table, const std::vector<std::string>& columns);
    /// Every literal whose value shaped the translation so far.
    std::vector<std::size_t> Pinned() const { return {pinned_.begin(), pinned_.end()}; }

private:
    struct WriteTarget;
    struct ScopeColumn {
        std::string name;
        Bound value;
    };
    struct ScopeSource {
        std::string alias;
        std::string tableName;
        std::shared_ptr<const Table> table;
        std::string sqlName;
        std::vector<ScopeColumn> columns;
        /// Of a table: what its rows are numbered by.
        std::string row;
        /// Of a view that the statement writes.
        std::shared_ptr<const WriteTarget> written;
    };
    struct Scope {
        Scope* outer = nullptr;
        std::vector<ScopeSource> sources;
        bool aggregated = false;
        bool inAggregate = false;
        /// Whether functions over windows may stand here.
        bool windows = false;
        /// Columns used outside of aggregates, for the test against GROUP BY.
        std::vector<std::string> bareColumns;
        std::vector<std::string> groups;
    };

    /// Opens a scope for the life of the object.
    class ScopeGuard {
    public:
        ScopeGuard(Binder& binder, Scope* outer) : binder_(binder), before_(binder.scope_) {
            scope_.outer = outer;
            binder_.scope_ = &scope_;
        }
        ~ScopeGuard() { binder_.scope_ = before_; }
        ScopeGuard(const ScopeGuard&) = delete;
        ScopeGuard& operator=(const ScopeGuard&) = delete;

    private:
        Binder& binder_;
        Scope* before_;
        Scope scope_;
    };

    /// The common table expression that refers to itself and is being bound.
    struct Recursion {
        std::string name;
        std::string sqlName;
        std::vector<ScopeColumn> columns;
        /// What its place in the recursive query is called.
        std::string alias;
    };

    /// Adds the columns of one row of a table to the scope, which stand for themselves.
    void AddRowOf(const Table& table);

    // Sources.
    std::string BindFrom(const std::vector<std::unique_ptr<Source>>& sources);
    std::string BindSource(const Source& source, bool outerSide);
    std::string BindApply(const Source& source, bool outerSide);
    /// The query of all of a table or view.
    BoundSelect BindWholeTable(const Source& source);
    std::string BindTable(const Source& source, bool outerSide);
    std::string BindDerived(const Source& source, bool outerSide);
    std::string AddDerived(BoundSelect select, const std::string& alias, const std::vector<std::string>& columnAliases,
                           bool outerSide);
    ScopeSource& AddTable(std::shared_ptr<const Table> table, const std::string& alias, bool outerSide);
    const ScopeColumn& FindColumn(const Name& name, Scope*& found) const;
    bool MatchesSource(const ScopeSource& source, const Name& name) const;

    // Common table expressions, in CommonTableBinder.cpp.
    void AddCommons(const CommonTables& tables);
    std::optional<std::size_t> FindCommon(const Name& name) const;
    std::string BindCommon(std::size_t index, const std::string& alias, bool outerSide);
    BoundSelect BindRecursive(const CommonTable& common);
    std::string BindRecursiveSource(const std::string& alias);

    // Functions over windows, in WindowBinder.cpp.
    std::string BindWindow(const Window& window);
    /// Nothing for a function that needs no window.
    std::optional<Bound> BindWindowFunction(const std::string& name, const Expression& expression);

    // Queries.
    BoundSelect::Member BindMember(const Select& select, std::vector<OutputColumn>& columns, const Select* orderOf);
    /// @param bare receives the columns that each item uses outside of aggregates
    void BindItems(const std::vector<SelectItem>& items, std::vector<OutputColumn>& columns,
                   std::vector<std::vector<std::string>>& bare);
    /// A query that sets variables. Throws where it gives columns too.
    Plan BindAssigningSelect(const Select& select);
    void ExpandStar(const Name& name, std::vector<OutputColumn>& columns);
    std::string BindGroupBy(const Select& select);
    /// Where the keys of ORDER BY may come from and how they are written.
    enum class Keys {
        any,     ///< columns of the answer by their place, everything else as an expression
        answer,  ///< columns of the answer alone
        spelled, ///< every key as an expression
    };
    std::string BindOrderBy(const Select& select, const std::vector<OutputColumn>& columns, Keys keys);
    /// TOP, OFFSET and FETCH as LIMIT. `body` stands behind SELECT's values, FROM to HAVING.
    std::string BindLimit(const Select& select, const std::vector<OutputColumn>& columns, const std::string& body);
    std::string BindRowCount(const Expression& count);
    /// Throws when `value` uses one of the columns `bare` of the scope beyond what GROUP BY names.
    void CheckGrouped(const std::string& value, const std::vector<std::string>& bare, std::string_view place);
    void UnifyMembers(BoundSelect& bound);
    Plan Finish(PlanKind kind, std::string text);
    /// Describes what a plan gives.
    static void Describe(Plan& plan, const std::vector<OutputColumn>& columns);

    // Values.
    Bound BindValue(const Expression& expression);
    Bound BindLiteral(const Expression& expression);
    Bound BindColumn(const Name& name);
    Bound BindNegate(const Expression& expression);
    Bound BindArithmetic(const Expression& expression);
    Bound BindConcatenation(Bound left, Bound right);
    Bound BindDateArithmetic(const std::string& operation, Bound left, Bound right);
    Bound BindConvert(const Expression& expression);
    Bound BindCase(const Expression& expression);
    Bound BindSubquery(const Expression& expression);
    Bound BindTryConvert(Bound value, const Type& type, int style);
    Bound BindVariable(const Expression& expression);
    /// The place of a variable of the batch. Throws SQL Server's error when it has none of that name.
    std::size_t VariableAt(const std::string& name) const;

    // Functions, in FunctionBinder.cpp.
    Bound BindFunction(const Expression& expression);
    Bound BindAggregate(const std::string& name, const Expression& expression);
    Bound BindTextAggregate(const Expression& expression, std::string text, const std::string& over);
    Bound BindTextFunction(const std::string& name, const Expression& expression);
    Bound BindDateFunction(const std::string& name, const Expression& expression);
    Bound BindNumberFunction(const std::string& name, const Expression& expression);
    Bound BindIsNull(const Expression& expression);
    Bound BindCoalesce(const Expression& expression);
    Bound BindNullIf(const Expression& expression);
    Bound BindObjectId(const Expression& expression);
    Bound BindObjectProperty(const Expression& expression);
    void RequireArguments(const Expression& expression, std::size_t least, std::size_t most) const;
    std::string ConstantText(const Expression& expression);
    DatePart TakeDatePart(const Expression& expression, const std::string& function) const;

    // Conditions.
    std::string BindCondition(const Expression& expression, bool topLevel);
    std::string BindCompare(const Expression& expression, bool topLevel);
    std::string BindLike(const Expression& expression);
    std::string BindBetween(const Expression& expression);
    std::string BindInList(const Expression& expression);
    std::string BindInSelect(const Expression& expression);

    // Literals and conversions.
    /// The value's text as it stands; a literal's own type shapes the plan.
    std::string Own(Bound& value);
    /// The value's text converted to a type.
    std::string As(Bound value, const Type& type, int style = 0, Surplus surplus = Surplus::cut);
    /// The same, not as text yet.
    Bound Converted(Bound value, const Type& type, int style, Surplus surplus);
    /// Converts the values that meet in a comparison, and returns the family they meet in.
    Family Unify(const std::vector<Bound*>& values);
    /// With the collation that its comparisons need, when SQLite does not know it from the column.
    static std::string Collated(const Bound& value);
    /// The style of a conversion that names `style`.
    int StyleFor(int style, const Type& from, const Type& to) const;
    std::string Parameter(const Slot& slot);
    void Pin(std::size_t literal) { pinned_.insert(literal); }
    const Literal& LiteralAt(std::size_t index) const { return literals_.at(index); }

    // Writing.
    std::string BindAssigned(const Expression& value, const Column& column);
    /// A query for the keys (k0, k1 …) of an insert's rows, and for those of an update's with the row (id).
    std::string BindInsertKeys(const Insert& insert, const Table& table, const std::vector<const Column*>& keys);
    std::string BindUpdateKeys(const Update& update, const std::shared_ptr<const Table>& table,
                               const std::vector<const Column*>& keys);
    /// What a statement writes: a table, or the table that a view shows.
    struct WriteTarget {
        std::shared_ptr<const Table> table;
        bool view = false;
        /// Of a view: the names of its columns, with their places in the table.
        std::vector<std::pair<std::string, int>> columns;
        /// Of a view with a condition: SQLite's query of the rows that it shows.
        std::string rows;

        /// The place in the table of a column that the statement names, -1 when there is none.
        int Find(std::string_view name) const;
    };
    WriteTarget FindTarget(const Name& name);
    WriteTarget OpenView(const Table& view);
    /// Adds what is written to the scope, under the names that the statement knows.
    ScopeSource& AddTarget(const WriteTarget& target, const std::string& name, bool outerSide = false);
    /// Binds FROM of an UPDATE or DELETE and finds among its tables the one that is written, by alias or by name;
    /// nullptr when it is none of them.
    const ScopeSource* BindWrittenFrom(const std::vector<std::unique_ptr<Source>>& sources, const Name& target,
                                       std::string& from);
    /// The same for a view that the statement writes: the rows of its table that it shows.
    std::string BindTargetView(const Table& view, const std::string& alias, bool outerSide);
    /// The query of the rows of a table that a condition chooses.
    std::string BindRows(std::shared_ptr<const Table> table, const std::string& alias, const Expression& condition);
    /// Which rows of the one table an UPDATE or DELETE writes; nullptr without a condition or TOP, `rows` empty for
    /// all.
    std::string BindWritten(const ScopeSource& source, const Expression* where, const Expression* top,
                            const std::string& rows);
    /// The plan of a statement that writes `table`.
    Plan FinishWrite(PlanKind kind, std::string text, std::shared_ptr<const Table> table);
    /// What else an UPDATE sets: the row version, where the table has one.
    static std::string VersionAssignment(const Table& table);
    /// What an INSERT writes of its list of values.
    struct InsertShape {
        /// The places in the list that are written, and their columns.
        std::vector<std::size_t> used;
        std::vector<const Column*> columns;
        /// What the database itself fills in.
        std::vector<std::pair<const Column*, std::string>> automatic;
        /// How many values belong into the list.
        std::size_t count = 0;

        /// The columns, in parentheses.
        std::string Columns() const;
    };
    /// @param names columns that the statement lists, none for all
    /// @param isEmpty whether the value at a place of the list is DEFAULT or NULL in every row
    InsertShape ShapeInsert(const WriteTarget& target, const std::vector<std::string>& names, bool defaultValues,
                            const std::function<bool(std::size_t)>& isEmpty);
    /// Throws where the values do not fit the list.
    static void RequireCount(const InsertShape& shape, std::size_t count, bool listed, bool query);
    struct BoundAssignment {
        const Column* column;
        std::string value;
    };
    std::vector<BoundAssignment> BindAssignments(const std::vector<Assignment>& assignments, const WriteTarget& target);

    // Writes row by row, in RowWriteBinder.cpp.
    /// The rows that a write chooses, in SQLite's SQL.
    struct Choice {
        PlanKind kind = PlanKind::select;
        /// The target's row, "NULL" for an insert.
        std::string row;
        std::vector<std::string> values;
        /// Behind the values: FROM and so on.
        std::string body;
        /// What OUTPUT may name and no row of the choice has.
        std::vector<ScopeSource> absent;
    };
    /// The write of what is chosen, with OUTPUT. The scope is that of the choice; `source` is the target's in it,
    /// nullptr for an insert.
    void AddRowWrite(RowPlan& rows, const Choice& choice, RowPlan::Write write, const WriteTarget& target,
                     const ScopeSource* source, const Outputs& outputs);
    Plan BindRowOutput(const Output& output, const std::vector<ScopeSource>& sources);
    RowPlan::Write InsertOfRows(const WriteTarget& target, const InsertShape& shape);
    RowPlan::Write UpdateOfRows(const WriteTarget& target, const std::vector<BoundAssignment>& assigned);
    RowPlan::Write DeleteOfRows(const WriteTarget& target);
    Plan BindInto(const Output& output, const Plan& rows);
    /// The whole plan of a statement that writes row by row.
    Plan FinishRows(RowPlan rows, const Outputs& outputs, std::shared_ptr<const Table> table);
    /// The query of a clause's rows; opens the scope that its values are bound in.
    Choice BindMergeRows(const Merge& merge, std::size_t clause, const WriteTarget& target, const ScopeSource*& source);
    void RefuseExplicit(const Table& table, const Column& column, bool insert) const;

    Catalog& catalog_;
    const SessionState& session_;
    const std::vector<Literal>& literals_;
    LiteralUse use_;
    Scope* scope_ = nullptr;
    int sourceCount_ = 0;
    /// Common table expressions of the statement, and how many of them can be named where we are.
    std::vector<const CommonTable*> commons_;
    std::size_t commonsVisible_ = 0;
    std::optional<Recursion> recursion_;
    /// Whether literals are spelled out, because texts of expressions are compared.
    bool inlining_ = false;
    std::vector<Slot> slots_;
    std::set<std::size_t> pinned_;
    /// Variables that the query at hand sets: their values change from row to row.
    std::set<std::size_t> assigned_;
    /// Whether it uses what it has set at the row before.
    bool accumulates_ = false;
    /// What the UPDATE or DELETE at hand writes, while its FROM is bound; empty otherwise.
    std::string writtenName_;
};

/// Throws the error of a list of column names that does not fit its query.
[[noreturn]] void FailColumnCount(std::string_view name, std::size_t columns, std::size_t listed);

} // namespace refhost::sql
