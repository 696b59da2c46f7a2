#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/functions/AppliedRows.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>

namespace refhost::sql {
namespace {

constexpr std::string_view selectList = "select list";
constexpr std::string_view havingClause = "HAVING clause";
constexpr std::string_view orderByClause = "ORDER BY clause";

std::string_view Keyword(SetOperation operation) {
    switch (operation) {
    case SetOperation::unionAll:
        return " UNION ALL ";
    case SetOperation::except:
        return " EXCEPT ";
    case SetOperation::intersect:
        return " INTERSECT ";
    default:
        return " UNION ";
    }
}

} // namespace

void FailColumnCount(std::string_view name, std::size_t columns, std::size_t listed) {
    const bool more = columns > listed;
    Fail(more ? Native(8158) : Native(8159), "'{}' has {} columns than were specified in the column list.", name,
         more ? "more" : "fewer");
}

std::string BoundSelect::Text(bool names, bool numbered) const {
    std::string text;
    for (std::size_t m = 0; m < members.size(); ++m) {
        const Member& member = members[m];
        if (m > 0) {
            text += operators[m - 1];
        }
        text += member.head;
        for (std::size_t i = 0; i < member.values.size(); ++i) {
            if (i > 0) {
                text += ", ";
            }
            const Bound& value = member.values[i];
            text += value.text;
            if (value.kind != Bound::Kind::column) {
                const Family family = FamilyOf(value.type);
                if (family == Family::text || family == Family::guid) {
                    text += fmt::format(" COLLATE {}", textCollation);
                } else if (family == Family::exact) {
                    text += fmt::format(" COLLATE {}", exactCollation);
                }
            }
            if (names && m == 0) {
                text += " AS " + (numbered ? fmt::format("c{}", i) : Quoted(columns[i].name));
            }
        }
        text += member.tail;
    }
    return text + tail;
}

// Sources.

bool Binder::MatchesSource(const ScopeSource& source, const Name& name) const {
    const std::string& qualifier = name.parts[name.parts.size() - 2];
    return EqualNames(source.alias, qualifier);
}

const Binder::ScopeColumn& Binder::FindColumn(const Name& name, Scope*& found) const {
    const bool qualified = name.parts.size() > 1;
    for (Scope* scope = scope_; scope != nullptr; scope = scope->outer) {
        const ScopeColumn* column = nullptr;
        bool sourceKnown = false;
        for (const ScopeSource& source : scope->sources) {
            if (qualified && !MatchesSource(source, name)) {
                continue;
            }
            sourceKnown = true;
            for (const ScopeColumn& candidate : source.columns) {
                if (!EqualNames(candidate.name, name.Last())) {
                    continue;
                }
                if (column != nullptr) {
                    Fail(209, "Ambiguous column name '{}'.", name.Last());
                }
                column = &candidate;
            }
        }
        if (column != nullptr) {
            found = scope;
            return *column;
        }
        if (qualified && sourceKnown) {
            Fail(207, "Invalid column name '{}'.", name.Last());
        }
    }
    if (qualified) {
        Fail(4104, "The multi-part identifier \"{}\" could not be bound.", name.Text());
    }
    Fail(207, "Invalid column name '{}'.", name.Last());
}

Binder::ScopeSource& Binder::AddTable(std::shared_ptr<const Table> table, const std::string& alias, bool outerSide) {
    ScopeSource& source = scope_->sources.emplace_back();
    source.alias = alias.empty() ? table->name : alias;
    source.tableName = table->name;
    source.sqlName = fmt::format("t{}", sourceCount_++);
    source.row = source.sqlName + ".rowid";
    for (const Column& column : table->columns) {
        Bound value;
        value.kind = Bound::Kind::column;
        value.text = source.sqlName + "." + Quoted(column.name);
        value.type = column.type;
        value.nullable = column.nullable || outerSide;
        value.column = &column;
        source.columns.push_back({column.name, std::move(value)});
    }
    source.table = std::move(table);
    return source;
}

std::string Binder::BindTable(const Source& source, bool outerSide) {
    if (recursion_ && source.name.parts.size() == 1 && EqualNames(source.name.Last(), recursion_->name)) {
        return BindRecursiveSource(source.alias);
    }
    if (const std::optional<std::size_t> common = FindCommon(source.name)) {
        return BindCommon(*common, source.alias, outerSide);
    }
    std::shared_ptr<const Table> table = catalog_.Get(source.name);
    if (table->view && !writtenName_.empty() &&
        EqualNames(source.alias.empty() ? table->name : source.alias, writtenName_)) {
        return BindTargetView(*table, source.alias, outerSide);
    }
    const ScopeSource& added = AddTable(std::move(table), source.alias, outerSide);
    if (use_ == LiteralUse::inlined && added.table->schema == Schema::temporary) {
        Fail(4508, "Views or functions are not allowed on temporary tables. Table names that begin with '#' denote "
                   "temporary tables.");
    }
    return fmt::format("{} AS {}", added.table->source, added.sqlName);
}

std::string Binder::BindDerived(const Source& source, bool outerSide) {
    BoundSelect select;
    {
        const ScopeGuard guard(*this, nullptr); // a derived table sees nothing of the query around it
        select = BindInner(*source.select);
    }
    return AddDerived(std::move(select), source.alias, source.columnAliases, outerSide);
}

std::string Binder::AddDerived(BoundSelect select, const std::string& alias,
                               const std::vector<std::string>& columnAliases, bool outerSide) {
    if (!columnAliases.empty() && columnAliases.size() != select.columns.size()) {
        FailColumnCount(alias, select.columns.size(), columnAliases.size());
    }
    ScopeSource added;
    added.alias = alias;
    added.sqlName = fmt::format("t{}", sourceCount_++);
    for (std::size_t i = 0; i < select.columns.size(); ++i) {
        OutputColumn& column = select.columns[i];
        const std::string& name = columnAliases.empty() ? column.name : columnAliases[i];
        if (name.empty()) {
            Fail(8155, "No column name was specified for column {} of '{}'.", i + 1, alias);
        }
        for (const ScopeColumn& other : added.columns) {
            if (EqualNames(other.name, name)) {
                Fail(8156, "The column '{}' was specified multiple times for '{}'.", name, alias);
            }
        }
        Bound value;
        value.kind = Bound::Kind::column;
        value.text = fmt::format("{}.c{}", added.sqlName, i);
        value.type = column.value.type;
        value.nullable = column.value.nullable || outerSide;
        added.columns.push_back({name, std::move(value)});
    }
    std::string text = fmt::format("({}) AS {}", select.Text(true, true), added.sqlName);
    scope_->sources.push_back(std::move(added));
    return text;
}

std::string Binder::BindSource(const Source& source, bool outerSide) {
    if (source.select) {
        return BindDerived(source, outerSide);
    }
    if (!source.left) {
        return BindTable(source, outerSide);
    }
    if (source.join == Join::crossApply || source.join == Join::outerApply) {
        return BindApply(source, outerSide);
    }
    const bool leftOuter = source.join == Join::right || source.join == Join::full;
    const bool rightOuter = source.join == Join::left || source.join == Join::full;
    std::string text = BindSource(*source.left, outerSide || leftOuter);
    switch (source.join) {
    case Join::inner:
        text += " JOIN ";
        break;
    case Join::left:
        text += " LEFT JOIN ";
        break;
    case Join::right:
        text += " RIGHT JOIN ";
        break;
    case Join::full:
        text += " FULL JOIN ";
        break;
    default:
        text += " CROSS JOIN ";
        break;
    }
    const std::string right = BindSource(*source.right, outerSide || rightOuter);
    text += source.right->left ? "(" + right + ")" : right;
    if (source.on) {
        text += " ON " + BindCondition(*source.on, true);
    }
    return text;
}

std::string Binder::BindApply(const Source& source, bool outerSide) {
    const bool outer = source.join == Join::outerApply;
    std::string text = BindSource(*source.left, outerSide);
    BoundSelect select;
    {
        const ScopeGuard guard(*this, scope_);
        select = source.right->select ? BindInner(*source.right->select) : BindWholeTable(*source.right);
    }
    if (select.columns.size() > mostAppliedColumns) {
        FailOwn(host::error_number::unspecified, "The embedded database applies queries of at most {} columns.",
                mostAppliedColumns);
    }
    std::string packed;
    for (std::size_t i = 0; i < select.columns.size(); ++i) {
        packed += fmt::format("{}s.c{}", i > 0 ? ", " : "", i);
    }
    const std::string query = select.Text(true, true);
    AddDerived(std::move(select), source.right->alias.empty() ? source.right->name.Last() : source.right->alias,
               source.right->columnAliases, outerSide || outer);
    ScopeSource& added = scope_->sources.back();
    for (ScopeColumn& column : added.columns) {
        column.value.kind = Bound::Kind::expression; // what is unpacked has no collation
    }
    return fmt::format("{}{} JOIN k_rows((SELECT k_pack({}) FROM ({}) AS s)) AS {}", text, outer ? " LEFT" : "", packed,
                       query, added.sqlName);
}

BoundSelect Binder::BindWholeTable(const Source& source) {
    Select select;
    SelectItem& item = select.items.emplace_back();
    item.value = Make(Node::star);
    auto& from = select.from.emplace_back(std::make_unique<Source>());
    from->name = source.name;
    return BindSelect(select);
}

std::string Binder::BindFrom(const std::vector<std::unique_ptr<Source>>& sources) {
    std::string text;
    for (const std::unique_ptr<Source>& source : sources) {
        // CROSS JOIN would fix the order for SQLite's planner; a comma leaves it free. Joins are kept together.
        text += text.empty() ? "" : ", ";
        const std::string bound = BindSource(*source, false);
        text += source->left && sources.size() > 1 ? "(" + bound + ")" : bound;
    }
    return text;
}

// Queries.

void Binder::ExpandStar(const Name& name, std::vector<OutputColumn>& columns) {
    bool any = false;
    for (const ScopeSource& source : scope_->sources) {
        if (!name.parts.empty() && !EqualNames(source.alias, name.Last())) {
            continue;
        }
        any = true;
        for (const ScopeColumn& column : source.columns) {
            columns.push_back({column.name, column.value});
        }
    }
    if (!any) {
        if (name.parts.empty()) {
            Fail(263, "Must specify table to select from.");
        }
        Fail(107, "The column prefix '{}' does not match with a table name or alias name used in the query.",
             name.Text());
    }
}

void Binder::BindItems(const std::vector<SelectItem>& items, std::vector<OutputColumn>& columns,
                       std::vector<std::vector<std::string>>& bare) {
    for (const SelectItem& item : items) {
        if (!item.variable.empty() && assigned_.empty()) {
            Fail(102, "Incorrect syntax near '='.");
        }
        if (item.value->node == Node::star) {
            ExpandStar(item.value->name, columns);
            while (bare.size() < columns.size()) {
                bare.push_back({columns[bare.size()].value.text});
            }
            continue;
        }
        scope_->bareColumns.clear();
        OutputColumn column;
        column.value = BindValue(*item.value);
        Own(column.value);
        column.name = item.alias;
        if (column.name.empty() && item.value->node == Node::column) {
            column.name = item.value->name.Last();
        }
        columns.push_back(std::move(column));
        bare.push_back(scope_->bareColumns);
    }
}

std::string Binder::BindGroupBy(const Select& select) {
    std::string text;
    for (const ExpressionPtr& expression : select.groupBy) {
        scope_->bareColumns.clear();
        Bound value = BindValue(*expression);
        Own(value);
        if (scope_->bareColumns.empty()) {
            Fail(164, "Each GROUP BY expression must contain at least one column that is not an outer reference.");
        }
        scope_->groups.push_back(value.text);
        text += (text.empty() ? " GROUP BY " : ", ") + Collated(value);
    }
    return text;
}

void Binder::CheckGrouped(const std::string& value, const std::vector<std::string>& bare, std::string_view place) {
    const std::vector<std::string>& groups = scope_->groups;
    const auto occurrences = [](std::string_view text, std::string_view part) {
        std::ptrdiff_t count = 0;
        for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size())) {
            ++count;
        }
        return count;
    };
    for (const std::string& column : bare) {
        // What stands in a grouped expression is grouped as well.
        std::ptrdiff_t left = std::count(bare.begin(), bare.end(), column);
        for (const std::string& group : groups) {
            left -= group == column ? left : occurrences(value, group) * occurrences(group, column);
        }
        if (left <= 0) {
            continue;
        }
        for (const ScopeSource& source : scope_->sources) {
            for (const ScopeColumn& candidate : source.columns) {
                if (candidate.value.text != column) {
                    continue;
                }
                if (place == orderByClause) {
                    Fail(8127,
                         "Column \"{}.{}\" is invalid in the ORDER BY clause because it is not contained in either an "
                         "aggregate function or the GROUP BY clause.",
                         source.alias, candidate.name);
                }
                Fail(place == havingClause ? Native(8121) : Native(8120),
                     "Column '{}.{}' is invalid in the {} because it is not contained in either an aggregate "
                     "function or the GROUP BY clause.",
                     source.alias, candidate.name, place);
            }
        }
    }
}

