#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>

namespace refhost::sql {
namespace {

std::string RowVersionCall(const Table& table) {
    return fmt::format("k_rowversion({})", static_cast<int>(table.schema));
}

bool IsEmptyValue(const Expression& value) { return value.node == Node::null || value.node == Node::default_; }

} // namespace

Binder::WriteTarget Binder::FindTarget(const Name& name) {
    if (FindCommon(name)) {
        FailOwn(host::error_number::unspecified,
                "The embedded database does not write through a common table expression.");
    }
    std::shared_ptr<const Table> table = catalog_.Get(name);
    return table->view ? OpenView(*table) : WriteTarget{std::move(table), false, {}, {}};
}

std::shared_ptr<const Table> Binder::WritableTable(const Name& name) {
    WriteTarget target = FindTarget(name);
    if (target.view) {
        FailOwn(host::error_number::unspecified,
                "The embedded database joins tables to a table that it writes, and not to a view such as '{}'.",
                name.Text());
    }
    return std::move(target.table);
}

void Binder::RefuseExplicit(const Table& table, const Column& column, bool insert) const {
    if (column.identity) {
        if (!insert) {
            Fail(8102, "Cannot update identity column '{}'.", column.name);
        }
        if (session_.identityInsert != table.id) {
            Fail(544,
                 "Cannot insert explicit value for identity column in table '{}' when IDENTITY_INSERT is set to OFF.",
                 table.name);
        }
    }
    if (column.type.base == Base::timestamp) {
        if (!insert) {
            Fail(272, "Cannot update a timestamp column.");
        }
        Fail(273, "Cannot insert an explicit value into a timestamp column. Use INSERT with a column list to "
                  "exclude the timestamp column, or insert a DEFAULT into the timestamp column.");
    }
}

void Binder::RefuseOutput(const std::vector<SelectItem>& items, const WriteTarget& target) {
    if (!items.empty() && target.view) {
        FailOwn(host::error_number::unspecified, "The embedded database gives no OUTPUT of writes through a view.");
    }
}

std::string Binder::BindOutput(const std::vector<SelectItem>& items, const Table& table, const std::string& rows) {
    if (items.empty()) {
        return {};
    }
    const ScopeGuard guard(*this, nullptr);
    ScopeSource source;
    source.alias = rows;
    for (const Column& column : table.columns) {
        Bound value;
        value.kind = Bound::Kind::column;
        value.text = Quoted(column.name);
        value.type = column.type;
        value.nullable = column.nullable;
        source.columns.push_back({column.name, std::move(value)});
    }
    scope_->sources.push_back(std::move(source));
    std::vector<std::vector<std::string>> bare;
    BindItems(items, output_, bare);
    if (scope_->aggregated) {
        FailOwn(host::error_number::syntaxError, "An aggregate may not appear in the OUTPUT clause.");
    }
    std::string text;
    for (const OutputColumn& column : output_) {
        text += (text.empty() ? " RETURNING " : ", ") + column.value.text;
    }
    return text;
}

Plan Binder::FinishWrite(PlanKind kind, std::string text, std::shared_ptr<const Table> table) {
    Plan plan = Finish(kind, std::move(text));
    plan.target = std::move(table);
    if (!output_.empty()) {
        Describe(plan, output_);
    }
    return plan;
}

std::string Binder::BindAssigned(const Expression& value, const Column& column) {
    if (value.node == Node::default_) {
        return column.defaultText.empty() ? "NULL" : BindDefault(column);
    }
    return As(BindValue(value), column.type, 0, Surplus::refuse);
}

Plan Binder::BindInsert(const Insert& insert) {
    const WriteTarget written = FindTarget(insert.table);
    const std::shared_ptr<const Table> table = written.table;
    const bool explicitIdentity = session_.identityInsert == table->id && table->id != 0;
    std::vector<int> targets;
    for (const std::string& name : insert.columns) {
        const int position = written.Find(name);
        if (position < 0) {
            Fail(207, "Invalid column name '{}'.", name);
        }
        if (std::find(targets.begin(), targets.end(), position) != targets.end()) {
            Fail(
                264,
                "The column name '{}' is specified more than once in the SET clause or column list of an INSERT. A "
                "column cannot be assigned more than one value in the same clause. Modify the clause to make sure that "
                "a column is updated only once. If this statement updates or inserts columns to a view, column "
                "aliasing can conceal the duplication in your code.",
                name);
        }
        targets.push_back(position);
    }
    const bool listed = !insert.columns.empty();
    if (!listed && !insert.defaultValues) {
        const auto add = [&](std::size_t place) {
            if (!table->columns[place].identity) {
                targets.push_back(static_cast<int>(place));
            }
        };
        for (const auto& [name, place] : written.columns) {
            add(static_cast<std::size_t>(place));
        }
        for (std::size_t i = 0; i < table->columns.size() && !written.view; ++i) {
            add(i);
        }
    }
    const auto requireCount = [&](std::size_t count) {
        if (count == targets.size()) {
            return;
        }
        if (!listed) {
            Fail(213, "Column name or number of supplied values does not match table definition.");
        }
        const bool query = insert.select != nullptr;
        if (query) {
            const bool fewer = count < targets.size();
            Fail(fewer ? Native(120) : Native(121),
                 "The select list for the INSERT statement contains {} items than the insert list. The number of "
                 "SELECT values must match the number of INSERT columns.",
                 fewer ? "fewer" : "more");
        }
        const bool more = count < targets.size();
        Fail(more ? Native(109) : Native(110),
             "There are {} columns in the INSERT statement than values specified in the VALUES clause. The number of "
             "values in the VALUES clause must match the number of columns specified in the INSERT statement.",
             more ? "more" : "fewer");
    };
    // What the database itself fills in.
    std::vector<std::pair<int, std::string>> automatic;
    for (std::size_t i = 0; i < table->columns.size(); ++i) {
        const Column& column = table->columns[i];
        if (column.type.base == Base::timestamp) {
            automatic.emplace_back(static_cast<int>(i), RowVersionCall(*table));
        } else if (!column.defaultText.empty() &&
                   std::find(targets.begin(), targets.end(), static_cast<int>(i)) == targets.end()) {
            automatic.emplace_back(static_cast<int>(i), BindDefault(column));
        } else if (!column.nullable && !column.identity &&
                   std::find(targets.begin(), targets.end(), static_cast<int>(i)) == targets.end()) {
            automatic.emplace_back(static_cast<int>(i), "NULL"); // refused when it runs, as it should be
        }
    }
    for (const std::vector<ExpressionPtr>& row : insert.rows) {
        requireCount(row.size());
    }
    std::string columns;
    std::vector<std::size_t> used;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const Column& column = table->columns[static_cast<std::size_t>(targets[i])];
        const bool empty = !insert.rows.empty() && std::all_of(insert.rows.begin(), insert.rows.end(),
                                                               [&](const auto& row) { return IsEmptyValue(*row[i]); });
        if (column.type.base == Base::timestamp && empty) {
            continue;
        }
        if (!(column.identity && explicitIdentity)) {
            RefuseExplicit(*table, column, true);
        }
        used.push_back(i);
        columns += (columns.empty() ? "" : ", ") + Quoted(column.name);
    }
    for (const auto& [position, value] : automatic) {
        columns += (columns.empty() ? "" : ", ") + Quoted(table->columns[static_cast<std::size_t>(position)].name);
    }
    std::string text = fmt::format("INSERT INTO {}", table->source);
    if (columns.empty()) {
        text += " DEFAULT VALUES";
    } else if (insert.select) {
        BoundSelect select = BindSelect(*insert.select);
        requireCount(select.columns.size());
        text += fmt::format(" ({}) SELECT ", columns);
        for (const std::size_t i : used) {
            Bound value;
            value.text = fmt::format("s.c{}", i);
            value.type = select.columns[i].value.type;
            text += (i == used.front() ? "" : ", ") +
                    As(std::move(value), table->columns[static_cast<std::size_t>(targets[i])].type, 0, Surplus::refuse);
        }
        for (const auto& [position, value] : automatic) {
            text += ", " + value;
        }
        text += fmt::format(" FROM ({}) AS s", select.Text(true, true));
    } else {
        text += fmt::format(" ({}) VALUES ", columns);
        const std::size_t rows = insert.defaultValues ? 1 : insert.rows.size();
        for (std::size_t r = 0; r < rows; ++r) {
            std::string values;
            for (const std::size_t i : used) {
                values += (values.empty() ? "" : ", ") +
                          BindAssigned(*insert.rows[r][i], table->columns[static_cast<std::size_t>(targets[i])]);
            }
            for (const auto& [position, value] : automatic) {
                values += (values.empty() ? "" : ", ") + value;
            }
            text += fmt::format("{}({})", r > 0 ? ", " : "", values);
        }
    }
    RefuseOutput(insert.output, written);
    text += BindOutput(insert.output, *table, "inserted");
    return FinishWrite(PlanKind::insert, std::move(text), table);
}

