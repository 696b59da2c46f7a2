#include "refhost/sql/binding/Definer.h"

#include "refhost/sql/binding/ForeignKeys.h"
#include "refhost/sql/store/Atomic.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>

namespace refhost::sql {
namespace {

[[noreturn]] void FailNoObject(const Name& name) {
    Fail(4902, "Cannot find the object \"{}\" because it does not exist or you do not have permissions.", name.Text());
}

Column ColumnOf(const ColumnDefinition& definition) {
    Column column;
    column.name = definition.name;
    column.type = definition.type;
    column.identity = definition.identity;
    column.seed = definition.seed;
    column.step = definition.increment;
    column.defaultText = definition.defaultText;
    column.computedText = definition.computedText;
    column.persisted = definition.persisted;
    column.nullable =
        definition.nullable.value_or(true) && !definition.identity && definition.type.base != Base::timestamp;
    if (definition.identity) {
        if (FamilyOf(column.type) != Family::integer || column.type.base == Base::bit) {
            Fail(2749,
                 "Identity column '{}' must be of data type int, bigint, smallint, tinyint, or decimal or numeric with "
                 "a scale of 0, unencrypted, and constrained to be nonnullable.",
                 column.name);
        }
        if (definition.increment == 0) {
            Fail(2755, "Identity column '{}' contains invalid INCREMENT.", column.name);
        }
    }
    return column;
}

} // namespace

std::string_view XType(ConstraintKind kind) {
    switch (kind) {
    case ConstraintKind::primaryKey:
        return "PK";
    case ConstraintKind::unique:
        return "UQ";
    case ConstraintKind::foreignKey:
        return "F ";
    case ConstraintKind::check:
        break;
    }
    return "C ";
}

std::string Qualified(Schema schema, std::string_view name) {
    return fmt::format("{}.{}", SqliteName(schema), Quoted(name));
}

std::string IndexName(std::string_view table, std::string_view index) { return fmt::format("{}|{}", table, index); }

Schema Definer::SchemaOf(const Name& name) const {
    try {
        return catalog_.Resolve(name).schema;
    } catch (const host::Error&) {
        return Schema::account; // whoever looks for the name refuses it
    }
}

void Definer::RefuseKnown(Schema schema, const std::string& name) {
    if (catalog_.HasObject(schema, name)) {
        Fail(2714, "There is already an object named '{}' in the database.", name);
    }
}

std::shared_ptr<const Table> Definer::Reload(const Table& table) {
    catalog_.Forget();
    return catalog_.Get({{catalog_.DatabaseOf(table.schema), "", table.name}});
}

std::string Definer::FreeConstraintName(const Constraint& constraint, const Table& table) {
    if (!constraint.name.empty()) {
        RefuseKnown(table.schema, constraint.name);
        return constraint.name;
    }
    const std::string_view xtype = XType(constraint.kind);
    const std::string prefix =
        constraint.kind == ConstraintKind::foreignKey
            ? fmt::format("FK__{}__{}", table.name.substr(0, 9), constraint.columns.front().name.substr(0, 5))
            : fmt::format("{}__{}", xtype.substr(0, xtype.find(' ')), table.name.substr(0, 9));
    const std::string stem = fmt::format("{}__{:08X}", prefix, static_cast<std::uint32_t>(table.id));
    std::string name = stem;
    for (int i = 1; catalog_.HasObject(table.schema, name); ++i) {
        name = fmt::format("{}{}", stem, i);
    }
    return name;
}

void Definer::CreateTableAt(const ObjectPath& path, std::vector<Column> columns,
                            const std::vector<Constraint>& constraints) {
    if (path.owner != "dbo") {
        Fail(2760,
             "The specified schema name \"{}\" either does not exist or you do not have permission to use "
             "it.",
             path.owner);
    }
    if (path.name.starts_with("##")) {
        FailOwn(host::error_number::unspecified,
                "The embedded database has no temporary tables that sessions share. Use a name with one #.");
    }
    RefuseKnown(path.schema, path.name);
    auto table = std::make_shared<Table>();
    table->schema = path.schema;
    table->name = path.name;
    table->source = Qualified(path.schema, path.name);
    int identities = 0;
    int rowVersions = 0;
    for (Column& column : columns) {
        if (table->Find(column.name) >= 0) {
            Fail(2705,
                 "Column names in each table must be unique. Column name '{}' in table '{}' is specified more than "
                 "once.",
                 column.name, path.name);
        }
        identities += column.identity ? 1 : 0;
        rowVersions += column.type.base == Base::timestamp ? 1 : 0;
        table->columns.push_back(std::move(column));
    }
    if (identities > 1) {
        Fail(2744,
             "Multiple identity columns specified for table '{}'. Only one identity column per table is "
             "allowed.",
             path.name);
    }
    if (rowVersions > 1) {
        Fail(2738,
             "A table can only have one timestamp column. Because table '{}' already has one, the column "
             "cannot be added.",
             path.name);
    }
    for (const Constraint& constraint : constraints) {
        for (const IndexColumn& key : constraint.columns) {
            const int position = table->Find(key.name);
            if (position < 0) {
                Fail(1911, "Column name '{}' does not exist in the target table or view.", key.name);
            }
            if (constraint.kind == ConstraintKind::primaryKey) {
                table->columns[static_cast<std::size_t>(position)].nullable = false;
            }
        }
    }
    ResolveComputed(*table);
    table->id = catalog_.AddObject(path.schema, path.name, "U ", 0, "");
    for (std::size_t i = 0; i < table->columns.size(); ++i) {
        catalog_.AddColumn(path.schema, table->id, static_cast<int>(i) + 1, table->columns[i]);
    }
    std::vector<std::pair<const Constraint*, std::string>> keys;
    for (const Constraint& constraint : constraints) {
        if (constraint.kind == ConstraintKind::foreignKey) {
            continue;
        }
        const std::string name = FreeConstraintName(constraint, *table);
        catalog_.AddObject(path.schema, name, XType(constraint.kind), table->id, constraint.conditionText);
        if (constraint.kind != ConstraintKind::check) {
            keys.emplace_back(&constraint, name);
        }
    }
    Run(db_, fmt::format("CREATE TABLE {} {}", table->source, TableBody(*table)));
    for (const auto& [constraint, name] : keys) {
        AddKey(*table, *constraint, name);
    }
    if (identities > 0) {
        catalog_.RestartIdentity(*table);
    }
    // They may point at the table itself, and at its keys.
    for (const Constraint& constraint : constraints) {
        if (constraint.kind == ConstraintKind::foreignKey) {
            AddConstraint(*table, constraint, false);
        }
    }
}

void Definer::AddKey(const Table& table, const Constraint& constraint, const std::string& name) {
    const int first = table.Find(constraint.columns.front().name);
    if (constraint.columns.size() == 1 && table.columns[static_cast<std::size_t>(first)].identity) {
        return; // SQLite's row number is unique already
    }
    MakeIndex(table, name, constraint.columns, true);
}

void Definer::MakeIndex(const Table& table, const std::string& name, const std::vector<IndexColumn>& columns,
                        bool unique) {
    const std::string index = IndexName(table.name, name);
    std::string plain;
    std::string blank;
    std::string nulls;
    std::string anyNull;
    std::vector<std::string> blankColumns;
    for (const IndexColumn& key : columns) {
        const int position = table.Find(key.name);
        if (position < 0) {
            Fail(1911, "Column name '{}' does not exist in the target table or view.", key.name);
        }
        const Column& column = table.columns[static_cast<std::size_t>(position)];
        const Family family = FamilyOf(column.type);
        const std::string quoted = Quoted(column.name);
        const std::string order = key.descending ? " DESC" : "";
        const std::string comma = plain.empty() ? "" : ", ";
        const std::string collation = family == Family::text || family == Family::guid
                                          ? fmt::format(" COLLATE {}", textCollation)
                                      : family == Family::exact ? fmt::format(" COLLATE {}", exactCollation)
                                                                : std::string();
        plain.append(comma).append(quoted).append(order);
        nulls += fmt::format("{}ifnull({}, x'00'){}", comma, quoted, collation);
        if (column.nullable) {
            anyNull += fmt::format("{}{} IS NULL", anyNull.empty() ? "" : " OR ", quoted);
        }
        if (column.nullable && family == Family::text) {
            blank += fmt::format("{}ifnull({}, ''){}{}", comma, quoted, collation, order);
            blankColumns.push_back(column.name);
        } else {
            blank.append(comma).append(quoted).append(order);
        }
    }
    const auto make = [&](const std::string& suffix, const std::string& keys, bool distinct, const std::string& where) {
        try {
            Run(db_, fmt::format("CREATE {}INDEX {} ON {} ({}){}", distinct ? "UNIQUE " : "",
                                 Qualified(table.schema, index + suffix), Quoted(table.name), keys, where));
        } catch (const host::Error&) {
            if ((sqlite3_extended_errcode(db_) & 0xff) != SQLITE_CONSTRAINT) {
                throw;
            }
            Fail(1505,
                 "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the object name "
                 "'dbo.{}' and the index name '{}'.",
                 table.name, name);
        }
    };
    if (unique || blankColumns.empty()) {
        make("", plain, unique, "");
    }
    if (unique && !anyNull.empty()) {
        // To SQL Server one Null equals another here; to SQLite no two do.
        make("|null", nulls, true, " WHERE " + anyNull);
    }
    if (!blankColumns.empty()) {
        // A setting's key is sought by isnull(column, N'') = N'…' where the request leaves it empty, and by the column
        // where it does not. An index over the former serves both (see Binder::BindCompare), and keeps the search from
        // reading the whole table for each row of a request.
        make(unique ? "|blank" : "", blank, false, "");
        for (const std::string& column : blankColumns) {
            catalog_.SetBlankIndex(table.schema, table.id, column);
        }
    }
}

void Definer::Create(const CreateTable& create) {
    Atomic atomic(db_, SchemaOf(create.table));
    std::vector<Column> columns;
    for (const ColumnDefinition& definition : create.columns) {
        columns.push_back(ColumnOf(definition));
    }
    CreateTableAt(catalog_.Resolve(create.table), std::move(columns), create.constraints);
    NameDefaults(*catalog_.Get(create.table), create.columns);
    atomic.Commit();
}

void Definer::CreateFor(const Name& name, const std::vector<OutputColumn>& columns) {
    Atomic atomic(db_, SchemaOf(name));
    std::vector<Column> made;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const OutputColumn& output = columns[i];
        if (output.name.empty()) {
            Fail(1038,
                 "An object or column name is missing or empty. For SELECT INTO statements, verify each column has a "
                 "name. For other statements, look for empty alias names. Aliases defined as \"\" or [] are not "
                 "allowed. Change the alias to a valid name.");
        }
        Column column;
        column.name = output.name;
        column.type = output.value.type;
        column.nullable = output.value.nullable;
        if (column.type.base == Base::null) {
            column.type = {Base::integer, 0, 0, 0};
        }
        if (column.type.base == Base::timestamp) {
            // The copy keeps the versions it was given.
            column.type = {Base::binary, 8, 0, 0};
        }
        made.push_back(std::move(column));
    }
    CreateTableAt(catalog_.Resolve(name), std::move(made), {});
    atomic.Commit();
}

