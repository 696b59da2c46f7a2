#pragma once

#include "host/Value.h"
#include "refhost/sql/engine/EmbeddedDatabase.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace bench {

/// Statements on the raw SQLite library: prepared once for each text, values bound, every row read.
class RawStatements {
public:
    explicit RawStatements(sqlite3* database) : database_(database) {}
    ~RawStatements();
    RawStatements(const RawStatements&) = delete;
    RawStatements& operator=(const RawStatements&) = delete;

    /// Appends a statement; nothing runs yet. Throws std::runtime_error when SQLite cannot prepare it.
    void Add(const std::string& text, std::vector<host::Value> parameters);
    /// Runs everything once. Throws std::runtime_error when SQLite refuses one.
    void Run();

    std::size_t size() const { return calls_.size(); }

private:
    struct Call {
        sqlite3_stmt* statement;
        std::vector<host::Value> parameters;
    };

    sqlite3* database_;
    std::unordered_map<std::string, sqlite3_stmt*> prepared_;
    std::vector<Call> calls_;
};

/// Appends what SQLite gets for the statements of an import. Throws the database's error for one that is no query or
/// write of rows.
void AddTranslated(RawStatements& raw, refhost::sql::EmbeddedDatabase& database,
                   const std::vector<std::string>& statements);

} // namespace bench
