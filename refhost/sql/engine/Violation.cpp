#include "refhost/sql/engine/Violation.h"

#include "refhost/sql/binding/Definer.h"
#include "refhost/sql/binding/ForeignKeys.h"
#include "refhost/sql/store/Atomic.h"
#include "refhost/sql/store/IdentityLine.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace refhost::sql {
namespace {

/// What stands behind the colon of SQLite's message.
std::string_view Subject(std::string_view message) {
    const std::size_t colon = message.find(": ");
    return colon == std::string_view::npos ? std::string_view() : message.substr(colon + 2);
}

/// The statement as messages of what one row lacks name it.
std::string_view RowVerb(PlanKind kind) { return kind == PlanKind::update ? "UPDATE" : "INSERT"; }

/// The statement as messages of conflicts name it.
std::string_view Verb(const Plan& plan) {
    return plan.merge ? "MERGE" : plan.kind == PlanKind::del ? "DELETE" : RowVerb(plan.kind);
}

/// How messages name a table: a table variable as it is written.
std::string_view ShownName(const Table& table) {
    const std::string_view name = table.name;
    return name.substr(name.starts_with(TableOfVariable("@")) ? 1 : 0);
}

/// With its database, which a table variable has none of.
std::string ShownPath(const Table& table, const Catalog& catalog) {
    const std::string_view name = ShownName(table);
    return name.starts_with('@') ? std::string(name) : fmt::format("{}.dbo.{}", catalog.DatabaseOf(table.schema), name);
}

/// The columns in "t.a, t.b".
std::vector<std::string> ColumnsIn(std::string_view subject, std::string_view table) {
    std::vector<std::string> columns;
    const std::string prefix = std::string(table) + ".";
    while (!subject.empty()) {
        const std::size_t end = std::min(subject.find(", " + prefix), subject.size());
        columns.emplace_back(subject.substr(std::min(prefix.size(), end), end - std::min(prefix.size(), end)));
        subject.remove_prefix(std::min(end + 2, subject.size()));
    }
    return columns;
}

std::vector<std::string> ColumnsOfIndex(const Table& table, const std::string& index, sqlite3* db) {
    Command members(
        db, fmt::format("SELECT name FROM pragma_index_info(?, '{}') ORDER BY seqno", SqliteName(table.schema)));
    members.Bind(index);
    std::vector<std::string> names;
    while (members.Step()) {
        names.push_back(members.Text(0));
    }
    return names;
}

/// The T-SQL name of the unique index over exactly these columns; empty for SQLite's row number.
std::string UniqueIndexOver(const Table& table, const std::vector<std::string>& columns, sqlite3* db) {
    Command indexes(
        db, fmt::format("SELECT name FROM pragma_index_list(?, '{}') WHERE \"unique\" = 1", SqliteName(table.schema)));
    indexes.Bind(table.name);
    while (indexes.Step()) {
        const std::string index = indexes.Text(0);
        if (ColumnsOfIndex(table, index, db) == columns) {
            return index.substr(std::min(index.size(), table.name.size() + 1));
        }
    }
    return {};
}

[[noreturn]] void ThrowUnique(const std::shared_ptr<const Table>& target, std::string_view subject, Catalog& catalog,
                              sqlite3* db) {
    const Table& table = *target;
    std::string index;
    std::vector<std::string> columns;
    constexpr std::string_view named = "index '";
    if (subject.substr(0, named.size()) == named) {
        // An index over expressions: that of rows with Nulls.
        index = subject.substr(named.size() + table.name.size() + 1);
        index.erase(std::min(index.rfind("|null"), index.size()));
        columns = ColumnsOfIndex(table, IndexName(table.name, index), db);
    } else {
        columns = ColumnsIn(subject, table.name);
        index = UniqueIndexOver(table, columns, db);
    }
    std::string kind = catalog.ConstraintKindOf(table.schema, table.id, index);
    if (index.empty()) {
        index = catalog.ConstraintName(table.schema, table.id, "PK");
        kind = "PK";
    }
    host::Error error =
        kind.empty() ? ErrorOf(2601, "Cannot insert duplicate key row in object 'dbo.{}' with unique index '{}'.",
                               ShownName(table), index)
                     : ErrorOf(2627, "Violation of {} constraint '{}'. Cannot insert duplicate key in object 'dbo.{}'.",
                               kind == "PK" ? "PRIMARY KEY" : "UNIQUE KEY", index, ShownName(table));
    throw DuplicateKey{std::move(error), target, std::move(columns)};
}

/// Has the refused statement run once more with its foreign keys open, to see which one is violated.
[[noreturn]] void ThrowBrokenKey(const Plan& plan, Catalog& catalog, sqlite3* db) {
    std::optional<BrokenKey> broken;
    {
        sqlite3_reset(plan.statement.get());
        const Atomic tried(db, plan.target->schema);
        Run(db, "PRAGMA defer_foreign_keys = ON");
        while (sqlite3_step(plan.statement.get()) == SQLITE_ROW) {
        }
        sqlite3_reset(plan.statement.get());
        broken = FindBrokenKey(catalog, db, plan.target->schema);
    }
    Run(db, "PRAGMA defer_foreign_keys = OFF");
    if (!broken) {
        FailOwn(host::error_number::integrityViolation, "The {} statement conflicted with a FOREIGN KEY constraint.",
                Verb(plan));
    }
    throw BrokenKeyError(*broken, Verb(plan), plan.target->name, catalog);
}

} // namespace