void Definer::Create(const CreateView& create) {
    Atomic atomic(db_, SchemaOf(create.view));
    const ObjectPath path = catalog_.Resolve(create.view);
    RefuseKnown(path.schema, path.name);
    Binder binder(catalog_, session_, literals_, LiteralUse::inlined);
    BoundSelect select = binder.BindInner(*create.select);
    if (!create.columns.empty() && create.columns.size() != select.columns.size()) {
        FailColumnCount(path.name, select.columns.size(), create.columns.size());
    }
    const std::int64_t id = catalog_.AddObject(path.schema, path.name, "V ", 0, create.text);
    std::string names;
    Table seen;
    for (std::size_t i = 0; i < select.columns.size(); ++i) {
        Column column;
        column.name = create.columns.empty() ? select.columns[i].name : create.columns[i];
        column.type = select.columns[i].value.type;
        column.nullable = select.columns[i].value.nullable;
        if (column.name.empty()) {
            Fail(4511, "Create View or Function failed because no column name was specified for column {}.", i + 1);
        }
        if (seen.Find(column.name) >= 0) {
            Fail(4506,
                 "Column names in each view or function must be unique. Column name '{}' in view or function '{}' is "
                 "specified more than once.",
                 column.name, path.name);
        }
        names += (i > 0 ? ", " : "") + Quoted(column.name);
        catalog_.AddColumn(path.schema, id, static_cast<int>(i) + 1, column);
        seen.columns.push_back(std::move(column));
    }
    Run(db_,
        fmt::format("CREATE VIEW {} ({}) AS {}", Qualified(path.schema, path.name), names, select.Text(false, false)));
    atomic.Commit();
}

