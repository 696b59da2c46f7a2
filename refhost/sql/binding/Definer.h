#pragma once

#include "refhost/sql/binding/Binder.h"

#include <memory>
#include <string>
#include <vector>

namespace refhost::sql {

/// Carries definitions out: CREATE, DROP, ALTER, TRUNCATE. Each is one transaction of its own, or a part of the open
/// one. Every member throws SQL Server's errors and leaves nothing half done.
class Definer {
public:
    Definer(sqlite3* db, Catalog& catalog, const SessionState& session, const std::vector<Literal>& literals)
        : db_(db), catalog_(catalog), session_(session), literals_(literals) {}

    void Create(const CreateTable& create);
    void Create(const CreateView& create);
    /// Creates a view in place of the one of its name.
    void Replace(const CreateView& create);
    void Create(const CreateIndex& create);
    void Drop(const sql::Drop& drop);
    void Alter(const AlterTable& alter);
    void Truncate(const sql::Truncate& truncate);
    /// Translates the views of a database anew from their own text, since tables under them changed. One that cannot
    /// be, such as a view over a table that is gone, stays as it was.
    void RebuildViews(Schema schema);
    /// The empty table for SELECT INTO.
    void CreateFor(const Name& name, const std::vector<OutputColumn>& columns);

private:
    void CreateTableAt(const ObjectPath& path, std::vector<Column> columns, const std::vector<Constraint>& constraints);
    /// The columns, checks and foreign keys of a table in parentheses, as SQLite's CREATE TABLE has them.
    std::string TableBody(const Table& table);
    std::string ColumnLine(const Table& table, const Column& column);
    /// Gives computed columns their types.
    void ResolveComputed(Table& table);
    void AddKey(const Table& table, const Constraint& constraint, const std::string& name);
    /// Makes an index; unique ones as SQL Server has them, where Null equals Null.
    void MakeIndex(const Table& table, const std::string& name, const std::vector<IndexColumn>& columns, bool unique);
    void AddColumn(const Table& table, const ColumnDefinition& definition);

    // Changes of a table that is there, in TableDefiner.cpp.
    /// Writes a table's definition anew from the catalog; what its rows hold stays.
    void RewriteTable(const Table& table);
    void AddConstraint(const Table& table, const Constraint& constraint, bool checksRows);
    void ChangeColumn(const Table& table, const ColumnDefinition& definition);
    void DropColumn(const Table& table, const std::string& name);
    void DropConstraint(const Table& table, const std::string& name);
    /// Throws where a constraint or an index needs the column.
    void RefuseDependent(const Table& table, const Column& column);
    /// The indexes of a table that have a column, by their T-SQL names.
    std::vector<std::string> IndexesOver(const Table& table, const Column& column);
    /// Whether there was one of that name.
    bool DropIndexNamed(const Table& table, const std::string& name);
    /// Notes the names that defaults of columns were given.
    void NameDefaults(const Table& table, const std::vector<ColumnDefinition>& columns);
    void RebuildView(const std::string& name, const std::string& text);
    void DropTable(const Name& name, bool ifExists);
    void DropView(const Name& name, bool ifExists);
    void DropIndex(const Name& name, bool ifExists);
    std::string FreeConstraintName(const Constraint& constraint, const Table& table);
    /// The database that a name points into.
    Schema SchemaOf(const Name& name) const;
    void RefuseKnown(Schema schema, const std::string& name);
    std::shared_ptr<const Table> Reload(const Table& table);

    sqlite3* db_;
    Catalog& catalog_;
    const SessionState& session_;
    const std::vector<Literal>& literals_;
};

/// The catalog's two letters for a kind of constraint.
std::string_view XType(ConstraintKind kind);
/// A name with its database, as SQLite's SQL has it.
std::string Qualified(Schema schema, std::string_view name);
/// The name of a T-SQL index in SQLite, where index names are the whole database's.
std::string IndexName(std::string_view table, std::string_view index);

} // namespace refhost::sql
