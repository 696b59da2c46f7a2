#include "refhost/sql/binding/ForeignKeys.h"

#include "refhost/sql/binding/Definer.h"
#include "refhost/sql/syntax/Parser.h"
#include "refhost/sql/types/Collation.h"
#include "refhost/sql/types/Errors.h"

#include <algorithm>
#include <utility>

namespace refhost::sql {
namespace {

std::string_view RuleText(ReferenceRule rule) {
    switch (rule) {
    case ReferenceRule::cascade:
        return "CASCADE";
    case ReferenceRule::setNull:
        return "SET NULL";
    case ReferenceRule::setDefault:
        return "SET DEFAULT";
    case ReferenceRule::noAction:
        break;
    }
    return "NO ACTION";
}

std::string Definition(const ForeignKey& key) {
    const auto list = [](const std::vector<std::string>& names) {
        std::string text;
        for (const std::string& name : names) {
            text += (text.empty() ? "" : ", ") + Quoted(name);
        }
        return text;
    };
    return fmt::format("FOREIGN KEY ({}) REFERENCES {} ({}) ON DELETE {} ON UPDATE {}", list(key.columns),
                       Quoted(key.referenced), list(key.referencedColumns), RuleText(key.onDelete),
                       RuleText(key.onUpdate));
}

bool SameNames(std::vector<std::string> left, std::vector<std::string> right) {
    const auto fold = [](std::vector<std::string>& names) {
        std::ranges::transform(names, names.begin(), [](const std::string& name) { return FoldText(name); });
        std::ranges::sort(names);
    };
    fold(left);
    fold(right);
    return left == right;
}

/// The columns of each key of a table, the primary one first.
std::vector<std::vector<std::string>> KeysOf(Catalog& catalog, sqlite3* db, const Table& table) {
    std::vector<std::vector<std::string>> keys;
    for (const char* kind : {"PK", "UQ"}) {
        for (const Catalog::ConstraintRow& row : catalog.Constraints(table.schema, kind, table.id)) {
            std::vector<std::string>& key = keys.emplace_back();
            Command members(db, fmt::format("SELECT name FROM pragma_index_info(?, '{}') ORDER BY seqno",
                                            SqliteName(table.schema)));
            members.Bind(IndexName(table.name, row.name));
            while (members.Step()) {
                key.push_back(members.Text(0));
            }
            if (key.empty()) { // SQLite's row number needs no index
                key.push_back(table.columns.at(static_cast<std::size_t>(table.Identity())).name);
            }
        }
    }
    return keys;
}

} // namespace

std::string ForeignKey::Text() const { return Definition(*this); }

std::string ForeignKey::Line() const { return fmt::format("CONSTRAINT {} {}", Quoted(name), Definition(*this)); }

std::vector<ForeignKey> ForeignKeysOf(Catalog& catalog, Schema schema, std::int64_t table) {
    std::vector<ForeignKey> keys;
    for (const Catalog::ConstraintRow& row : catalog.Constraints(schema, "F ", table)) {
        const Constraint constraint = Parser(row.text, {}).ParseConstraintText();
        ForeignKey& key = keys.emplace_back();
        key.name = row.name;
        key.table = row.table;
        for (const IndexColumn& column : constraint.columns) {
            key.columns.push_back(column.name);
        }
        key.referenced = constraint.reference.table.Last();
        key.referencedColumns = constraint.reference.columns;
        key.onDelete = constraint.reference.onDelete;
        key.onUpdate = constraint.reference.onUpdate;
    }
    return keys;
}

std::vector<ForeignKey> ReferencesTo(Catalog& catalog, const Table& table) {
    std::vector<ForeignKey> keys = ForeignKeysOf(catalog, table.schema, 0);
    std::erase_if(keys, [&](const ForeignKey& key) {
        return !EqualNames(key.referenced, table.name) || EqualNames(key.table, table.name);
    });
    return keys;
}

ForeignKey ResolveForeignKey(Catalog& catalog, sqlite3* db, const Table& table, const Constraint& constraint,
                             const std::string& name) {
    ForeignKey key;
    key.name = name;
    key.table = table.name;
    key.onDelete = constraint.reference.onDelete;
    key.onUpdate = constraint.reference.onUpdate;
    const Name& target = constraint.reference.table;
    const std::shared_ptr<const Table> referenced = catalog.Find(target);
    if (!referenced || referenced->view || referenced->id == 0) {
        Fail(1767, "Foreign key '{}' references invalid table '{}'.", name, target.Text());
    }
    if (referenced->schema != table.schema) {
        Fail(1763, "Cross-database foreign key references are not supported. Foreign key '{}'.", target.Text());
    }
    key.referenced = referenced->name;
    for (const IndexColumn& column : constraint.columns) {
        const int place = table.Find(column.name);
        if (place < 0) {
            Fail(1769, "Foreign key '{}' references invalid column '{}' in referencing table '{}'.", name, column.name,
                 table.name);
        }
        key.columns.push_back(table.columns[static_cast<std::size_t>(place)].name);
    }
    const std::vector<std::vector<std::string>> keys = KeysOf(catalog, db, *referenced);
    if (constraint.reference.columns.empty()) {
        if (keys.empty() || catalog.ConstraintName(referenced->schema, referenced->id, "PK").empty()) {
            Fail(1773,
                 "Foreign key '{}' has implicit reference to object '{}' which does not have a primary key defined on "
                 "it.",
                 name, target.Text());
        }
        key.referencedColumns = keys.front();
    }
    for (const std::string& column : constraint.reference.columns) {
        const int place = referenced->Find(column);
        if (place < 0) {
            Fail(1770, "Foreign key '{}' references invalid column '{}' in referenced table '{}'.", name, column,
                 referenced->name);
        }
        key.referencedColumns.push_back(referenced->columns[static_cast<std::size_t>(place)].name);
    }
    if (key.columns.size() != key.referencedColumns.size()) {
        Fail(8139,
             "Number of referencing columns in foreign key differs from number of referenced columns, table '{}'.",
             table.name);
    }
    if (std::ranges::none_of(keys, [&](const auto& each) { return SameNames(each, key.referencedColumns); })) {
        Fail(1776,
             "There are no primary or candidate keys in the referenced table '{}' that match the referencing column "
             "list in the foreign key '{}'.",
             target.Text(), name);
    }
    for (std::size_t i = 0; i < key.columns.size(); ++i) {
        const Column& from = table.columns[static_cast<std::size_t>(table.Find(key.columns[i]))];
        const Column& to = referenced->columns[static_cast<std::size_t>(referenced->Find(key.referencedColumns[i]))];
        const bool texts = FamilyOf(from.type) == Family::text && FamilyOf(to.type) == Family::text;
        if (from.type.base != to.type.base || (!texts && Pack(from.type) != Pack(to.type))) {
            Fail(1778, "Column '{}.{}' is not the same data type as referencing column '{}.{}' in foreign key '{}'.",
                 referenced->name, to.name, table.name, from.name, name);
        }
    }
    return key;
}

std::optional<BrokenKey> FindBrokenKey(Catalog& catalog, sqlite3* db, Schema schema) {
    const std::string_view in = SqliteName(schema);
    Command check(db, fmt::format("SELECT \"table\", fkid FROM pragma_foreign_key_check(NULL, '{}') LIMIT 1", in));
    if (!check.Step()) {
        return std::nullopt;
    }
    const std::string table = check.Text(0);
    Command list(db, fmt::format("SELECT \"table\", \"from\" FROM pragma_foreign_key_list(?, '{}') WHERE id = ? ORDER "
                                 "BY seq",
                                 in));
    list.Bind(table).Bind(check.Integer(1));
    std::string referenced;
    std::vector<std::string> columns;
    while (list.Step()) {
        referenced = list.Text(0);
        columns.push_back(list.Text(1));
    }
    // SQLite does not tell its name.
    for (ForeignKey& key : ForeignKeysOf(catalog, schema, 0)) {
        if (EqualNames(key.table, table) && EqualNames(key.referenced, referenced) && key.columns == columns) {
            return BrokenKey{std::move(key), schema};
        }
    }
    return std::nullopt;
}

host::Error BrokenKeyError(const BrokenKey& broken, std::string_view verb, std::string_view written,
                           const Catalog& catalog) {
    const ForeignKey& key = broken.key;
    const bool same = EqualNames(key.table, key.referenced);
    // Whose row is wrong: the one that points, or the one that is pointed at and goes.
    const bool points = EqualNames(key.table, written) && verb != "DELETE";
    const std::vector<std::string>& columns = points ? key.referencedColumns : key.columns;
    return ErrorOf(547,
                   "The {} statement conflicted with the {} constraint \"{}\". The conflict occurred in database "
                   "\"{}\", table \"dbo.{}\"{}.",
                   verb,
                   points ? (same ? "FOREIGN KEY SAME TABLE" : "FOREIGN KEY")
                          : (same ? "SAME TABLE REFERENCE" : "REFERENCE"),
                   key.name, catalog.DatabaseOf(broken.schema), points ? key.referenced : key.table,
                   columns.size() == 1 ? fmt::format(", column '{}'", columns.front()) : std::string());
}

} // namespace refhost::sql