void Definer::Replace(const CreateView& create) {
    Atomic atomic(db_, SchemaOf(create.view));
    DropView(create.view, false);
    Create(create);
    atomic.Commit();
}

void Definer::Create(const CreateIndex& create) {
    Atomic atomic(db_, SchemaOf(create.table));
    const std::shared_ptr<const Table> table = catalog_.Get(create.table);
    if (table->view) {
        Fail(1939, "Cannot create index on view '{}' because the view is not schema bound.", table->name);
    }
    const std::string index = IndexName(table->name, create.name);
    Command known(db_, fmt::format("SELECT 1 FROM {}.sqlite_schema WHERE type = 'index' AND name = ?",
                                   SqliteName(table->schema)));
    if (known.Bind(index).Step()) {
        Fail(1913, "The operation failed because an index or statistics with name '{}' already exists on table '{}'.",
             create.name, table->name);
    }
    MakeIndex(*table, create.name, create.columns, create.unique);
    atomic.Commit();
}

void Definer::DropTable(const Name& name, bool ifExists) {
    const std::shared_ptr<const Table> table = catalog_.Find(name);
    if (!table || table->view || table->id == 0) {
        if (!table && ifExists) {
            return;
        }
        Fail(3701, "Cannot drop the table '{}', because it does not exist or you do not have permission.", name.Text());
    }
    if (!ReferencesTo(catalog_, *table).empty()) {
        Fail(3726, "Could not drop object '{}' because it is referenced by a FOREIGN KEY constraint.", name.Text());
    }
    catalog_.RemoveObject(table->schema, table->id);
    Run(db_, "DROP TABLE " + table->source);
    if (table->Identity() >= 0) {
        catalog_.ForgetIdentity(*table);
    }
    catalog_.Forget();
}

