#pragma once

#include "refhost/sql/engine/EmbeddedDatabase.h"

#include <string>
#include <vector>

namespace bench {

/// The statements of an import on the raw SQLite library: translated beforehand, prepared once for each shape, values
/// bound, every row read.
class Replay {
public:
    /// Translates; nothing runs yet. A statement that is no query or write of rows is left out.
    Replay(refhost::sql::EmbeddedDatabase& database, const std::vector<std::string>& statements);
    ~Replay();
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;

    /// Runs everything once. Throws std::runtime_error when SQLite refuses one.
    void Run();

    std::size_t size() const { return calls_.size(); }

private:
    struct Call {
        sqlite3_stmt* statement;
        std::vector<host::Value> parameters;
    };

    sqlite3* database_;
    std::vector<sqlite3_stmt*> statements_;
    std::vector<Call> calls_;
};

} // namespace bench
