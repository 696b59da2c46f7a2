#pragma once

#include "refhost/sql/store/Runtime.h"
#include "refhost/sql/syntax/Ast.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace refhost::sql {

struct Column {
    std::string name;
    Type type;
    bool nullable = true;
    bool identity = false;
    /// Of an identity column: its first number, and what it counts by.
    std::int64_t seed = 1;
    std::int64_t step = 1;
    /// The default's expression in T-SQL, empty without one.
    std::string defaultText;
    /// Of a computed column: its expression in T-SQL, empty for others; and whether its value is stored.
    std::string computedText;
    bool persisted = false;
    /// Whether an index over `isnull(column, '')` exists, see Ddl.cpp.
    bool blankIndex = false;
};

/// A table or view as the language sees it.
struct Table {
    Schema schema = Schema::account;
    std::string name;
    std::int64_t id = 0;
    bool view = false;
    /// What stands for it in SQLite's FROM.
    std::string source;
    std::vector<Column> columns;

    /// Position of a column, letter case ignored; -1 when there is none.
    int Find(std::string_view column) const;
    /// Position of the identity or timestamp column, -1 without one.
    int Identity() const;
    int RowVersion() const;
};

/// Where a name of one to four parts points.
struct ObjectPath {
    Schema schema = Schema::account;
    /// "dbo", "sys" or "information_schema" in lower case.
    std::string owner = "dbo";
    std::string name;
};

/// What a translation names.
struct NamedTables {
    /// See `Catalog::KeyOf`.
    std::vector<std::string> keys;
    /// Whether all of them are tables, whose translation depends on nothing else.
    bool areTables = true;
};

/// The tables of both databases, read as they are first named. Each database describes its own in tables of its own
/// ("sys:objects", "sys:columns"), so that a rolled back transaction takes the description back with it.
class Catalog {
public:
    /// @param databaseName the account database's own, of which three-part names may make use
    Catalog(sqlite3* db, std::string databaseName) : db_(db), databaseName_(std::move(databaseName)) {}

    /// The name of a database in T-SQL.
    std::string DatabaseOf(Schema schema) const;
    /// The database that names without one mean: the account's own, unless `Use` chose another.
    Schema Current() const { return current_; }
    /// Throws SQL Server's error for a database that there is not.
    void Use(const std::string& database);
    void SetSystemAttached(bool attached) { systemAttached_ = attached; }

    /// Throws "Invalid object name" for a database or owner that there is not.
    ObjectPath Resolve(const Name& name) const;
    /// The table or view of that name, nullptr when there is none.
    std::shared_ptr<const Table> Find(const Name& name);
    /// The same; throws "Invalid object name".
    std::shared_ptr<const Table> Get(const Name& name);
    /// What tells the table or view of that name from all others. Throws like `Resolve`.
    std::string KeyOf(const Name& name) const { return KeyOf(Resolve(name)); }
    /// Takes note, as long as it lives, of what is looked for. Both outlive it, and a catalog has one at a time.
    class NotingNames {
    public:
        NotingNames(Catalog& catalog, NamedTables& named) : catalog_(catalog) { catalog_.named_ = &named; }
        ~NotingNames() { catalog_.named_ = nullptr; }
        NotingNames(const NotingNames&) = delete;
        NotingNames& operator=(const NotingNames&) = delete;

    private:
        Catalog& catalog_;
    };
    /// Drops what was read; to be called when definitions changed.
    void Forget() { tables_.clear(); }

    // Bookkeeping of definitions. `xtype` is SQL Server's two-letter kind: "U ", "V ", "PK", "UQ", "C ",
    // "F ", "D ".
    static void CreateTables(sqlite3* db, Schema schema);
    std::int64_t AddObject(Schema schema, std::string_view name, std::string_view xtype, std::int64_t parent,
                           std::string_view text);
    void AddColumn(Schema schema, std::int64_t table, int position, const Column& column);
    /// Removes an object, its columns and its constraints.
    void RemoveObject(Schema schema, std::int64_t id);
    void RemoveColumn(Schema schema, std::int64_t table, std::string_view column);
    void SetDefault(Schema schema, std::int64_t table, std::string_view column, std::string_view text);
    void SetBlankIndex(Schema schema, std::int64_t table, std::string_view column);
    /// Makes a table's identity column begin at its seed.
    void RestartIdentity(const Table& table);
    /// Drops what a table's identity column has counted.
    void ForgetIdentity(const Table& table);
    bool HasObject(Schema schema, std::string_view name);
    /// Name of the first constraint of a kind at a table, empty without one.
    std::string ConstraintName(Schema schema, std::int64_t table, std::string_view xtype);
    struct ConstraintRow {
        std::string name;
        /// The table that it is of.
        std::string table;
        std::string text;
    };
    /// The constraints of a kind, of one table or, for 0, of all.
    std::vector<ConstraintRow> Constraints(Schema schema, std::string_view xtype, std::int64_t table);
    void RemoveConstraint(Schema schema, std::int64_t table, std::string_view name);
    /// Writes a column's definition anew.
    void ChangeColumn(Schema schema, std::int64_t table, const Column& column);
    /// The condition of the named check at a table, empty without one.
    std::string ConstraintText(Schema schema, std::int64_t table, std::string_view name);
    /// The statement that a view was created by.
    std::string ViewText(const Table& view) { return ConstraintText(view.schema, 0, view.name); }
    /// The kind of the named object at a table, empty without one.
    std::string ConstraintKindOf(Schema schema, std::int64_t table, std::string_view name);

    /// The database of that name, nothing when there is none.
    std::optional<Schema> SchemaNamed(std::string_view database) const;

private:
    static std::string KeyOf(const ObjectPath& path);
    std::shared_ptr<const Table> Load(const ObjectPath& path);
    std::shared_ptr<const Table> FindKnown(const ObjectPath& path, const std::string& key);

    sqlite3* db_;
    std::string databaseName_;
    bool systemAttached_ = false;
    Schema current_ = Schema::account;
    NamedTables* named_ = nullptr;
    std::unordered_map<std::string, std::shared_ptr<const Table>> tables_;
};

/// The column of a check of one column, as messages name it; empty for a check of several.
std::string CheckedColumn(const Table& table, const std::string& condition);

/// SQL Server's views over the catalog itself; nullptr when `path` names none.
std::shared_ptr<const Table> SystemView(const ObjectPath& path, const std::string& databaseName);

/// The moment now, as SQLite's SQL: ticks in local time.
inline constexpr std::string_view nowTicks =
    "(CAST(round((julianday('now','localtime')-2415018.5)*86400000.0) AS INTEGER)*10000)";

} // namespace refhost::sql
