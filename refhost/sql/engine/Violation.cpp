#include "refhost/sql/engine/Violation.h"

#include "refhost/sql/binding/Definer.h"
#include "refhost/sql/engine/Storage.h"
#include "refhost/sql/syntax/Lexer.h"
#include "refhost/sql/types/Collation.h"
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

std::string_view Verb(PlanKind kind) { return kind == PlanKind::update ? "UPDATE" : "INSERT"; }

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

/// The column of a check of one column, as messages name it; empty for a check of several.
std::string CheckedColumn(const Table& table, const std::string& condition) {
    std::string name;
    Lexer lexer(condition);
    for (Token token = lexer.Next(); token.kind != TokenKind::end; token = lexer.Next()) {
        const bool named = token.kind == TokenKind::name || token.kind == TokenKind::quotedName;
        const int position = named ? table.Find(token.text) : -1;
        if (position < 0) {
            continue;
        }
        const std::string& column = table.columns[static_cast<std::size_t>(position)].name;
        if (!name.empty() && name != column) {
            return {};
        }
        name = column;
    }
    return name.empty() ? name : fmt::format(", column '{}'", name);
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
                 Verb(plan.kind));
        case SQLITE_CONSTRAINT_CHECK:
            if (subject.starts_with(identityEnd)) {
                Fail(8115, "Arithmetic overflow error converting IDENTITY to data type {}.",
                     subject.substr(identityEnd.size()));
            }
            Fail(547,
                 "The {} statement conflicted with the CHECK constraint \"{}\". The conflict occurred in database "
                 "\"{}\", table \"dbo.{}\"{}.",
                 Verb(plan.kind), subject, catalog.DatabaseOf(table.schema), ShownName(table),
                 CheckedColumn(table, catalog.ConstraintText(table.schema, table.id, subject)));
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

std::string KeyText(const DuplicateQueries& queries, sqlite3* db) {
    for (const std::string& query : {queries.met, queries.repeated}) {
        if (query.empty()) {
            continue;
        }
        const StatementHandle statement = Prepare(db, query);
        if (sqlite3_step(statement.get()) != SQLITE_ROW) {
            continue;
        }
        std::string text = "(";
        int column = 0;
        for (const Type& type : queries.types) {
            Cell cell = ReadCell(statement.get(), column);
            Convert(cell, type, {Base::nvarchar, Type::maxLength, 0, 0}, 0, Surplus::cut);
            text += column++ > 0 ? ", " : "";
            text += cell.IsNull() ? std::string_view("<NULL>") : cell.Bytes();
        }
        return text + ")";
    }
    return {};
}

} // namespace refhost::sql
