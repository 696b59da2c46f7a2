#include "refhost/sql/store/Catalog.h"

#include "refhost/sql/syntax/Words.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>

namespace refhost::sql {
namespace {

std::string Internal(Schema schema, std::string_view table) {
    return fmt::format("{}.\"sys:{}\"", SqliteName(schema), table);
}

/// The server's name of the database of temporary tables.
constexpr std::string_view temporaryName = "tempdb";

} // namespace

int Table::Find(std::string_view column) const {
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return EqualNames(c.name, column); });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

int Table::Identity() const {
    const auto found = std::find_if(columns.begin(), columns.end(), [](const Column& c) { return c.identity; });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

int Table::RowVersion() const {
    const auto found =
        std::find_if(columns.begin(), columns.end(), [](const Column& c) { return c.type.base == Base::timestamp; });
    return found == columns.end() || view ? -1 : static_cast<int>(found - columns.begin());
}

std::string CheckedColumn(const Table& table, const std::string& condition) {
    std::string name;
    for (const std::string& word : WordsOf(condition)) {
        const int position = table.Find(word);
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

ObjectPath Catalog::Resolve(const Name& name) const {
    const auto refuse = [&] { Fail(208, "Invalid object name '{}'.", name.Text()); };
    ObjectPath path;
    const std::size_t count = name.parts.size();
    path.name = name.Last();
    if (count > 3) {
        refuse();
    }
    if (count >= 2 && !name.parts[count - 2].empty()) {
        path.owner = FoldText(name.parts[count - 2]);
        if (path.owner != "dbo" && path.owner != "sys" && path.owner != "information_schema") {
            refuse();
        }
    }
    path.schema = current_;
    if (count == 3 && !name.parts[0].empty()) {
        const std::optional<Schema> schema = SchemaNamed(name.parts[0]);
        if (!schema) {
            refuse();
        }
        path.schema = *schema;
    }
    if (path.name.starts_with('#')) {
        path.schema = Schema::temporary;
    }
    return path;
}

std::optional<Schema> Catalog::SchemaNamed(std::string_view database) const {
    if (EqualNames(database, databaseName_)) {
        return Schema::account;
    }
    if (systemAttached_ && EqualNames(database, SqliteName(Schema::system))) {
        return Schema::system;
    }
    if (EqualNames(database, temporaryName)) {
        return Schema::temporary;
    }
    return std::nullopt;
}

std::string Catalog::DatabaseOf(Schema schema) const {
    switch (schema) {
    case Schema::account:
        return databaseName_;
    case Schema::system:
        return std::string(SqliteName(schema));
    case Schema::temporary:
        break;
    }
    return std::string(temporaryName);
}

void Catalog::Use(const std::string& database) {
    const std::optional<Schema> schema = SchemaNamed(database);
    if (!schema) {
        Fail(911, "Database '{}' does not exist. Make sure that the name is entered correctly.", database);
    }
    current_ = *schema;
}

std::shared_ptr<const Table> Catalog::Find(const Name& name) {
    const ObjectPath path = Resolve(name);
    const std::string key = KeyOf(path);
    std::shared_ptr<const Table> table = FindKnown(path, key);
    if (named_ != nullptr) {
        named_->keys.push_back(key);
        named_->areTables = named_->areTables && table && !table->view && table->id != 0;
    }
    return table;
}

std::string Catalog::KeyOf(const ObjectPath& path) {
    return path.owner + (path.schema == Schema::system ? '1' : '0') + FoldText(path.name);
}

std::shared_ptr<const Table> Catalog::FindKnown(const ObjectPath& path, const std::string& key) {
    const auto known = tables_.find(key);
    if (known != tables_.end()) {
        return known->second;
    }
    std::shared_ptr<const Table> table = path.owner == "dbo" ? Load(path) : nullptr;
    if (!table) {
        table = SystemView(path, databaseName_);
    }
    if (table) {
        tables_.emplace(key, table);
    }
    return table;
}

std::shared_ptr<const Table> Catalog::Get(const Name& name) {
    std::shared_ptr<const Table> table = Find(name);
    if (!table) {
        Fail(208, "Invalid object name '{}'.", name.Text());
    }
    return table;
}

std::shared_ptr<const Table> Catalog::Load(const ObjectPath& path) {
    Command object(db_, fmt::format("SELECT id, name, xtype FROM {} WHERE name = ? AND xtype IN ('U ', 'V ')",
                                    Internal(path.schema, "objects")));
    if (!object.Bind(path.name).Step()) {
        return nullptr;
    }
    auto table = std::make_shared<Table>();
    table->schema = path.schema;
    table->id = object.Integer(0);
    table->name = object.Text(1);
    table->view = object.Text(2) == "V ";
    table->source = fmt::format("{}.{}", SqliteName(path.schema), Quoted(table->name));
    Command columns(
        db_,
        fmt::format("SELECT name, type, nullable, is_identity, default_text, blank_index, seed, step, computed_text, "
                    "persisted FROM {} WHERE id = ? ORDER BY colid",
                    Internal(path.schema, "columns")));
    columns.Bind(table->id);
    while (columns.Step()) {
        Column column;
        column.name = columns.Text(0);
        column.type = Unpack(columns.Integer(1));
        column.nullable = columns.Integer(2) != 0;
        column.identity = columns.Integer(3) != 0;
        column.defaultText = columns.Text(4);
        column.blankIndex = columns.Integer(5) != 0;
        column.seed = columns.Integer(6);
        column.step = columns.Integer(7);
        column.computedText = columns.Text(8);
        column.persisted = columns.Integer(9) != 0;
        table->columns.push_back(std::move(column));
    }
    return table;
}

void Catalog::CreateTables(sqlite3* db, Schema schema) {
    const std::string_view in = SqliteName(schema);
    Run(db,
        fmt::format("CREATE TABLE {}.\"sys:objects\" (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT COLLATE {} NOT "
                    "NULL UNIQUE, xtype TEXT COLLATE {} NOT NULL, parent INTEGER NOT NULL, created INTEGER NOT NULL, "
                    "text TEXT NOT NULL)",
                    in, textCollation, textCollation));
    // SQL Server's ids are large; nobody may take a small one for a row number.
    Run(db, fmt::format("INSERT INTO {}.sqlite_sequence (name, seq) VALUES ('sys:objects', 1977058078)", in));
    Run(db,
        fmt::format("CREATE TABLE {}.\"sys:columns\" (id INTEGER NOT NULL, colid INTEGER NOT NULL, name TEXT COLLATE "
                    "{} NOT NULL, type INTEGER NOT NULL, type_name TEXT COLLATE {} NOT NULL, length INTEGER, "
                    "prec INTEGER, scale INTEGER, nullable INTEGER NOT NULL, is_identity INTEGER NOT NULL, "
                    "default_text TEXT NOT NULL, blank_index INTEGER NOT NULL, seed INTEGER NOT NULL DEFAULT 1, "
                    "step INTEGER NOT NULL DEFAULT 1, computed_text TEXT NOT NULL DEFAULT '', persisted INTEGER NOT "
                    "NULL DEFAULT 0, PRIMARY KEY (id, colid))",
                    in, textCollation, textCollation));
    Run(db, fmt::format("CREATE TABLE {}.\"sys:counter\" (value INTEGER NOT NULL)", in));
    // Where SQL Server's row versions begin.
    Run(db, fmt::format("INSERT INTO {}.\"sys:counter\" VALUES (2000)", in));
}

std::int64_t Catalog::AddObject(Schema schema, std::string_view name, std::string_view xtype, std::int64_t parent,
                                std::string_view text) {
    Command insert(db_, fmt::format("INSERT INTO {} (name, xtype, parent, created, text) VALUES (?, ?, ?, {}, ?) "
                                    "RETURNING id",
                                    Internal(schema, "objects"), nowTicks));
    insert.Bind(name).Bind(xtype).Bind(parent).Bind(text).Step();
    return insert.Integer(0);
}

void Catalog::AddColumn(Schema schema, std::int64_t table, int position, const Column& column) {
    const Type& type = column.type;
    const Family family = FamilyOf(type);
    const host::Field field = FieldOf(column.name, type, column.nullable);
    Command insert(
        db_,
        fmt::format("INSERT INTO {} (id, colid, name, type, type_name, length, prec, scale, nullable, is_identity, "
                    "default_text, seed, step, computed_text, persisted, blank_index) VALUES (?, ?, ?, ?, ?, ?, ?, ?, "
                    "?, ?, ?, ?, ?, ?, ?, 0)",
                    Internal(schema, "columns")));
    insert.Bind(table).Bind(std::int64_t{position}).Bind(column.name).Bind(Pack(type)).Bind(NameOf(type.base));
    insert.Bind(std::int64_t{family == Family::text || family == Family::binary ? type.length : 0});
    insert.Bind(std::int64_t{field.precision}).Bind(std::int64_t{field.scale});
    insert.Bind(std::int64_t{column.nullable ? 1 : 0}).Bind(std::int64_t{column.identity ? 1 : 0});
    insert.Bind(column.defaultText).Bind(column.seed).Bind(column.step).Bind(column.computedText);
    insert.Bind(std::int64_t{column.persisted ? 1 : 0}).Step();
}

void Catalog::RemoveObject(Schema schema, std::int64_t id) {
    Command(db_, fmt::format("DELETE FROM {} WHERE id = ?", Internal(schema, "columns"))).Bind(id).Step();
    Command(db_, fmt::format("DELETE FROM {} WHERE parent = ?", Internal(schema, "objects"))).Bind(id).Step();
    Command(db_, fmt::format("DELETE FROM {} WHERE id = ?", Internal(schema, "objects"))).Bind(id).Step();
}

void Catalog::RemoveColumn(Schema schema, std::int64_t table, std::string_view column) {
    Command(db_, fmt::format("DELETE FROM {} WHERE id = ? AND name = ?", Internal(schema, "columns")))
        .Bind(table)
        .Bind(column)
        .Step();
}

void Catalog::SetDefault(Schema schema, std::int64_t table, std::string_view column, std::string_view text) {
    Command(db_, fmt::format("UPDATE {} SET default_text = ? WHERE id = ? AND name = ?", Internal(schema, "columns")))
        .Bind(text)
        .Bind(table)
        .Bind(column)
        .Step();
}

void Catalog::SetBlankIndex(Schema schema, std::int64_t table, std::string_view column) {
    Command(db_, fmt::format("UPDATE {} SET blank_index = 1 WHERE id = ? AND name = ?", Internal(schema, "columns")))
        .Bind(table)
        .Bind(column)
        .Step();
}

void Catalog::ChangeColumn(Schema schema, std::int64_t table, const Column& column) {
    Command place(
        db_, fmt::format("SELECT colid, blank_index FROM {} WHERE id = ? AND name = ?", Internal(schema, "columns")));
    place.Bind(table).Bind(column.name).Step();
    const auto position = static_cast<int>(place.Integer(0));
    const bool blank = place.Integer(1) != 0;
    RemoveColumn(schema, table, column.name);
    AddColumn(schema, table, position, column);
    if (blank) {
        SetBlankIndex(schema, table, column.name);
    }
}

std::vector<Catalog::ConstraintRow> Catalog::Constraints(Schema schema, std::string_view xtype, std::int64_t table) {
    Command find(db_,
                 fmt::format("SELECT c.name, t.name, c.text FROM {0} c JOIN {0} t ON t.id = c.parent WHERE c.xtype "
                             "= ? AND ? IN (c.parent, 0) ORDER BY c.id",
                             Internal(schema, "objects")));
    find.Bind(xtype).Bind(table);
    std::vector<ConstraintRow> rows;
    while (find.Step()) {
        rows.push_back({find.Text(0), find.Text(1), find.Text(2)});
    }
    return rows;
}

void Catalog::RemoveConstraint(Schema schema, std::int64_t table, std::string_view name) {
    Command(db_, fmt::format("DELETE FROM {} WHERE parent = ? AND name = ?", Internal(schema, "objects")))
        .Bind(table)
        .Bind(name)
        .Step();
}

void Catalog::ForgetIdentity(const Table& table) {
    Command(db_, fmt::format("DELETE FROM {}.sqlite_sequence WHERE name = ?", SqliteName(table.schema)))
        .Bind(table.name)
        .Step();
}

void Catalog::RestartIdentity(const Table& table) {
    const std::string_view in = SqliteName(table.schema);
    ForgetIdentity(table);
    const Column& identity = table.columns.at(static_cast<std::size_t>(table.Identity()));
    const std::int64_t seed = identity.seed;
    if (identity.step == 1 && seed != 1) {
        Command(db_, fmt::format("INSERT INTO {}.sqlite_sequence (name, seq) VALUES (?, ?)", in))
            .Bind(table.name)
            .Bind(seed - 1)
            .Step();
    }
}

bool Catalog::HasObject(Schema schema, std::string_view name) {
    return Command(db_, fmt::format("SELECT 1 FROM {} WHERE name = ?", Internal(schema, "objects"))).Bind(name).Step();
}

std::string Catalog::ConstraintName(Schema schema, std::int64_t table, std::string_view xtype) {
    Command find(db_, fmt::format("SELECT name FROM {} WHERE parent = ? AND xtype = ?", Internal(schema, "objects")));
    return find.Bind(table).Bind(xtype).Step() ? find.Text(0) : std::string();
}

std::string Catalog::ConstraintText(Schema schema, std::int64_t table, std::string_view name) {
    Command find(db_, fmt::format("SELECT text FROM {} WHERE parent = ? AND name = ?", Internal(schema, "objects")));
    return find.Bind(table).Bind(name).Step() ? find.Text(0) : std::string();
}

std::string Catalog::ConstraintKindOf(Schema schema, std::int64_t table, std::string_view name) {
    Command find(db_, fmt::format("SELECT xtype FROM {} WHERE parent = ? AND name = ?", Internal(schema, "objects")));
    return find.Bind(table).Bind(name).Step() ? find.Text(0) : std::string();
}

} // namespace refhost::sql