std::string Binder::BindRowCount(const Expression& count) {
    Bound value = BindValue(count);
    if (FamilyOf(value.type) != Family::integer) {
        Fail(1060, "The number of rows provided for a TOP or FETCH clauses row count parameter must be an integer.");
    }
    return Own(value);
}

std::string Binder::BindLimit(const Select& select, const std::vector<OutputColumn>& columns, const std::string& body) {
    if (select.offset) {
        const std::string count = select.fetch ? BindRowCount(*select.fetch) : "-1";
        return " LIMIT " + count + " OFFSET " + BindRowCount(*select.offset);
    }
    if (!select.top) {
        return {};
    }
    if (select.topTies) {
        if (select.orderBy.empty()) {
            Fail(1062, "The TOP N WITH TIES clause is not allowed without a corresponding ORDER BY clause.");
        }
        if (select.distinct || select.topPercent) {
            FailOwn(host::error_number::unspecified,
                    "The embedded database does not take WITH TIES together with DISTINCT or PERCENT.");
        }
        // As many rows as rank no lower than the last one wanted.
        return fmt::format(" LIMIT (SELECT count(*) FROM (SELECT rank() OVER ({}) AS place{}) WHERE place <= {})",
                           BindOrderBy(select, columns, Keys::spelled), body, BindRowCount(*select.top));
    }
    if (select.topPercent) {
        if (select.distinct) {
            FailOwn(host::error_number::unspecified,
                    "The embedded database does not take PERCENT together with DISTINCT.");
        }
        return fmt::format(" LIMIT (SELECT CAST(ceil(count(*) * {} / 100.0) AS INTEGER) FROM (SELECT 1{}))",
                           As(BindValue(*select.top), {Base::floating, 0, 0, 0}), body);
    }
    return " LIMIT " + BindRowCount(*select.top);
}