void Definer::DropView(const Name& name, bool ifExists) {
    const std::shared_ptr<const Table> view = catalog_.Find(name);
    if (!view || !view->view || view->id == 0) {
        if (!view && ifExists) {
            return;
        }
        Fail(3701, "Cannot drop the view '{}', because it does not exist or you do not have permission.", name.Text());
    }
    catalog_.RemoveObject(view->schema, view->id);
    Run(db_, "DROP VIEW " + view->source);
    catalog_.Forget();
}

void Definer::DropIndex(const Name& name, bool ifExists) {
    const auto refuse = [&] {
        Fail(3701, "Cannot drop the index '{}', because it does not exist or you do not have permission.", name.Text());
    };
    if (name.parts.size() < 2) {
        refuse();
    }
    Name owner = name;
    owner.parts.pop_back();
    const std::shared_ptr<const Table> table = catalog_.Get(owner);
    if (!DropIndexNamed(*table, name.Last()) && !ifExists) {
        refuse();
    }
}

bool Definer::DropIndexNamed(const Table& table, const std::string& name) {
    const std::string index = IndexName(table.name, name);
    Command find(db_,
                 fmt::format("SELECT name FROM {}.sqlite_schema WHERE type = 'index' AND name COLLATE {} IN (?, ?, ?)",
                             SqliteName(table.schema), textCollation));
    find.Bind(index).Bind(index + "|blank").Bind(index + "|null");
    std::vector<std::string> found;
    while (find.Step()) {
        found.push_back(find.Text(0));
    }
    for (const std::string& each : found) {
        Run(db_, "DROP INDEX " + Qualified(table.schema, each));
    }
    return !found.empty();
}

void Definer::Drop(const sql::Drop& drop) {
    Atomic atomic(db_, SchemaOf(drop.names.front()));
    for (const Name& name : drop.names) {
        switch (drop.kind) {
        case ObjectKind::table:
            DropTable(name, drop.ifExists);
            break;
        case ObjectKind::view:
            DropView(name, drop.ifExists);
            break;
        case ObjectKind::index:
            DropIndex(name, drop.ifExists);
            break;
        }
    }
    atomic.Commit();
}

