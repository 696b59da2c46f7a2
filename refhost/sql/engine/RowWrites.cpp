// Writes that are made row by row, see `RowPlan`.

#include "refhost/sql/engine/EmbeddedDatabase.h"
#include "refhost/sql/store/Atomic.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace refhost::sql {
namespace {

using Row = std::vector<Cell>;

void TakeRow(sqlite3_stmt* statement, Row& row) {
    for (int column = 0; column < sqlite3_column_count(statement); ++column) {
        row.push_back(Copied(ReadCell(statement, column)));
    }
}

/// Leaves one of the rows that are for the same row of the table; a MERGE allows no second.
void RequireOnce(std::vector<Row>& chosen, std::unordered_set<std::int64_t>& known, bool merge) {
    std::erase_if(chosen, [&](const Row& row) {
        const bool again = !row.front().IsNull() && !known.insert(row.front().integer).second;
        if (again && merge) {
            Fail(8672,
                 "The MERGE statement attempted to UPDATE or DELETE the same row more than once. This happens when "
                 "a target row matches more than one source row. A MERGE statement cannot UPDATE/DELETE the same "
                 "row of the target table multiple times. Refine the ON clause to ensure a target row matches at "
                 "most one source row, or use the GROUP BY clause to group the source rows.");
        }
        return again;
    });
}

/// The key that a row was refused for, as far as the row tells it.
std::string KeyOf(const DuplicateKey& duplicate, const RowPlan::Write& write, const Row& row) {
    std::vector<std::pair<Cell, Type>> key;
    for (const std::string& name : duplicate.columns) {
        const auto given =
            std::ranges::find_if(write.columns, [&](const Column* column) { return column->name == name; });
        if (given == write.columns.end()) {
            return {};
        }
        key.emplace_back(Copied(row[1 + static_cast<std::size_t>(given - write.columns.begin())]), (*given)->type);
    }
    return KeyText(std::move(key));
}

} // namespace

void EmbeddedDatabase::RunRows(const Plan& plan, const std::vector<Literal>& literals, ResultSet* answer) {
    const RowPlan& rows = *plan.rows;
    ResultSet told;
    told.fields = plan.fields;
    std::int64_t count = 0;
    Atomic atomic(db_.get(), plan.target->schema);
    try {
        std::vector<std::vector<Row>> chosen(rows.writes.size());
        std::unordered_set<std::int64_t> known;
        for (std::size_t i = 0; i < rows.writes.size(); ++i) {
            const Plan& choose = rows.writes[i].choose;
            BindParameters(choose, literals, session_.variables);
            StepEach(choose, [&](sqlite3_stmt* statement) { TakeRow(statement, chosen[i].emplace_back()); });
            RequireOnce(chosen[i], known, rows.merge);
            count += static_cast<std::int64_t>(chosen[i].size());
        }
        // What goes makes room for what comes.
        for (const PlanKind kind : {PlanKind::del, PlanKind::update, PlanKind::insert}) {
            for (std::size_t i = 0; i < rows.writes.size(); ++i) {
                if (rows.writes[i].write.kind == kind) {
                    WriteRows(rows, rows.writes[i], chosen[i], literals, told);
                }
            }
        }
    } catch (...) {
        runtime_->toldRow = nullptr;
        const bool own = atomic.IsOwn();
        atomic.Rollback();
        own ? identities_.RolledBack() : identities_.Restore();
        throw;
    }
    const bool own = atomic.IsOwn();
    atomic.Commit();
    if (own) {
        identities_.Committed();
    }
    runtime_->rowCount = count;
    if (answer != nullptr) {
        *answer = std::move(told);
    }
}

void EmbeddedDatabase::WriteRows(const RowPlan& rows, const RowPlan::Write& write, std::vector<Row>& chosen,
                                 const std::vector<Literal>& literals, ResultSet& told) {
    sqlite3_stmt* const statement = write.write.statement.get();
    const auto taken = std::min<std::size_t>(static_cast<std::size_t>(sqlite3_bind_parameter_count(statement)),
                                             1 + write.columns.size());
    const bool numbered = write.write.kind == PlanKind::insert && write.write.target->Identity() >= 0;
    for (Row& row : chosen) {
        for (std::size_t i = 0; i < taken; ++i) {
            BindCell(statement, static_cast<int>(i) + 1, row[i]);
        }
        if (numbered) {
            identities_.Expect();
        }
        try {
            StepEach(write.write, [&](sqlite3_stmt* written) { TakeRow(written, row); });
        } catch (const DuplicateKey& duplicate) {
            throw WithKey(duplicate, KeyOf(duplicate, write, row));
        }
        if (write.write.kind == PlanKind::insert) {
            NoteIdentity(write.write);
        }
        runtime_->toldRow = &row;
        for (std::size_t i = 0; i < write.outputs.size(); ++i) {
            const Plan& output = write.outputs[i];
            const Plan& into = rows.into[i];
            BindParameters(output, literals, session_.variables);
            Row values;
            StepEach(output, [&](sqlite3_stmt* line) {
                if (into.text.empty()) {
                    int column = 0;
                    for (const Type& type : output.types) {
                        told.cells.Add(ReadValue(line, column++, type));
                    }
                    ++told.rowCount;
                } else {
                    TakeRow(line, values);
                }
            });
            if (!into.text.empty()) {
                for (std::size_t value = 0; value < values.size(); ++value) {
                    BindCell(into.statement.get(), static_cast<int>(value) + 1, values[value]);
                }
                StepEach(into, [](sqlite3_stmt*) {});
            }
        }
        runtime_->toldRow = nullptr;
    }
}

} // namespace refhost::sql