std::string Binder::BindOrderBy(const Select& select, const std::vector<OutputColumn>& columns, Keys keys) {
    std::string text;
    for (const OrderItem& item : select.orderBy) {
        std::optional<std::size_t> place;
        const Expression& value = *item.value;
        if (value.node == Node::literal && LiteralAt(value.literal).kind == LiteralKind::integer) {
            Pin(value.literal);
            const std::int64_t position = CellOf(LiteralAt(value.literal), false).integer;
            if (position < 1 || position > static_cast<std::int64_t>(columns.size())) {
                Fail(108, "The ORDER BY position number {} is out of range of the number of items in the select list.",
                     position);
            }
            place = static_cast<std::size_t>(position - 1);
        } else if (value.node == Node::column && value.name.parts.size() == 1) {
            const auto found = std::find_if(columns.begin(), columns.end(), [&](const OutputColumn& column) {
                return EqualNames(column.name, value.name.Last());
            });
            if (found != columns.end()) {
                place = static_cast<std::size_t>(found - columns.begin());
            }
        }
        std::string key;
        if (place) {
            key = keys == Keys::spelled ? Collated(columns[*place].value) : std::to_string(*place + 1);
        } else if (keys == Keys::answer) {
            Fail(104, "ORDER BY items must appear in the select list if the statement contains a UNION, INTERSECT or "
                      "EXCEPT operator.");
        } else {
            scope_->bareColumns.clear();
            Bound bound = BindValue(value);
            Own(bound);
            if (scope_->aggregated || !select.groupBy.empty()) {
                CheckGrouped(bound.text, scope_->bareColumns, orderByClause);
            }
            if (select.distinct && std::none_of(columns.begin(), columns.end(), [&](const OutputColumn& column) {
                    return column.value.text == bound.text;
                })) {
                Fail(145, "ORDER BY items must appear in the select list if SELECT DISTINCT is specified.");
            }
            key = Collated(bound);
        }
        text += (text.empty() ? " ORDER BY " : ", ") + key + (item.descending ? " DESC" : "");
    }
    return text;
}

