// Changes of tables that are there. Where SQLite has no statement for a change, the table's definition is written anew
// into `sqlite_schema` while its rows stay, as SQLite's page of ALTER TABLE describes it for constraints and defaults
// ("Making Other Kinds Of Table Schema Changes").

#include "refhost/sql/binding/Definer.h"
#include "refhost/sql/binding/ForeignKeys.h"
#include "refhost/sql/store/IdentityLine.h"
#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/syntax/Words.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <utility>

namespace refhost::sql {
namespace {

/// Whether a column of a type takes every value of another, and indexes stay as they are: a longer text, for one.
bool OnlyLonger(const Type& from, const Type& to) {
    const bool varies = from.base == Base::varchar || from.base == Base::nvarchar || from.base == Base::varbinary;
    return varies && from.base == to.base &&
           (to.length == Type::maxLength || (from.length != Type::maxLength && from.length <= to.length));
}

} // namespace

/// The column's line in CREATE TABLE. An identity column is SQLite's own row number: numbers given once never return.
std::string Definer::ColumnLine(const Table& table, const Column& column) {
    if (column.identity) {
        return IdentityLine(column);
    }
    std::string line = fmt::format("{} {}", Quoted(column.name), SqliteDeclaration(column.type));
    if (!column.computedText.empty()) {
        Binder binder(catalog_, session_, literals_, LiteralUse::inlined);
        line += fmt::format(" GENERATED ALWAYS AS ({}) {}", binder.BindComputed(column, table).text,
                            column.persisted ? "STORED" : "VIRTUAL");
    }
    return line + (column.nullable ? "" : " NOT NULL");
}

std::string Definer::TableBody(const Table& table) {
    std::string text;
    for (const Column& column : table.columns) {
        text += (text.empty() ? "(" : ", ") + ColumnLine(table, column);
    }
    for (const Catalog::ConstraintRow& row : catalog_.Constraints(table.schema, "C ", table.id)) {
        Parser parser(row.text, {});
        const ExpressionPtr condition = parser.ParseConditionText();
        Binder binder(catalog_, session_, parser.Literals(), LiteralUse::inlined);
        text += fmt::format(", CONSTRAINT {} CHECK {}", Quoted(row.name), binder.BindCheck(*condition, table));
    }
    for (const ForeignKey& key : ForeignKeysOf(catalog_, table.schema, table.id)) {
        text += ", " + key.Line();
    }
    return text + ")";
}

void Definer::ResolveComputed(Table& table) {
    for (Column& column : table.columns) {
        if (!column.computedText.empty()) {
            Binder binder(catalog_, session_, literals_, LiteralUse::inlined);
            column.type = binder.BindComputed(column, table).type;
        }
    }
}

void Definer::RewriteTable(const Table& table) {
    const std::string_view in = SqliteName(table.schema);
    const std::string text = fmt::format("CREATE TABLE {} {}", Quoted(table.name), TableBody(table));
    Run(db_, "PRAGMA writable_schema = ON");
    Command(db_, fmt::format("UPDATE {}.sqlite_schema SET sql = ? WHERE type = 'table' AND name = ?", in))
        .Bind(text)
        .Bind(table.name)
        .Step();
    Command version(db_, fmt::format("PRAGMA {}.schema_version", in));
    version.Step();
    Run(db_, fmt::format("PRAGMA {}.schema_version = {}", in, version.Integer(0) + 1));
    Run(db_, "PRAGMA writable_schema = RESET");
}

void Definer::AddConstraint(const Table& table, const Constraint& constraint, bool checksRows) {
    const bool foreign = constraint.kind == ConstraintKind::foreignKey;
    if (foreign && table.schema == Schema::temporary) {
        return; // as on the server, which has none on temporary tables
    }
    const std::string name = FreeConstraintName(constraint, table);
    if (constraint.kind == ConstraintKind::primaryKey || constraint.kind == ConstraintKind::unique) {
        for (const IndexColumn& key : constraint.columns) {
            const int position = table.Find(key.name);
            if (position >= 0 && constraint.kind == ConstraintKind::primaryKey &&
                table.columns[static_cast<std::size_t>(position)].nullable) {
                Fail(8111, "Cannot define PRIMARY KEY constraint on nullable column in table '{}'.", table.name);
            }
        }
        catalog_.AddObject(table.schema, name, XType(constraint.kind), table.id, "");
        return AddKey(table, constraint, name);
    }
    if (foreign) {
        const ForeignKey key = ResolveForeignKey(catalog_, db_, table, constraint, name);
        catalog_.AddObject(table.schema, name, XType(constraint.kind), table.id, key.Text());
    } else {
        catalog_.AddObject(table.schema, name, XType(constraint.kind), table.id, constraint.conditionText);
        Binder binder(catalog_, session_, literals_, LiteralUse::inlined);
        const std::string condition = binder.BindCheck(*constraint.condition, table);
        if (checksRows &&
            Command(db_, fmt::format("SELECT 1 FROM {} WHERE NOT {} LIMIT 1", table.source, condition)).Step()) {
            Fail(547,
                 "The ALTER TABLE statement conflicted with the CHECK constraint \"{}\". The conflict occurred in "
                 "database \"{}\", table \"dbo.{}\"{}.",
                 name, catalog_.DatabaseOf(table.schema), table.name, CheckedColumn(table, constraint.conditionText));
        }
    }
    RewriteTable(table);
    if (foreign && checksRows) {
        if (const std::optional<BrokenKey> broken = FindBrokenKey(catalog_, db_, table.schema);
            broken && EqualNames(broken->key.name, name)) {
            throw BrokenKeyError(*broken, "ALTER TABLE", table.name, catalog_);
        }
    }
}

std::vector<std::string> Definer::IndexesOver(const Table& table, const Column& column) {
    // Some have the column in an expression alone, see MakeIndex.
    Command find(db_, fmt::format("SELECT name FROM {}.sqlite_schema WHERE type = 'index' AND tbl_name = ? AND "
                                  "instr(substr(sql, instr(sql, '(')), ?) > 0",
                                  SqliteName(table.schema)));
    find.Bind(table.name).Bind(Quoted(column.name));
    std::vector<std::string> names;
    while (find.Step()) {
        std::string name = find.Text(0).substr(table.name.size() + 1);
        name.erase(std::min(name.find('|'), name.size()));
        names.push_back(std::move(name));
    }
    return names;
}

void Definer::RefuseDependent(const Table& table, const Column& column) {
    const auto refuse = [&](std::string_view kind, std::string_view name) {
        Fail(5074, "The {} '{}' is dependent on column '{}'.", kind, name, column.name);
    };
    for (const std::string& index : IndexesOver(table, column)) {
        refuse(catalog_.ConstraintKindOf(table.schema, table.id, index).empty() ? "index" : "object", index);
    }
    for (const Catalog::ConstraintRow& check : catalog_.Constraints(table.schema, "C ", table.id)) {
        if (Mentions(check.text, column.name)) {
            refuse("object", check.name);
        }
    }
    for (const ForeignKey& key : ForeignKeysOf(catalog_, table.schema, 0)) {
        const auto has = [&](const std::string& of, const std::vector<std::string>& columns) {
            return EqualNames(of, table.name) && std::ranges::find(columns, column.name) != columns.end();
        };
        if (has(key.table, key.columns) || has(key.referenced, key.referencedColumns)) {
            refuse("object", key.name);
        }
    }
    for (const Column& other : table.columns) {
        if (!other.computedText.empty() && Mentions(other.computedText, column.name)) {
            refuse("column", other.name);
        }
    }
}

void Definer::ChangeColumn(const Table& table, const ColumnDefinition& definition) {
    const int place = table.Find(definition.name);
    if (place < 0) {
        Fail(4924, "ALTER TABLE ALTER COLUMN failed because column '{}' does not exist in table '{}'.", definition.name,
             table.name);
    }
    Column column = table.columns[static_cast<std::size_t>(place)];
    if (!column.computedText.empty() || column.type.base == Base::timestamp) {
        Fail(4928, "Cannot alter column '{}' because it is '{}'.", column.name,
             column.computedText.empty() ? "timestamp" : "COMPUTED");
    }
    const Type before = column.type;
    if (!OnlyLonger(before, definition.type)) {
        RefuseDependent(table, column);
    }
    column.type = definition.type;
    column.nullable = definition.nullable.value_or(true) && !column.identity;
    if (column.identity && FamilyOf(column.type) != Family::integer) {
        Fail(2749,
             "Identity column '{}' must be of data type int, bigint, smallint, tinyint, or decimal or numeric with a "
             "scale of 0, unencrypted, and constrained to be nonnullable.",
             column.name);
    }
    const std::string quoted = Quoted(column.name);
    if (!column.nullable &&
        Command(db_, fmt::format("SELECT 1 FROM {} WHERE {} IS NULL LIMIT 1", table.source, quoted)).Step()) {
        Fail(515,
             "Cannot insert the value NULL into column '{}', table '{}.dbo.{}'; column does not allow nulls. UPDATE "
             "fails.",
             column.name, catalog_.DatabaseOf(table.schema), table.name);
    }
    catalog_.ChangeColumn(table.schema, table.id, column);
    const std::shared_ptr<const Table> changed = Reload(table);
    RewriteTable(*changed);
    if (!column.identity && !OnlyLonger(before, column.type)) {
        Run(db_, fmt::format("UPDATE {} SET {} = k_store({}, {}, {})", table.source, quoted, quoted, Pack(before),
                             Pack(column.type)));
    }
    RebuildViews(table.schema);
}

void Definer::DropColumn(const Table& table, const std::string& name) {
    const int place = table.Find(name);
    if (place < 0) {
        Fail(4924, "ALTER TABLE DROP COLUMN failed because column '{}' does not exist in table '{}'.", name,
             table.name);
    }
    const Column& column = table.columns[static_cast<std::size_t>(place)];
    RefuseDependent(table, column);
    for (const Catalog::ConstraintRow& row : catalog_.Constraints(table.schema, "D ", table.id)) {
        if (EqualNames(row.text, name)) {
            Fail(5074, "The object '{}' is dependent on column '{}'.", row.name, column.name);
        }
    }
    Run(db_, fmt::format("ALTER TABLE {} DROP COLUMN {}", table.source, Quoted(column.name)));
    catalog_.RemoveColumn(table.schema, table.id, column.name);
}

void Definer::DropConstraint(const Table& table, const std::string& name) {
    const std::string kind = catalog_.ConstraintKindOf(table.schema, table.id, name);
    if (kind.empty()) {
        Fail(3728, "'{}' is not a constraint.", name);
    }
    if (kind == "D ") {
        catalog_.SetDefault(table.schema, table.id, catalog_.ConstraintText(table.schema, table.id, name), "");
        return catalog_.RemoveConstraint(table.schema, table.id, name);
    }
    if (kind == "C " || kind == "F ") {
        catalog_.RemoveConstraint(table.schema, table.id, name);
        return RewriteTable(table);
    }
    for (const ForeignKey& key : ForeignKeysOf(catalog_, table.schema, 0)) {
        if (EqualNames(key.referenced, table.name)) {
            Fail(3725, "The constraint '{}' is being referenced by table '{}', foreign key constraint '{}'.", name,
                 key.table, key.name);
        }
    }
    if (!DropIndexNamed(table, name)) {
        FailOwn(host::error_number::unspecified,
                "The embedded database does not drop a key whose column is the table's identity.");
    }
    catalog_.RemoveConstraint(table.schema, table.id, name);
}

void Definer::NameDefaults(const Table& table, const std::vector<ColumnDefinition>& columns) {
    for (const ColumnDefinition& column : columns) {
        if (!column.defaultName.empty()) {
            RefuseKnown(table.schema, column.defaultName);
            catalog_.AddObject(table.schema, column.defaultName, "D ", table.id, column.name);
        }
    }
}

void Definer::RebuildViews(Schema schema) {
    struct View {
        std::string name;
        std::string text;
    };
    std::vector<View> views;
    {
        Command find(db_, fmt::format("SELECT name, text FROM {}.\"sys:objects\" WHERE xtype = 'V ' ORDER BY id",
                                      SqliteName(schema)));
        while (find.Step()) {
            views.push_back({find.Text(0), find.Text(1)});
        }
    }
    for (const View& view : views) {
        RebuildView(view.name, view.text);
    }
}

void Definer::RebuildView(const std::string& name, const std::string& text) {
    Run(db_, "SAVEPOINT rebuilt_view");
    try {
        Parser parser(text, {});
        const std::optional<Statement> statement = parser.ParseBatch();
        const CreateView* const create = statement ? statement->As<CreateView>() : nullptr;
        if (create == nullptr) {
            FailOwn(host::error_number::unspecified, "The text of view '{}' is none of a view.", name);
        }
        Definer(db_, catalog_, session_, parser.Literals()).Replace(*create);
    } catch (const host::Error&) {
        Run(db_, "ROLLBACK TO rebuilt_view");
    }
    Run(db_, "RELEASE rebuilt_view");
    catalog_.Forget();
}

} // namespace refhost::sql