void ThrowStepError(const Plan& plan, int code, const std::string& message, Catalog& catalog, sqlite3* db) {
    const std::string_view subject = Subject(message);
    if ((code & 0xff) == SQLITE_CONSTRAINT && plan.target) {
        const Table& table = *plan.target;
        switch (code) {
        case SQLITE_CONSTRAINT_NOTNULL:
            Fail(515,
                 "Cannot insert the value NULL into column '{}', table '{}'; column does not allow nulls. {} "
                 "fails.",
                 subject.substr(std::min(table.name.size() + 1, subject.size())), ShownPath(table, catalog),
                 RowVerb(plan.kind));
        case SQLITE_CONSTRAINT_CHECK:
            if (subject.starts_with(identityEnd)) {
                Fail(8115, "Arithmetic overflow error converting IDENTITY to data type {}.",
                     subject.substr(identityEnd.size()));
            }
            Fail(547,
                 "The {} statement conflicted with the CHECK constraint \"{}\". The conflict occurred in database "
                 "\"{}\", table \"dbo.{}\"{}.",
                 Verb(plan), subject, catalog.DatabaseOf(table.schema), ShownName(table),
                 CheckedColumn(table, catalog.ConstraintText(table.schema, table.id, subject)));
        case SQLITE_CONSTRAINT_FOREIGNKEY:
            ThrowBrokenKey(plan, catalog, db);
        case SQLITE_CONSTRAINT_UNIQUE:
        case SQLITE_CONSTRAINT_PRIMARYKEY:
        case SQLITE_CONSTRAINT_ROWID:
            ThrowUnique(plan.target, subject, catalog, db);
        default:
            break;
        }
    }
    FailSqlite(db);
}

host::Error WithKey(const DuplicateKey& duplicate, const std::string& key) {
    const host::Error& error = duplicate.error;
    return key.empty()
               ? error
               : host::Error(error.number(), fmt::format("{} The duplicate key value is {}.", error.description(), key),
                             error.native());
}

std::string KeyText(std::vector<std::pair<Cell, Type>>&& key) {
    std::string text = "(";
    for (auto& [cell, type] : key) {
        Convert(cell, type, endlessText, 0, Surplus::cut);
        text += text.size() > 1 ? ", " : "";
        text += cell.IsNull() ? std::string_view("<NULL>") : cell.Bytes();
    }
    return text + ")";
}

std::string KeyText(const DuplicateQueries& queries, sqlite3* db) {
    for (const std::string& query : {queries.met, queries.repeated}) {
        if (query.empty()) {
            continue;
        }
        const StatementHandle statement = Prepare(db, query);
        if (sqlite3_step(statement.get()) != SQLITE_ROW) {
            continue;
        }
        std::vector<std::pair<Cell, Type>> key;
        for (const Type& type : queries.types) {
            key.emplace_back(ReadCell(statement.get(), static_cast<int>(key.size())), type);
        }
        return KeyText(std::move(key));
    }
    return {};
}

} // namespace refhost::sql