Plan Binder::BindSelectInto(const Select& select, std::shared_ptr<const Table> target) {
    const BoundSelect bound = BindSelect(select);
    std::string columns;
    std::string values;
    for (std::size_t i = 0; i < target->columns.size(); ++i) {
        columns += (i > 0 ? ", " : "") + Quoted(target->columns[i].name);
        values += fmt::format("{}s.c{}", i > 0 ? ", " : "", i);
    }
    Plan plan = Finish(PlanKind::insert, fmt::format("INSERT INTO {} ({}) SELECT {} FROM ({}) AS s", target->source,
                                                     columns, values, bound.Text(true, true)));
    plan.target = std::move(target);
    return plan;
}

std::string Binder::BindWritten(const ScopeSource& source, const Expression* where, const Expression* top,
                                const std::string& rows) {
    std::string condition = rows.empty() ? std::string() : fmt::format(" WHERE {}.rowid IN ({})", source.sqlName, rows);
    if (where != nullptr) {
        condition += (condition.empty() ? " WHERE " : " AND ") + BindCondition(*where, condition.empty());
    }
    return top == nullptr ? condition
                          : fmt::format(" WHERE rowid IN (SELECT {0}.rowid FROM {1} AS {0}{2} LIMIT {3})",
                                        source.sqlName, source.table->source, condition, BindRowCount(*top));
}