BoundSelect::Member Binder::BindMember(const Select& select, std::vector<OutputColumn>& columns,
                                       const Select* orderOf) {
    Scope& scope = *scope_;
    BoundSelect::Member member;
    member.head = select.distinct ? "SELECT DISTINCT " : "SELECT ";
    std::string body = select.from.empty() ? std::string() : " FROM " + BindFrom(select.from);
    const auto isPlain = [](const ExpressionPtr& expression) { return expression->node == Node::column; };
    const bool sortsDistinct = select.distinct && orderOf != nullptr && !orderOf->orderBy.empty();
    const bool inlining = !std::all_of(select.groupBy.begin(), select.groupBy.end(), isPlain) || sortsDistinct;
    const bool outerInlining = std::exchange(inlining_, inlining_ || inlining);
    scope.bareColumns.clear();
    scope.windows = true;
    std::vector<std::vector<std::string>> bare;
    BindItems(select.items, columns, bare);
    scope.windows = false;
    inlining_ = outerInlining;
    if (select.where) {
        body += " WHERE " + BindCondition(*select.where, true);
    }
    inlining_ = inlining_ || inlining;
    body += BindGroupBy(select);
    if (scope.aggregated || !select.groupBy.empty()) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            CheckGrouped(columns[i].value.text, bare[i], selectList);
        }
    }
    scope.bareColumns.clear();
    if (select.having) {
        const std::string condition = BindCondition(*select.having, false);
        CheckGrouped(condition, scope.bareColumns, havingClause);
        body += " HAVING " + condition;
    }
    for (const OutputColumn& column : columns) {
        member.values.push_back(column.value);
    }
    member.tail = body;
    if (orderOf != nullptr) {
        scope.windows = true;
        member.tail += BindOrderBy(*orderOf, columns, Keys::any);
        scope.windows = false;
        inlining_ = outerInlining;
        member.tail += BindLimit(select, columns, body);
    } else if (select.top) {
        // A part of a set operation with a limit of its own.
        inlining_ = outerInlining;
        member.head = "SELECT * FROM (" + member.head;
        member.tail += BindLimit(select, columns, body) + ")";
    }
    inlining_ = outerInlining;
    return member;
}

