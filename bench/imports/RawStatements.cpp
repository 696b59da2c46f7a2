#include "bench/imports/RawStatements.h"

#include "bench/imports/MemoryAccount.h"

#include <stdexcept>

#include <sqlite3.h>

namespace bench {
namespace {

/// Binds a value as it is held; the statements outlive it.
struct Bind {
    sqlite3_stmt* statement;
    int index;

    void operator()(const std::string& text) const {
        sqlite3_bind_text(statement, index, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    }
    void operator()(std::int64_t number) const { sqlite3_bind_int64(statement, index, number); }
    void operator()(double number) const { sqlite3_bind_double(statement, index, number); }
    void operator()(const host::Bytes& bytes) const {
        sqlite3_bind_blob(statement, index, bytes.data.data(), static_cast<int>(bytes.data.size()), SQLITE_STATIC);
    }
    void operator()(host::Null) const { sqlite3_bind_null(statement, index); }
    template <class Other> void operator()(const Other&) const {
        throw std::runtime_error("a parameter that SQLite does not store");
    }
};

} // namespace

RawStatements::~RawStatements() {
    for (const auto& [text, statement] : prepared_) {
        sqlite3_finalize(statement);
    }
}

void RawStatements::Add(const std::string& text, std::vector<host::Value> parameters) {
    const auto [found, fresh] = prepared_.try_emplace(text, nullptr);
    if (fresh && sqlite3_prepare_v3(database_, text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &found->second, nullptr) !=
                     SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(database_));
    }
    calls_.push_back({found->second, std::move(parameters)});
}

void RawStatements::Run() {
    for (const Call& call : calls_) {
        for (std::size_t index = 0; index < call.parameters.size(); ++index) {
            std::visit(Bind{call.statement, static_cast<int>(index) + 1}, call.parameters[index].storage());
        }
        int result = SQLITE_ROW;
        while (result == SQLITE_ROW) {
            result = sqlite3_step(call.statement);
        }
        sqlite3_reset(call.statement);
        if (result != SQLITE_DONE) {
            throw std::runtime_error(sqlite3_errmsg(database_));
        }
    }
}

void AddTranslated(RawStatements& raw, refhost::sql::EmbeddedDatabase& database,
                   const std::vector<std::string>& statements) {
    for (const std::string& sql : statements) {
        if (sql == beginTransaction || sql == commitTransaction) {
            raw.Add(sql, {});
        } else {
            refhost::sql::Translation translation = database.Translate(sql);
            raw.Add(translation.text, std::move(translation.parameters));
        }
    }
}

} // namespace bench
