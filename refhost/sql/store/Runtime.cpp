#include "refhost/sql/store/Runtime.h"

#include <memory>
#include <utility>

#include <fmt/format.h>

namespace refhost::sql {

std::string_view SqliteName(Schema schema) {
    switch (schema) {
    case Schema::account:
        return "main";
    case Schema::system:
        return "QxSystem";
    case Schema::temporary:
        break;
    }
    return "temp";
}

std::optional<host::Error> Runtime::TakeError() { return std::exchange(error_, std::nullopt); }

void Runtime::Forget() {
    for (std::size_t i = 0; i < schemaCount; ++i) {
        counters_.at(i).reset();
        locks_.at(i).reset();
    }
    begin_.reset();
    commit_.reset();
}

void Runtime::BeginWriting(Schema schema) {
    StatementHandle& lock = locks_.at(static_cast<std::size_t>(schema));
    if (!lock) {
        lock = Prepare(db_, LockText(SqliteName(schema)));
    }
    if (!begin_) {
        begin_ = Prepare(db_, "BEGIN");
    }
    sql::BeginWriting(db_, begin_.get(), lock.get());
}

void Runtime::Commit() {
    if (!commit_) {
        commit_ = Prepare(db_, "COMMIT");
    }
    Run(db_, commit_.get());
}

std::string Runtime::NextRowVersion(Schema schema) {
    const bool outer = std::exchange(stepping, false);
    StatementHandle& counter = counters_.at(static_cast<std::size_t>(schema));
    if (!counter) {
        counter = Prepare(
            db_, fmt::format("UPDATE {}.\"sys:counter\" SET value = value + 1 RETURNING value", SqliteName(schema)));
    }
    if (sqlite3_step(counter.get()) != SQLITE_ROW) {
        sqlite3_reset(counter.get());
        stepping = outer;
        FailSqlite(db_);
    }
    auto value = static_cast<std::uint64_t>(sqlite3_column_int64(counter.get(), 0));
    sqlite3_step(counter.get());
    sqlite3_reset(counter.get());
    stepping = outer;
    std::string bytes(8, '\0');
    for (std::size_t i = bytes.size(); i-- > 0; value >>= 8U) {
        bytes[i] = static_cast<char>(value & 0xffU);
    }
    return bytes;
}

std::int64_t Runtime::NextIdentity(Schema schema, std::string_view table, std::int64_t seed, std::int64_t step) {
    const bool outer = std::exchange(stepping, false);
    const auto guard = [&](bool* flag) { *flag = outer; };
    const std::unique_ptr<bool, decltype(guard)> restore(&stepping, guard);
    const std::string_view in = SqliteName(schema);
    Command count(db_, fmt::format("UPDATE {}.sqlite_sequence SET seq = seq + ? WHERE name = ? RETURNING seq", in));
    if (count.Bind(step).Bind(table).Step()) {
        const std::int64_t number = count.Integer(0);
        count.Step();
        return number;
    }
    Command(db_, fmt::format("INSERT INTO {}.sqlite_sequence (name, seq) VALUES (?, ?)", in))
        .Bind(table)
        .Bind(seed)
        .Step();
    return seed;
}

} // namespace refhost::sql
