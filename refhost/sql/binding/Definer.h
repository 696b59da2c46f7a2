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
    /// The empty table for SELECT INTO.
    void CreateFor(const Name& name, const std::vector<OutputColumn>& columns);

private:
    class Atomic;

    void CreateTableAt(const ObjectPath& path, std::vector<Column> columns, const std::vector<Constraint>& constraints);
    void AddKey(const Table& table, const Constraint& constraint, const std::string& name);
    /// Makes an index; unique ones as SQL Server has them, where Null equals Null.
    void MakeIndex(const Table& table, const std::string& name, const std::vector<IndexColumn>& columns, bool unique);
    void AddColumn(const Table& table, const ColumnDefinition& definition);
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

/// The name of a T-SQL index in SQLite, where index names are the whole database's.
std::string IndexName(std::string_view table, std::string_view index);

} // namespace refhost::sql