void Definer::AddColumn(const Table& table, const ColumnDefinition& definition) {
    Column column = ColumnOf(definition);
    if (table.Find(column.name) >= 0) {
        Fail(2705,
             "Column names in each table must be unique. Column name '{}' in table '{}' is specified more than once.",
             column.name, table.name);
    }
    if (column.identity) {
        FailOwn(host::error_number::unspecified, "This database adds no identity column to a table that exists.");
    }
    const bool empty = !Command(db_, fmt::format("SELECT 1 FROM {} LIMIT 1", table.source)).Step();
    const bool version = column.type.base == Base::timestamp;
    if (version && table.RowVersion() >= 0) {
        Fail(2738,
             "A table can only have one timestamp column. Because table '{}' already has one, the column "
             "'{}' cannot be added.",
             table.name, column.name);
    }
    if (!column.computedText.empty()) {
        column.type = Binder(catalog_, session_, literals_, LiteralUse::inlined).BindComputed(column, table).type;
        column.persisted = false; // SQLite adds none that is stored
    }
    std::string line = column.computedText.empty()
                           ? fmt::format("{} {}", Quoted(column.name), SqliteDeclaration(column.type))
                           : ColumnLine(table, column);
    if (!column.nullable && !version && column.computedText.empty()) {
        if (!column.defaultText.empty()) {
            Binder binder(catalog_, session_, literals_, LiteralUse::inlined);
            Command value(db_, "SELECT quote(" + binder.BindDefault(column) + ")");
            value.Step();
            line += " NOT NULL DEFAULT " + value.Text(0);
        } else if (empty) {
            line += " NOT NULL DEFAULT ''"; // never used: an insert that leaves the column out gives Null
        } else {
            Fail(4901,
                 "ALTER TABLE only allows columns to be added that can contain nulls, or have a DEFAULT definition "
                 "specified, or the column being added is an identity or timestamp column, or alternatively if none of "
                 "the previous conditions are satisfied the table must be empty to allow addition of this column. "
                 "Column '{}' cannot be added to non-empty table '{}' because it does not satisfy these conditions.",
                 column.name, table.name);
        }
    }
    Run(db_, fmt::format("ALTER TABLE {} ADD COLUMN {}", table.source, line));
    if (version) {
        Run(db_, fmt::format("UPDATE {} SET {} = k_rowversion({})", table.source, Quoted(column.name),
                             static_cast<int>(table.schema)));
    }
    Command last(db_, fmt::format("SELECT max(colid) FROM {}.\"sys:columns\" WHERE id = ?", SqliteName(table.schema)));
    last.Bind(table.id).Step();
    catalog_.AddColumn(table.schema, table.id, static_cast<int>(last.Integer(0)) + 1, column);
}

void Definer::Alter(const AlterTable& alter) {
    Atomic atomic(db_, SchemaOf(alter.table));
    std::shared_ptr<const Table> table = catalog_.Find(alter.table);
    if (!table) {
        FailNoObject(alter.table);
    }
    if (table->view) {
        Fail(4909, "Cannot alter '{}' because it is not a table.", alter.table.Text());
    }
    for (const ColumnDefinition& column : alter.addColumns) {
        AddColumn(*table, column);
        table = Reload(*table);
    }
    NameDefaults(*table, alter.addColumns);
    if (alter.changed) {
        ChangeColumn(*table, *alter.changed);
    }
    for (const Constraint& constraint : alter.addConstraints) {
        AddConstraint(*table, constraint, alter.checksRows);
    }
    for (const DefaultConstraint& added : alter.addDefaults) {
        if (table->Find(added.column) < 0) {
            Fail(1752, "Column '{}' in table '{}' is invalid for creating a default constraint.", added.column,
                 table->name);
        }
        if (!added.name.empty()) {
            RefuseKnown(table->schema, added.name);
            catalog_.AddObject(table->schema, added.name, "D ", table->id, added.column);
        }
        catalog_.SetDefault(table->schema, table->id, added.column, added.text);
    }
    for (const std::string& constraint : alter.dropConstraints) {
        DropConstraint(*table, constraint);
    }
    for (const std::string& column : alter.dropColumns) {
        DropColumn(*table, column);
        table = Reload(*table);
    }
    atomic.Commit();
}

void Definer::Truncate(const sql::Truncate& truncate) {
    Atomic atomic(db_, SchemaOf(truncate.table));
    const std::shared_ptr<const Table> table = catalog_.Find(truncate.table);
    if (!table || table->view) {
        FailNoObject(truncate.table);
    }
    if (!ReferencesTo(catalog_, *table).empty()) {
        Fail(4712, "Cannot truncate table '{}' because it is being referenced by a FOREIGN KEY constraint.",
             truncate.table.Text());
    }
    Run(db_, "DELETE FROM " + table->source);
    if (table->Identity() >= 0) {
        catalog_.RestartIdentity(*table);
    }
    atomic.Commit();
}

} // namespace refhost::sql