Plan Binder::BindUpdate(const Update& update) {
    AddCommons(update.with);
    Scope scope;
    scope_ = &scope;
    std::string from;
    std::shared_ptr<const Table> table;
    WriteTarget written;
    std::string joined;
    if (update.from.empty()) {
        written = FindTarget(update.target);
        table = written.table;
        AddTarget(written, update.target);
    } else {
        from = BindFrom(update.from);
        // The target is one of the tables of the FROM clause, by alias or by name, or else joins them.
        for (const ScopeSource& source : scope.sources) {
            if (source.table && (EqualNames(source.alias, update.target.Last()) ||
                                 EqualNames(source.tableName, update.target.Last()))) {
                table = source.table;
                joined = source.sqlName;
                break;
            }
        }
        if (!table) {
            table = WritableTable(update.target);
            joined = AddTable(table, {}, false).sqlName;
            from += fmt::format(", {} AS {}", table->source, joined);
        } else if (table->view) {
            WritableTable({{table->name}});
        }
    }
    std::string text =
        fmt::format("UPDATE {} AS {} SET ", table->source, from.empty() ? scope.sources.front().sqlName : "target");
    // With a FROM clause the new values are columns of a query that also tells the row they belong to.
    std::string query = fmt::format("SELECT {}.rowid AS id", joined);
    std::vector<int> assigned;
    for (const Assignment& assignment : update.assignments) {
        const int position = update.from.empty() ? written.Find(assignment.column) : table->Find(assignment.column);
        if (position < 0) {
            Fail(207, "Invalid column name '{}'.", assignment.column);
        }
        if (std::find(assigned.begin(), assigned.end(), position) != assigned.end()) {
            Fail(
                264,
                "The column name '{}' is specified more than once in the SET clause or column list of an INSERT. A "
                "column cannot be assigned more than one value in the same clause. Modify the clause to make sure that "
                "a column is updated only once. If this statement updates or inserts columns to a view, column "
                "aliasing can conceal the duplication in your code.",
                assignment.column);
        }
        const Column& column = table->columns[static_cast<std::size_t>(position)];
        RefuseExplicit(*table, column, false);
        std::string value = BindAssigned(*assignment.value, column);
        if (!from.empty()) {
            query += fmt::format(", {} AS c{}", value, position);
            value = fmt::format("s.c{}", position);
        }
        text += (assigned.empty() ? "" : ", ") + Quoted(column.name) + " = " + value;
        assigned.push_back(position);
    }
    if (const int version = table->RowVersion(); version >= 0) {
        text += fmt::format(", {} = {}", Quoted(table->columns[static_cast<std::size_t>(version)].name),
                            RowVersionCall(*table));
    }
    if (!from.empty()) {
        query += " FROM " + from;
        if (update.where) {
            query += " WHERE " + BindCondition(*update.where, false);
        }
        query += update.top ? " LIMIT " + BindRowCount(*update.top) : std::string();
        text += fmt::format(" FROM ({}) AS s WHERE target.rowid = s.id", query);
    } else {
        text += BindWritten(scope.sources.front(), update.where.get(), update.top.get(), written.rows);
    }
    scope_ = nullptr;
    RefuseOutput(update.output, written);
    for (const SelectItem& item : update.output) {
        const Name& name = item.value->name;
        if (name.parts.size() > 1 && EqualNames(name.parts.front(), "deleted")) {
            FailOwn(host::error_number::unspecified,
                    "The embedded database gives no values from before an UPDATE: OUTPUT takes inserted alone.");
        }
    }
    text += BindOutput(update.output, *table, "inserted");
    return FinishWrite(PlanKind::update, std::move(text), table);
}

