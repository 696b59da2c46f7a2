#include "refhost/sql/engine/IdentityNumbers.h"

#include <algorithm>

#include <fmt/format.h>

namespace refhost::sql {
namespace {

const Column& IdentityOf(const Table& table) { return table.columns.at(static_cast<std::size_t>(table.Identity())); }

} // namespace

void IdentityNumbers::Expect() { sqlite3_set_last_insert_rowid(db_, 0); }

std::int64_t IdentityNumbers::Given(const Table& table, bool named) {
    const std::int64_t last = sqlite3_last_insert_rowid(db_);
    Note(table, last);
    if (named && IdentityOf(table).step != 1) {
        WriteDown({table.schema, table.name, IdentityOf(table).step, last}); // SQLite notes its own alone
    }
    return last;
}

void IdentityNumbers::Lost(const Table& table) {
    // Set by the rows that came before the one that failed.
    std::int64_t last = sqlite3_last_insert_rowid(db_);
    const Column& identity = IdentityOf(table);
    if (last == 0) {
        Command sequence(db_,
                         fmt::format("SELECT seq FROM {}.sqlite_sequence WHERE name = ?", SqliteName(table.schema)));
        last = sequence.Bind(table.name).Step() ? sequence.Integer(0) : identity.seed - identity.step;
    }
    const Taken taken{table.schema, table.name, identity.step, last + identity.step};
    Note(table, taken.last);
    WriteDown(taken);
}

void IdentityNumbers::Restore() {
    for (const Taken& taken : taken_) {
        WriteDown(taken);
    }
}

void IdentityNumbers::RolledBack() {
    Restore();
    taken_.clear();
}

void IdentityNumbers::Note(const Table& table, std::int64_t last) {
    if (sqlite3_get_autocommit(db_) != 0) {
        return; // written already
    }
    const auto known = std::ranges::find_if(
        taken_, [&](const Taken& each) { return each.schema == table.schema && each.table == table.name; });
    if (known == taken_.end()) {
        taken_.push_back({table.schema, table.name, IdentityOf(table).step, last});
    } else {
        known->last = known->step > 0 ? std::max(known->last, last) : std::min(known->last, last);
    }
}

void IdentityNumbers::WriteDown(const Taken& taken) try {
    const std::string_view in = SqliteName(taken.schema);
    // A table that came with the transaction is gone with it.
    Command known(db_, fmt::format("SELECT seq FROM {0}.sqlite_schema t LEFT JOIN {0}.sqlite_sequence s ON s.name = "
                                   "t.name WHERE t.type = 'table' AND t.name = ?{1}",
                                   in, taken.step == 1 ? " AND t.sql LIKE '%AUTOINCREMENT%'" : ""));
    if (!known.Bind(taken.table).Step()) {
        return;
    }
    const bool counted = !known.IsNull(0);
    Command(db_, counted ? fmt::format("UPDATE {}.sqlite_sequence SET seq = {}(seq, ?) WHERE name = ?", in,
                                       taken.step > 0 ? "max" : "min")
                         : fmt::format("INSERT INTO {}.sqlite_sequence (seq, name) VALUES (?, ?)", in))
        .Bind(taken.last)
        .Bind(taken.table)
        .Step();
} catch (const host::Error&) {
    // Where the database takes no more writes, what went wrong before is what the caller has to know.
    return;
}

} // namespace refhost::sql
