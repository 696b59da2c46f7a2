#pragma once

#include "refhost/sql/store/Catalog.h"
#include "refhost/sql/syntax/Ast.h"

#include <string>
#include <string_view>
#include <vector>

namespace refhost::sql {

/// A foreign key between two tables of one database.
struct ForeignKey {
    std::string name;
    std::string table;
    std::vector<std::string> columns;
    std::string referenced;
    std::vector<std::string> referencedColumns;
    ReferenceRule onDelete = ReferenceRule::noAction;
    ReferenceRule onUpdate = ReferenceRule::noAction;

    /// As the catalog keeps it, in T-SQL.
    std::string Text() const;
    /// As SQLite's CREATE TABLE has it.
    std::string Line() const;
};

/// The foreign keys of a table, or of all tables of a database for the id 0.
std::vector<ForeignKey> ForeignKeysOf(Catalog& catalog, Schema schema, std::int64_t table);
/// Those of other tables that point at `table`.
std::vector<ForeignKey> ReferencesTo(Catalog& catalog, const Table& table);
/// The foreign key that a constraint of `table` means. Throws SQL Server's error where it ties nothing.
ForeignKey ResolveForeignKey(Catalog& catalog, sqlite3* db, const Table& table, const Constraint& constraint,
                             const std::string& name);

/// What SQLite's rows say of a violated foreign key.
struct BrokenKey {
    ForeignKey key;
    Schema schema = Schema::account;
};
/// The first violation among the rows of a database, nothing where there is none.
std::optional<BrokenKey> FindBrokenKey(Catalog& catalog, sqlite3* db, Schema schema);
/// SQL Server's error for it: `verb` is "INSERT", "DELETE" and so on.
/// @param written the table that the statement writes
host::Error BrokenKeyError(const BrokenKey& broken, std::string_view verb, std::string_view written,
                           const Catalog& catalog);

} // namespace refhost::sql
