// The keys that a write gives its rows, asked again once one of them turned out to be a duplicate: the server's message
// tells the key.
#include "refhost/sql/binding/Binder.h"
#include "refhost/sql/types/Collation.h"

#include <algorithm>

#include <fmt/format.h>

namespace refhost::sql {
namespace {

std::string Collation(const Column& column) {
    switch (FamilyOf(column.type)) {
    case Family::text:
    case Family::guid:
        return fmt::format(" COLLATE {}", textCollation);
    case Family::exact:
        return fmt::format(" COLLATE {}", exactCollation);
    default:
        return {};
    }
}

} // namespace

std::string Binder::BindInsertKeys(const Insert& insert, const Table& table, const std::vector<const Column*>& keys) {
    std::vector<std::string> names = insert.columns;
    if (names.empty() && !insert.defaultValues) {
        for (const Column& column : table.columns) {
            if (!column.identity) {
                names.push_back(column.name);
            }
        }
    }
    /// Where a key column stands in the statement's list; at its end for one that it leaves out.
    const auto place = [&](const Column& key) {
        return static_cast<std::size_t>(
            std::ranges::find_if(names, [&](const std::string& each) { return EqualNames(each, key.name); }) -
            names.begin());
    };
    const auto automatic = [&](const Column& key) {
        return key.defaultText.empty() ? std::string("NULL") : BindDefault(key);
    };
    if (insert.select) {
        const BoundSelect select = BindSelect(*insert.select);
        std::string text = "SELECT NULL AS id";
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const std::size_t given = place(*keys[i]);
            std::string value = automatic(*keys[i]);
            if (given < select.columns.size()) {
                Bound column;
                column.text = fmt::format("s.c{}", given);
                column.type = select.columns[given].value.type;
                value = As(std::move(column), keys[i]->type, 0, Surplus::refuse);
            }
            text += fmt::format(", {} AS k{}", value, i);
        }
        return text + fmt::format(" FROM ({}) AS s", select.Text(true, true));
    }
    std::string text = "SELECT NULL AS id";
    for (std::size_t i = 0; i < keys.size(); ++i) {
        text += fmt::format(", column{} AS k{}", i + 1, i);
    }
    text += " FROM (VALUES ";
    const std::size_t rows = insert.defaultValues ? 1 : insert.rows.size();
    for (std::size_t row = 0; row < rows; ++row) {
        text += row > 0 ? ", (" : "(";
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const std::size_t given = place(*keys[i]);
            text += i > 0 ? ", " : "";
            text += given < names.size() ? BindAssigned(*insert.rows[row][given], *keys[i]) : automatic(*keys[i]);
        }
        text += ")";
    }
    return text + ")";
}

std::string Binder::BindUpdateKeys(const Update& update, const std::shared_ptr<const Table>& table,
                                   const std::vector<const Column*>& keys) {
    if (!update.from.empty()) {
        return {}; // the rows of a join are not asked for again
    }
    Scope scope;
    scope_ = &scope;
    const std::string row = AddTable(table, {}, false).sqlName;
    std::string text = fmt::format("SELECT {}.rowid AS id", row);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto assigned = std::ranges::find_if(
            update.assignments, [&](const Assignment& each) { return EqualNames(each.column, keys[i]->name); });
        const std::string value = assigned == update.assignments.end()
                                      ? fmt::format("{}.{}", row, Quoted(keys[i]->name))
                                      : BindAssigned(*assigned->value, *keys[i]);
        text += fmt::format(", {} AS k{}", value, i);
    }
    text += fmt::format(" FROM {} AS {}", table->source, row);
    if (update.where) {
        text += " WHERE " + BindCondition(*update.where, false);
    }
    scope_ = nullptr;
    return text;
}

DuplicateQueries Binder::BindDuplicates(const Insert* insert, const Update* update,
                                        const std::shared_ptr<const Table>& table,
                                        const std::vector<std::string>& columns) {
    DuplicateQueries queries;
    if ((insert != nullptr && catalog_.Get(insert->table)->view) ||
        (update != nullptr && update->from.empty() && catalog_.Get(update->target)->view)) {
        return queries; // columns go by the view's names there
    }
    std::vector<const Column*> keys;
    for (const std::string& name : columns) {
        keys.push_back(&table->columns.at(static_cast<std::size_t>(table->Find(name))));
        queries.types.push_back(keys.back()->type);
    }
    const std::string rows = insert != nullptr   ? BindInsertKeys(*insert, *table, keys)
                             : update != nullptr ? BindUpdateKeys(*update, table, keys)
                                                 : std::string();
    if (rows.empty() || keys.empty()) {
        return queries;
    }
    std::string list;
    std::string same;
    std::string groups;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::string separator = i > 0 ? ", " : "";
        list += fmt::format("{}n.k{}", separator, i);
        same += fmt::format("{}o.{} IS n.k{}", i > 0 ? " AND " : "", Quoted(keys[i]->name), i);
        groups += fmt::format("{}n.k{}{}", separator, i, Collation(*keys[i]));
    }
    // A row that an update moves leaves its old key free.
    const std::string moved =
        update != nullptr ? fmt::format(" AND o.rowid NOT IN (SELECT id FROM ({}))", rows) : std::string();
    queries.met = fmt::format("SELECT {} FROM ({}) AS n WHERE EXISTS (SELECT 1 FROM {} AS o WHERE {}{}) LIMIT 1", list,
                              rows, table->source, same, moved);
    queries.repeated =
        fmt::format("SELECT {} FROM ({}) AS n GROUP BY {} HAVING count(*) > 1 LIMIT 1", list, rows, groups);
    return queries;
}

} // namespace refhost::sql
