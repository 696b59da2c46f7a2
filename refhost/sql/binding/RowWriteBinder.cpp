// Writes row by row: what OUTPUT tells of the rows before and behind the write, and MERGE.

#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace refhost::sql {
namespace {

/// What $action tells.
std::string_view ActionName(PlanKind kind) {
    return kind == PlanKind::insert ? "INSERT" : kind == PlanKind::update ? "UPDATE" : "DELETE";
}

/// A value that is known when the row is written, see `RowPlan::Write::outputs`.
Bound RowValue(std::size_t place, const Type& type) {
    Bound value;
    value.text = fmt::format("k_row({})", place);
    value.type = type;
    return value;
}

Bound NoValue(const Type& type) {
    Bound value;
    value.text = "NULL";
    value.type = type;
    return value;
}

std::string Parameters(std::size_t count, std::size_t first) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += fmt::format("{}?{}", i > 0 ? ", " : "", first + i);
    }
    return text;
}

} // namespace

RowPlan::Write Binder::InsertOfRows(const WriteTarget& target, const InsertShape& shape) {
    RowPlan::Write write;
    write.columns = shape.columns;
    const std::string columns = shape.Columns();
    std::string values = Parameters(shape.columns.size(), 2); // behind the row
    for (const auto& [column, value] : shape.automatic) {
        values += (values.empty() ? "" : ", ") + value;
    }
    write.write.text = columns.empty()
                           ? fmt::format("INSERT INTO {} DEFAULT VALUES", target.table->source)
                           : fmt::format("INSERT INTO {} ({}) VALUES ({})", target.table->source, columns, values);
    return write;
}

RowPlan::Write Binder::UpdateOfRows(const WriteTarget& target, const std::vector<BoundAssignment>& assigned) {
    RowPlan::Write write;
    write.write.text = fmt::format("UPDATE {} SET ", target.table->source);
    for (const BoundAssignment& each : assigned) {
        write.columns.push_back(each.column);
        write.write.text += fmt::format("{}{} = ?{}", write.columns.size() > 1 ? ", " : "", Quoted(each.column->name),
                                        write.columns.size() + 1);
    }
    write.write.text += VersionAssignment(*target.table) + " WHERE rowid = ?1";
    return write;
}

RowPlan::Write Binder::DeleteOfRows(const WriteTarget& target) {
    RowPlan::Write write;
    write.write.text = fmt::format("DELETE FROM {} WHERE rowid = ?1", target.table->source);
    return write;
}

void Binder::AddRowWrite(RowPlan& rows, const Choice& choice, RowPlan::Write write, const WriteTarget& target,
                         const ScopeSource* source, const Outputs& outputs) {
    std::string text = "SELECT " + choice.row;
    std::size_t place = 1;
    for (const std::string& value : choice.values) {
        text += ", " + value;
        ++place;
    }
    const Table& table = *target.table;
    std::vector<std::pair<std::string, int>> shown = target.columns;
    for (std::size_t i = 0; i < table.columns.size() && !target.view; ++i) {
        shown.emplace_back(table.columns[i].name, static_cast<int>(i));
    }
    const auto columnAt = [&](int column) -> const Column& {
        return table.columns.at(static_cast<std::size_t>(column));
    };
    std::vector<ScopeSource> sources;
    if (!outputs.empty()) {
        for (const ScopeSource& each : scope_->sources) {
            ScopeSource& told = sources.emplace_back();
            told.alias = &each == source ? "deleted" : each.alias;
            for (const ScopeColumn& column : each.columns) {
                text += ", " + column.value.text;
                told.columns.push_back({column.name, RowValue(place++, column.value.type)});
            }
        }
        for (ScopeSource each : choice.absent) {
            for (ScopeColumn& column : each.columns) {
                column.value = NoValue(column.value.type);
            }
            sources.push_back(std::move(each));
        }
        if (rows.merge && source == nullptr) {
            ScopeSource& deleted = sources.emplace_back();
            deleted.alias = "deleted";
            for (const auto& [name, column] : shown) {
                deleted.columns.push_back({name, NoValue(columnAt(column).type)});
            }
        }
        if (rows.merge || choice.kind != PlanKind::del) {
            ScopeSource& inserted = sources.emplace_back();
            inserted.alias = "inserted";
            for (const auto& [name, column] : shown) {
                const Type& type = columnAt(column).type;
                inserted.columns.push_back({name, choice.kind == PlanKind::del
                                                      ? NoValue(type)
                                                      : RowValue(place + static_cast<std::size_t>(column), type)});
            }
        }
        if (rows.merge) {
            Bound action;
            action.text = fmt::format("'{}'", ActionName(choice.kind));
            action.type = {Base::nvarchar, 10, 0, 0};
            sources.emplace_back().columns.push_back({"$action", std::move(action)});
        }
        for (std::size_t i = 0; i < table.columns.size() && choice.kind != PlanKind::del; ++i) {
            write.write.text += (i == 0 ? " RETURNING " : ", ") + Quoted(table.columns[i].name);
        }
    }
    write.choose = Finish(PlanKind::select, text + choice.body);
    slots_.clear();
    write.write.kind = choice.kind;
    write.write.merge = rows.merge;
    write.write.target = target.table;
    for (const Output& output : outputs) {
        write.outputs.push_back(BindRowOutput(output, sources));
    }
    rows.writes.push_back(std::move(write));
}

