#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>

namespace refhost::sql {
namespace {

std::string RowVersionCall(const Table& table) {
    return fmt::format("k_rowversion({})", static_cast<int>(table.schema));
}

/// The next number of an identity column that does not count by 1.
std::string NextIdentityCall(const Table& table, const Column& column) {
    Cell name;
    name.SetText(table.name);
    return fmt::format("k_nextidentity({}, {}, {}, {})", static_cast<int>(table.schema), Spelled(name), column.seed,
                       column.step);
}

[[noreturn]] void FailNoColumn(const std::string& name) { Fail(207, "Invalid column name '{}'.", name); }

[[noreturn]] void FailTwice(const std::string& name) {
    Fail(264,
         "The column name '{}' is specified more than once in the SET clause or column list of an INSERT. A "
         "column cannot be assigned more than one value in the same clause. Modify the clause to make sure that "
         "a column is updated only once. If this statement updates or inserts columns to a view, column "
         "aliasing can conceal the duplication in your code.",
         name);
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
    if (!column.computedText.empty()) {
        Fail(271,
             "The column \"{}\" cannot be modified because it is either a computed column or is the result of a UNION "
             "operator.",
             column.name);
    }
    if (column.type.base == Base::timestamp) {
        if (!insert) {
            Fail(272, "Cannot update a timestamp column.");
        }
        Fail(273, "Cannot insert an explicit value into a timestamp column. Use INSERT with a column list to "
                  "exclude the timestamp column, or insert a DEFAULT into the timestamp column.");
    }
}

std::string Binder::VersionAssignment(const Table& table) {
    const int version = table.RowVersion();
    return version < 0 ? std::string()
                       : fmt::format(", {} = {}", Quoted(table.columns[static_cast<std::size_t>(version)].name),
                                     RowVersionCall(table));
}

Plan Binder::FinishWrite(PlanKind kind, std::string text, std::shared_ptr<const Table> table) {
    Plan plan = Finish(kind, std::move(text));
    plan.target = std::move(table);
    return plan;
}

std::string Binder::BindAssigned(const Expression& value, const Column& column) {
    if (value.node == Node::default_) {
        return column.defaultText.empty() ? "NULL" : BindDefault(column);
    }
    return As(BindValue(value), column.type, 0, Surplus::refuse);
}

std::string Binder::InsertShape::Columns() const {
    std::string text;
    for (const Column* column : columns) {
        text += (text.empty() ? "" : ", ") + Quoted(column->name);
    }
    for (const auto& [column, value] : automatic) {
        text += (text.empty() ? "" : ", ") + Quoted(column->name);
    }
    return text;
}

Binder::InsertShape Binder::ShapeInsert(const WriteTarget& target, const std::vector<std::string>& names,
                                        bool defaultValues, const std::function<bool(std::size_t)>& isEmpty) {
    const Table& table = *target.table;
    std::vector<int> places;
    for (const std::string& name : names) {
        const int place = target.Find(name);
        if (place < 0) {
            FailNoColumn(name);
        }
        if (std::ranges::find(places, place) != places.end()) {
            FailTwice(name);
        }
        places.push_back(place);
    }
    if (names.empty() && !defaultValues) {
        const auto add = [&](std::size_t place) {
            if (!table.columns[place].identity && table.columns[place].computedText.empty()) {
                places.push_back(static_cast<int>(place));
            }
        };
        for (const auto& [name, place] : target.columns) {
            add(static_cast<std::size_t>(place));
        }
        for (std::size_t i = 0; i < table.columns.size() && !target.view; ++i) {
            add(i);
        }
    }
    InsertShape shape;
    shape.count = places.size();
    const bool explicitIdentity = session_.identityInsert == table.id && table.id != 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Column& column = table.columns[static_cast<std::size_t>(places[i])];
        if (column.type.base == Base::timestamp && isEmpty(i)) {
            continue;
        }
        if (!(column.identity && explicitIdentity)) {
            RefuseExplicit(table, column, true);
        }
        shape.used.push_back(i);
        shape.columns.push_back(&column);
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const Column& column = table.columns[i];
        const bool given = std::ranges::find(places, static_cast<int>(i)) != places.end();
        if (column.type.base == Base::timestamp) {
            shape.automatic.emplace_back(&column, RowVersionCall(table));
        } else if (given || !column.computedText.empty()) {
            continue;
        } else if (column.identity) {
            if (column.step != 1) {
                shape.automatic.emplace_back(&column, NextIdentityCall(table, column));
            }
        } else if (!column.defaultText.empty()) {
            shape.automatic.emplace_back(&column, BindDefault(column));
        } else if (!column.nullable) {
            shape.automatic.emplace_back(&column, "NULL"); // refused when it runs, as it should be
        }
    }
    return shape;
}

void Binder::RequireCount(const InsertShape& shape, std::size_t count, bool listed, bool query) {
    if (count == shape.count) {
        return;
    }
    if (!listed) {
        Fail(213, "Column name or number of supplied values does not match table definition.");
    }
    if (query) {
        const bool fewer = count < shape.count;
        Fail(fewer ? Native(120) : Native(121),
             "The select list for the INSERT statement contains {} items than the insert list. The number of "
             "SELECT values must match the number of INSERT columns.",
             fewer ? "fewer" : "more");
    }
    const bool more = count < shape.count;
    Fail(more ? Native(109) : Native(110),
         "There are {} columns in the INSERT statement than values specified in the VALUES clause. The number of "
         "values in the VALUES clause must match the number of columns specified in the INSERT statement.",
         more ? "more" : "fewer");
}

Plan Binder::BindInsert(const Insert& insert) {
    const WriteTarget written = FindTarget(insert.table);
    const std::shared_ptr<const Table> table = written.table;
    const InsertShape shape = ShapeInsert(written, insert.columns, insert.defaultValues, [&](std::size_t place) {
        return !insert.rows.empty() && std::ranges::all_of(insert.rows, [&](const std::vector<ExpressionPtr>& row) {
            return place < row.size() && IsEmptyValue(*row[place]);
        });
    });
    const bool listed = !insert.columns.empty();
    for (const std::vector<ExpressionPtr>& row : insert.rows) {
        RequireCount(shape, row.size(), listed, false);
    }
    // Written row by row, the rows are chosen without what the database fills in.
    const bool byRows = !insert.outputs.empty();
    Choice choice{PlanKind::insert, "NULL", {}, {}, {}};
    std::string text;
    if (insert.select) {
        const BoundSelect select = BindSelect(*insert.select);
        RequireCount(shape, select.columns.size(), listed, true);
        for (std::size_t i = 0; i < shape.used.size(); ++i) {
            Bound value;
            value.text = fmt::format("s.c{}", shape.used[i]);
            value.type = select.columns[shape.used[i]].value.type;
            choice.values.push_back(As(std::move(value), shape.columns[i]->type, 0, Surplus::refuse));
        }
        choice.body = fmt::format(" FROM ({}) AS s", select.Text(true, true));
        text = "SELECT ";
        for (const std::string& value : choice.values) {
            text += (&value == &choice.values.front() ? "" : ", ") + value;
        }
        for (const auto& [column, value] : shape.automatic) {
            text += (text.ends_with("SELECT ") ? "" : ", ") + value;
        }
        text += choice.body;
    } else {
        const std::size_t rows = insert.defaultValues ? 1 : insert.rows.size();
        text = "VALUES ";
        for (std::size_t r = 0; r < rows; ++r) {
            std::string values = byRows ? "NULL" : "";
            for (std::size_t i = 0; i < shape.used.size(); ++i) {
                values +=
                    (values.empty() ? "" : ", ") + BindAssigned(*insert.rows[r][shape.used[i]], *shape.columns[i]);
            }
            for (std::size_t i = 0; i < shape.automatic.size() && !byRows; ++i) {
                values += (values.empty() ? "" : ", ") + shape.automatic[i].second;
            }
            text += fmt::format("{}({})", r > 0 ? ", " : "", values);
        }
        if (byRows) {
            for (std::size_t i = 0; i < shape.used.size(); ++i) {
                choice.values.push_back(fmt::format("column{}", i + 2));
            }
            choice.body = fmt::format(" FROM ({})", text);
        }
    }
    if (byRows) {
        const ScopeGuard guard(*this, nullptr);
        RowPlan rows;
        AddRowWrite(rows, choice, InsertOfRows(written, shape), written, nullptr, insert.outputs);
        return FinishRows(std::move(rows), insert.outputs, table);
    }
    const std::string columns = shape.Columns();
    text = columns.empty() ? fmt::format("INSERT INTO {} DEFAULT VALUES", table->source)
                           : fmt::format("INSERT INTO {} ({}) {}", table->source, columns, text);
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

std::vector<Binder::BoundAssignment> Binder::BindAssignments(const std::vector<Assignment>& assignments,
                                                             const WriteTarget& target) {
    std::vector<BoundAssignment> bound;
    for (const Assignment& assignment : assignments) {
        const int place = target.Find(assignment.column);
        if (place < 0) {
            FailNoColumn(assignment.column);
        }
        const Column& column = target.table->columns[static_cast<std::size_t>(place)];
        if (std::ranges::any_of(bound, [&](const BoundAssignment& each) { return each.column == &column; })) {
            FailTwice(assignment.column);
        }
        RefuseExplicit(*target.table, column, false);
        bound.push_back({&column, BindAssigned(*assignment.value, column)});
    }
    return bound;
}

const Binder::ScopeSource* Binder::BindWrittenFrom(const std::vector<std::unique_ptr<Source>>& sources,
                                                   const Name& target, std::string& from) {
    writtenName_ = target.Last();
    from = BindFrom(sources);
    writtenName_.clear();
    const auto found = std::ranges::find_if(scope_->sources, [&](const ScopeSource& source) {
        return source.table && (EqualNames(source.alias, target.Last()) || EqualNames(source.tableName, target.Last()));
    });
    return found == scope_->sources.end() ? nullptr : &*found;
}

Plan Binder::BindUpdate(const Update& update) {
    AddCommons(update.with);
    const ScopeGuard guard(*this, nullptr);
    WriteTarget written;
    Choice choice{PlanKind::update, {}, {}, {}, {}};
    std::size_t place = 0;
    if (update.from.empty()) {
        written = FindTarget(update.target);
        AddTarget(written, update.target.Last());
    } else {
        std::string from;
        const ScopeSource* source = BindWrittenFrom(update.from, update.target, from);
        if (source != nullptr) {
            place = static_cast<std::size_t>(source - scope_->sources.data());
            written = source->written ? *source->written : WriteTarget{source->table, false, {}, {}};
        } else {
            // What the clause does not name joins its tables.
            written = FindTarget(update.target);
            place = scope_->sources.size();
            const ScopeSource& added = AddTarget(written, update.target.Last());
            from += fmt::format(", {} AS {}", written.table->source, added.sqlName);
            if (!written.rows.empty()) {
                from += fmt::format(" JOIN (SELECT 1) ON {} IN ({})", added.row, written.rows);
            }
        }
        choice.body = " FROM " + from;
    }
    const std::vector<BoundAssignment> assigned = BindAssignments(update.assignments, written);
    const ScopeSource& source = scope_->sources[place];
    choice.row = source.row;
    for (const BoundAssignment& each : assigned) {
        choice.values.push_back(each.value);
    }
    const std::shared_ptr<const Table> table = written.table;
    const bool joined = !update.from.empty();
    if (joined) {
        choice.body += update.where ? " WHERE " + BindCondition(*update.where, false) : std::string();
        choice.body += update.top ? " LIMIT " + BindRowCount(*update.top) : std::string();
    } else {
        choice.body = BindWritten(source, update.where.get(), update.top.get(), written.rows);
    }
    if (!update.outputs.empty()) {
        choice.body.insert(0, joined ? std::string() : fmt::format(" FROM {} AS {}", table->source, source.sqlName));
        RowPlan rows;
        AddRowWrite(rows, choice, UpdateOfRows(written, assigned), written, &source, update.outputs);
        return FinishRows(std::move(rows), update.outputs, table);
    }
    std::string text = fmt::format("UPDATE {} AS {} SET ", table->source, joined ? "target" : source.sqlName);
    // With a FROM clause the new values are columns of a query that also tells the row they belong to.
    std::string query = fmt::format("SELECT {} AS id", choice.row);
    for (std::size_t i = 0; i < assigned.size(); ++i) {
        query += fmt::format(", {} AS c{}", choice.values[i], i);
        text += fmt::format("{}{} = {}", i > 0 ? ", " : "", Quoted(assigned[i].column->name),
                            joined ? fmt::format("s.c{}", i) : choice.values[i]);
    }
    text += VersionAssignment(*table);
    text += joined ? fmt::format(" FROM ({}{}) AS s WHERE target.rowid = s.id", query, choice.body) : choice.body;
    return FinishWrite(PlanKind::update, std::move(text), table);
}

Plan Binder::BindDelete(const Delete& del) {
    AddCommons(del.with);
    const ScopeGuard guard(*this, nullptr);
    WriteTarget written;
    Choice choice{PlanKind::del, {}, {}, {}, {}};
    const ScopeSource* source = nullptr;
    std::string text;
    if (del.from.empty()) {
        written = FindTarget(del.target);
        source = &AddTarget(written, del.target.Last());
        choice.body = BindWritten(*source, del.where.get(), del.top.get(), written.rows);
        text = fmt::format("DELETE FROM {} AS {}{}", written.table->source, source->sqlName, choice.body);
        choice.body.insert(0, fmt::format(" FROM {} AS {}", written.table->source, source->sqlName));
    } else {
        std::string from;
        source = BindWrittenFrom(del.from, del.target, from);
        if (source == nullptr) {
            Fail(208, "Invalid object name '{}'.", del.target.Text());
        }
        written = source->written ? *source->written : WriteTarget{source->table, false, {}, {}};
        choice.body = " FROM " + from + (del.where ? " WHERE " + BindCondition(*del.where, true) : std::string());
        choice.body += del.top ? " LIMIT " + BindRowCount(*del.top) : std::string();
        text = fmt::format("DELETE FROM {} AS target WHERE target.rowid IN (SELECT {}{})", written.table->source,
                           source->row, choice.body);
    }
    choice.row = source->row;
    if (!del.outputs.empty()) {
        RowPlan rows;
        AddRowWrite(rows, choice, DeleteOfRows(written), written, source, del.outputs);
        return FinishRows(std::move(rows), del.outputs, written.table);
    }
    return FinishWrite(PlanKind::del, std::move(text), written.table);
}

} // namespace refhost::sql
