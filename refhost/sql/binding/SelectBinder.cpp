#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>

namespace refhost::sql {
namespace {

constexpr std::string_view selectList = "select list";
constexpr std::string_view havingClause = "HAVING clause";

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

/// Opens a scope for the life of the object.
class Binder::ScopeGuard {
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

Binder::ScopeSource& Binder::AddTable(std::shared_ptr<const Table> table, std::string alias, bool outerSide) {
    ScopeSource& source = scope_->sources.emplace_back();
    source.alias = alias.empty() ? table->name : std::move(alias);
    source.tableName = table->name;
    source.sqlName = fmt::format("t{}", sourceCount_++);
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
    const ScopeSource& added = AddTable(catalog_.Get(source.name), source.alias, outerSide);
    return fmt::format("{} AS {}", added.table->source, added.sqlName);
}

std::string Binder::BindDerived(const Source& source, bool outerSide) {
    BoundSelect select;
    {
        const ScopeGuard guard(*this, nullptr); // a derived table sees nothing of the query around it
        select = BindSelect(*source.select);
    }
    if (!source.columnAliases.empty() && source.columnAliases.size() != select.columns.size()) {
        FailColumnCount(source.alias, select.columns.size(), source.columnAliases.size());
    }
    ScopeSource added;
    added.alias = source.alias;
    added.sqlName = fmt::format("t{}", sourceCount_++);
    for (std::size_t i = 0; i < select.columns.size(); ++i) {
        OutputColumn& column = select.columns[i];
        const std::string& name = source.columnAliases.empty() ? column.name : source.columnAliases[i];
        if (name.empty()) {
            Fail(8155, "No column name was specified for column {} of '{}'.", i + 1, source.alias);
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
    case Join::cross:
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
            scope_->bareColumns.push_back(column.value.text);
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

void Binder::BindItems(const Select& select, std::vector<OutputColumn>& columns) {
    for (const SelectItem& item : select.items) {
        if (!item.variable.empty() && assigned_.empty()) {
            Fail(102, "Incorrect syntax near '='.");
        }
        if (item.value->node == Node::star) {
            ExpandStar(item.value->name, columns);
            continue;
        }
        OutputColumn column;
        column.value = BindValue(*item.value);
        Own(column.value);
        column.name = item.alias;
        if (column.name.empty() && item.value->node == Node::column) {
            column.name = item.value->name.Last();
        }
        columns.push_back(std::move(column));
    }
}

std::string Binder::BindGroupBy(const Select& select) {
    std::string text;
    for (const ExpressionPtr& expression : select.groupBy) {
        Bound value = BindValue(*expression);
        Own(value);
        scope_->groups.push_back(value.text);
        text += (text.empty() ? " GROUP BY " : ", ") + Collated(value);
    }
    return text;
}

void Binder::CheckGrouped(const Bound& value, std::string_view place) {
    Scope& scope = *scope_;
    const std::vector<std::string> used = std::move(scope.bareColumns);
    scope.bareColumns.clear();
    const auto grouped = [&](const std::string& text) {
        return std::find(scope.groups.begin(), scope.groups.end(), text) != scope.groups.end();
    };
    if (grouped(value.text)) {
        return;
    }
    for (const std::string& text : used) {
        if (grouped(text)) {
            continue;
        }
        for (const ScopeSource& source : scope.sources) {
            for (const ScopeColumn& column : source.columns) {
                if (column.value.text == text) {
                    Fail(place == havingClause ? Native(8121) : Native(8120),
                         "Column '{}.{}' is invalid in the {} because it is not contained in either an aggregate "
                         "function or the GROUP BY clause.",
                         source.alias, column.name, place);
                }
            }
        }
    }
}

std::string Binder::BindTop(const Select& select) {
    if (!select.top) {
        return {};
    }
    if (select.topPercent) {
        FailOwn(host::error_number::unspecified, "TOP with PERCENT is not available in this database.");
    }
    Bound count = BindValue(*select.top);
    if (FamilyOf(count.type) != Family::integer) {
        Fail(1060, "The number of rows provided for a TOP or FETCH clauses row count parameter must be an "
                   "integer.");
    }
    return " LIMIT " + Own(count);
}

std::string Binder::BindOrderBy(const std::vector<OrderItem>& items, const std::vector<OutputColumn>& columns,
                                bool outputOnly) {
    std::string text;
    for (const OrderItem& item : items) {
        std::string key;
        const Expression& value = *item.value;
        if (value.node == Node::literal && LiteralAt(value.literal).kind == LiteralKind::integer) {
            Pin(value.literal);
            const std::int64_t position = CellOf(LiteralAt(value.literal), false).integer;
            if (position < 1 || position > static_cast<std::int64_t>(columns.size())) {
                Fail(108, "The ORDER BY position number {} is out of range of the number of items in the select list.",
                     position);
            }
            key = std::to_string(position);
        } else if (value.node == Node::column && value.name.parts.size() == 1) {
            for (std::size_t i = 0; i < columns.size() && key.empty(); ++i) {
                if (EqualNames(columns[i].name, value.name.Last())) {
                    key = std::to_string(i + 1);
                }
            }
        }
        if (key.empty()) {
            if (outputOnly) {
                Fail(104, "ORDER BY items must appear in the select list if the statement contains a UNION, "
                          "INTERSECT or EXCEPT operator.");
            }
            Bound bound = BindValue(value);
            Own(bound);
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
    std::string from = select.from.empty() ? std::string() : " FROM " + BindFrom(select.from);
    scope.bareColumns.clear();
    BindItems(select, columns);
    const std::vector<std::string> itemColumns = std::move(scope.bareColumns);
    std::string tail = std::move(from);
    if (select.where) {
        tail += " WHERE " + BindCondition(*select.where, true);
    }
    tail += BindGroupBy(select);
    scope.bareColumns = itemColumns;
    if (scope.aggregated || !select.groupBy.empty()) {
        for (const OutputColumn& column : columns) {
            // Whole items may be grouped; the columns of the rest are tested together below.
            if (std::find(scope.groups.begin(), scope.groups.end(), column.value.text) != scope.groups.end()) {
                std::erase_if(scope.bareColumns, [&](const std::string& text) {
                    return column.value.text.find(text) != std::string::npos;
                });
            }
        }
        CheckGrouped(Bound(), selectList);
    }
    scope.bareColumns.clear();
    if (select.having) {
        tail += " HAVING " + BindCondition(*select.having, false);
        CheckGrouped(Bound(), havingClause);
    }
    for (const OutputColumn& column : columns) {
        member.values.push_back(column.value);
    }
    if (orderOf != nullptr) {
        tail += BindOrderBy(orderOf->orderBy, columns, false);
        tail += BindTop(select);
    } else if (select.top) {
        // A part of a set operation with a limit of its own.
        member.head = "SELECT * FROM (" + member.head;
        tail += BindTop(select) + ")";
    }
    member.tail = std::move(tail);
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

BoundSelect Binder::BindSelect(const Select& select) {
    BoundSelect bound;
    const bool compound = select.next != nullptr;
    for (const Select* part = &select; part != nullptr; part = part->next.get()) {
        const ScopeGuard guard(*this, scope_);
        std::vector<OutputColumn> columns;
        bound.members.push_back(BindMember(*part, columns, compound ? nullptr : &select));
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
        bound.tail = BindOrderBy(select.orderBy, bound.columns, true);
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
    auto fields = std::make_shared<Fields>();
    for (const OutputColumn& column : bound.columns) {
        fields->push_back(FieldOf(column.name, column.value.type, column.value.nullable));
        plan.types.push_back(column.value.type);
    }
    plan.fields = std::move(fields);
    return plan;
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