Plan Binder::BindRowOutput(const Output& output, const std::vector<ScopeSource>& sources) {
    const ScopeGuard guard(*this, nullptr);
    scope_->sources = sources;
    std::vector<OutputColumn> columns;
    std::vector<std::vector<std::string>> bare;
    BindItems(output.items, columns, bare);
    if (scope_->aggregated) {
        Fail(158, "An aggregate may not appear in the OUTPUT clause.");
    }
    std::string text;
    for (const OutputColumn& column : columns) {
        text += (text.empty() ? "SELECT " : ", ") + column.value.text;
    }
    Plan plan = Finish(PlanKind::select, std::move(text));
    slots_.clear();
    Describe(plan, columns);
    return plan;
}

Plan Binder::BindInto(const Output& output, const Plan& rows) {
    const WriteTarget target = FindTarget(*output.into);
    const InsertShape shape = ShapeInsert(target, output.intoColumns, false, [](std::size_t) { return false; });
    if (rows.types.size() != shape.count) {
        Fail(213, "Column name or number of supplied values does not match table definition.");
    }
    std::string values;
    for (std::size_t i = 0; i < shape.used.size(); ++i) {
        Bound value;
        value.text = fmt::format("?{}", shape.used[i] + 1);
        value.type = rows.types[shape.used[i]];
        values += (i > 0 ? ", " : "") + As(std::move(value), shape.columns[i]->type, 0, Surplus::refuse);
    }
    for (const auto& [column, value] : shape.automatic) {
        values += ", " + value;
    }
    return FinishWrite(PlanKind::insert,
                       fmt::format("INSERT INTO {} ({}) VALUES ({})", target.table->source, shape.Columns(), values),
                       target.table);
}

Plan Binder::FinishRows(RowPlan rows, const Outputs& outputs, std::shared_ptr<const Table> table) {
    Plan plan;
    plan.kind = rows.writes.front().write.kind;
    plan.target = std::move(table);
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const Plan& told = rows.writes.front().outputs[i];
        rows.into.push_back(outputs[i].into ? BindInto(outputs[i], told) : Plan());
        if (!outputs[i].into) {
            plan.fields = told.fields;
            plan.types = told.types;
        }
    }
    plan.rows = std::make_shared<RowPlan>(std::move(rows));
    plan.pinned = Pinned();
    return plan;
}

// MERGE: each clause chooses its rows by a query of its own, all before anything is written.