Plan Binder::BindDelete(const Delete& del) {
    AddCommons(del.with);
    Scope scope;
    scope_ = &scope;
    std::shared_ptr<const Table> table;
    WriteTarget written;
    std::string text;
    if (del.from.empty()) {
        written = FindTarget(del.target);
        table = written.table;
        const ScopeSource& source = AddTarget(written, del.target);
        text = fmt::format("DELETE FROM {} AS {}", table->source, source.sqlName);
        text += BindWritten(source, del.where.get(), del.top.get(), written.rows);
    } else {
        const std::string from = BindFrom(del.from);
        std::string joined;
        for (const ScopeSource& source : scope.sources) {
            if (source.table &&
                (EqualNames(source.alias, del.target.Last()) || EqualNames(source.tableName, del.target.Last()))) {
                table = source.table;
                joined = source.sqlName;
                break;
            }
        }
        if (!table || table->view) {
            Fail(208, "Invalid object name '{}'.", del.target.Text());
        }
        text = fmt::format("DELETE FROM {} AS target WHERE target.rowid IN (SELECT {}.rowid FROM {}{})", table->source,
                           joined, from, del.where ? " WHERE " + BindCondition(*del.where, true) : "");
        if (del.top) {
            text.insert(text.size() - 1, " LIMIT " + BindRowCount(*del.top));
        }
    }
    scope_ = nullptr;
    RefuseOutput(del.output, written);
    text += BindOutput(del.output, *table, "deleted");
    return FinishWrite(PlanKind::del, std::move(text), table);
}

} // namespace refhost::sql