void Binder::UnifyMembers(BoundSelect& bound) {
    for (std::size_t i = 0; i < bound.columns.size(); ++i) {
        Type type;
        bool nullable = false;
        for (const BoundSelect::Member& member : bound.members) {
            type = CommonType(type, member.values[i].type);
            nullable = nullable || member.values[i].nullable;
        }
        for (BoundSelect::Member& member : bound.members) {
            member.values[i] = Converted(member.values[i], type, 0, Surplus::cut);
        }
        bound.columns[i].value = bound.members[0].values[i];
        bound.columns[i].value.nullable = nullable;
    }
}

BoundSelect Binder::BindInner(const Select& select) {
    if (!select.orderBy.empty() && !select.top && !select.offset) {
        Fail(1033, "The ORDER BY clause is invalid in views, inline functions, derived tables, subqueries, and common "
                   "table expressions, unless TOP, OFFSET or FOR XML is also specified.");
    }
    return BindSelect(select);
}

BoundSelect Binder::BindSelect(const Select& select) {
    AddCommons(select.with);
    BoundSelect bound;
    const bool compound = select.next != nullptr;
    for (const Select* part = &select; part != nullptr; part = part->next.get()) {
        const ScopeGuard guard(*this, scope_);
        std::vector<OutputColumn> columns;
        bound.members.push_back(BindMember(*part, columns, compound ? nullptr : &select));
        const bool one = part->top && part->top->node == Node::literal && !part->topPercent && !part->topTies &&
                         LiteralAt(part->top->literal).body == "1";
        bound.single = !compound && (one || part->from.empty() || (scope_->aggregated && part->groupBy.empty()));
        if (part == &select) {
            bound.columns = std::move(columns);
        } else if (columns.size() != bound.columns.size()) {
            Fail(205, "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal "
                      "number of expressions in their target lists.");
        }
        if (part->next) {
            bound.operators.emplace_back(Keyword(part->operation));
        }
    }
    if (compound) {
        UnifyMembers(bound);
        bound.tail = BindOrderBy(select, bound.columns, Keys::answer);
        if (select.offset) {
            bound.tail += BindLimit(select, bound.columns, {});
        }
    }
    return bound;
}