Binder::Choice Binder::BindMergeRows(const Merge& merge, std::size_t clause, const WriteTarget& target,
                                     const ScopeSource*& source) {
    const MergeClause& own = merge.clauses[clause];
    const std::string alias = merge.alias.empty() ? merge.target.Last() : merge.alias;
    Choice choice;
    const auto addTarget = [&] {
        const ScopeSource& added = AddTarget(target, alias);
        return std::pair(fmt::format("{} AS {}", target.table->source, added.sqlName), added.row);
    };
    const auto conditioned = [&](std::string text, const std::string& row) {
        // A view has the rows alone that it shows.
        return target.rows.empty() ? text : fmt::format("{} AND {} IN ({})", text, row, target.rows);
    };
    // The other side as a condition, where no row of it may match.
    const auto none = [&](bool ofTarget) {
        const ScopeGuard guard(*this, scope_);
        std::string row;
        std::string from;
        if (ofTarget) {
            std::tie(from, row) = addTarget();
        } else {
            from = BindSource(*merge.source, false);
            choice.absent = scope_->sources;
        }
        std::string on = BindCondition(*merge.on, true);
        return fmt::format("NOT EXISTS (SELECT 1 FROM {} WHERE {})", from,
                           ofTarget ? conditioned(std::move(on), row) : on);
    };
    std::string where;
    choice.row = "NULL";
    switch (own.rows) {
    case MergeClause::Rows::matched: {
        const std::string from = BindSource(*merge.source, false);
        const auto [text, row] = addTarget();
        choice.row = row;
        choice.body = fmt::format(" FROM {} JOIN {}", from, text);
        where = conditioned(BindCondition(*merge.on, true), row);
        source = &scope_->sources.back();
        break;
    }
    case MergeClause::Rows::notMatched:
        choice.body = " FROM " + BindSource(*merge.source, false);
        where = none(true);
        break;
    case MergeClause::Rows::notMatchedBySource: {
        const auto [text, row] = addTarget();
        choice.row = row;
        choice.body = " FROM " + text;
        where = conditioned(none(false), row);
        source = &scope_->sources.back();
        break;
    }
    }
    // Of several clauses the first one counts whose condition holds.
    for (std::size_t i = 0; i < clause; ++i) {
        const MergeClause& earlier = merge.clauses[i];
        if (earlier.rows != own.rows) {
            continue;
        }
        if (!earlier.condition) {
            const std::string_view name = NameOf(own.rows);
            Fail(5324,
                 "In a MERGE statement, a '{}' clause with a search condition cannot appear after a '{}' clause with "
                 "no search condition.",
                 name, name);
        }
        where += fmt::format(" AND ({}) IS NOT 1", BindCondition(*earlier.condition, false));
    }
    if (own.condition) {
        where += " AND " + BindCondition(*own.condition, false);
    }
    choice.body += " WHERE " + where;
    return choice;
}

Plan Binder::BindMerge(const Merge& merge) {
    AddCommons(merge.with);
    const WriteTarget target = FindTarget(merge.target);
    RowPlan rows;
    rows.merge = true;
    for (std::size_t i = 0; i < merge.clauses.size(); ++i) {
        const MergeClause& clause = merge.clauses[i];
        const ScopeGuard guard(*this, nullptr);
        const ScopeSource* source = nullptr;
        Choice choice = BindMergeRows(merge, i, target, source);
        RowPlan::Write write;
        switch (clause.action) {
        case MergeClause::Action::insert: {
            choice.kind = PlanKind::insert;
            const InsertShape shape =
                ShapeInsert(target, clause.columns, clause.values.empty(), [&](std::size_t place) {
                    return place < clause.values.size() &&
                           (clause.values[place]->node == Node::null || clause.values[place]->node == Node::default_);
                });
            RequireCount(shape, clause.values.size(), !clause.columns.empty(), false);
            for (std::size_t value = 0; value < shape.used.size(); ++value) {
                choice.values.push_back(BindAssigned(*clause.values[shape.used[value]], *shape.columns[value]));
            }
            write = InsertOfRows(target, shape);
            break;
        }
        case MergeClause::Action::update: {
            choice.kind = PlanKind::update;
            const std::vector<BoundAssignment> assigned = BindAssignments(clause.assignments, target);
            for (const BoundAssignment& each : assigned) {
                choice.values.push_back(each.value);
            }
            write = UpdateOfRows(target, assigned);
            break;
        }
        case MergeClause::Action::del:
            choice.kind = PlanKind::del;
            write = DeleteOfRows(target);
            break;
        }
        AddRowWrite(rows, choice, std::move(write), target, source, merge.outputs);
    }
    return FinishRows(std::move(rows), merge.outputs, target.table);
}

} // namespace refhost::sql