Plan Binder::Finish(PlanKind kind, std::string text) {
    Plan plan;
    plan.kind = kind;
    plan.text = std::move(text);
    plan.slots = std::move(slots_);
    plan.pinned = Pinned();
    return plan;
}

Plan Binder::BindAssigningSelect(const Select& select) {
    std::vector<std::size_t> targets;
    for (const SelectItem& item : select.items) {
        if (item.variable.empty() || select.next) {
            Fail(141, "A SELECT statement that assigns a value to a variable must not be combined with "
                      "data-retrieval operations.");
        }
        targets.push_back(VariableAt(item.variable));
    }
    assigned_.insert(targets.begin(), targets.end());
    BoundSelect bound = BindSelect(select);
    if (accumulates_ && !select.orderBy.empty()) {
        // SQLite computes the values before it sorts.
        FailOwn(host::error_number::unspecified,
                "The embedded database does not carry a variable from row to row of a sorted query. Use STRING_AGG.");
    }
    for (std::size_t i = 0; i < targets.size(); ++i) {
        Bound& value = bound.members.front().values[i];
        value = Converted(std::move(value), (*session_.variables)[targets[i]].type, 0, Surplus::cut);
    }
    Plan plan = Finish(PlanKind::select, bound.Text(false, false));
    plan.assigned = std::move(targets);
    return plan;
}

Plan Binder::BindSelectPlan(const Select& select) {
    if (std::any_of(select.items.begin(), select.items.end(),
                    [](const SelectItem& item) { return !item.variable.empty(); })) {
        return BindAssigningSelect(select);
    }
    const BoundSelect bound = BindSelect(select);
    Plan plan = Finish(PlanKind::select, bound.Text(false, false));
    Describe(plan, bound.columns);
    return plan;
}

void Binder::Describe(Plan& plan, const std::vector<OutputColumn>& columns) {
    auto fields = std::make_shared<Fields>();
    for (const OutputColumn& column : columns) {
        fields->push_back(FieldOf(column.name, column.value.type, column.value.nullable));
        plan.types.push_back(column.value.type);
    }
    plan.fields = std::move(fields);
}

Plan Binder::BindValuePlan(const Expression& expression, const Type& type) {
    const ScopeGuard guard(*this, nullptr);
    std::string text = "SELECT " + As(BindValue(expression), type);
    Plan plan = Finish(PlanKind::select, std::move(text));
    plan.types.push_back(type);
    return plan;
}

Plan Binder::BindConditionPlan(const Expression& condition) {
    const ScopeGuard guard(*this, nullptr);
    std::string text = "SELECT CASE WHEN " + BindCondition(condition, true) + " THEN 1 ELSE 0 END";
    Plan plan = Finish(PlanKind::select, std::move(text));
    plan.types.push_back({Base::integer, 0, 0, 0});
    plan.fields = std::make_shared<Fields>(1);
    return plan;
}

} // namespace refhost::sql
