#pragma once

#include "refhost/sql/store/Catalog.h"

#include <cstdint>
#include <string>
#include <vector>

namespace refhost::sql {

/// The identity numbers that statements took. A number once taken does not come back, not even when the statement fails
/// or its transaction is rolled back; SQLite alone would take it back with them.
class IdentityNumbers {
public:
    explicit IdentityNumbers(sqlite3* db) : db_(db) {}

    /// An insert is about to run.
    void Expect();
    /// The insert into `table` gave numbers up to the returned one; `named` says that the statement named them itself.
    std::int64_t Given(const Table& table, bool named);
    /// The insert into `table` failed, a violated constraint being the reason; its row took a number as well.
    void Lost(const Table& table);
    /// The transaction is committed: the numbers stand in the database.
    void Committed() { taken_.clear(); }
    /// The transaction was rolled back to a savepoint: writes the numbers down again.
    void Restore();
    /// The transaction was rolled back: writes the numbers down.
    void RolledBack();

private:
    struct Taken {
        Schema schema;
        std::string table;
        std::int64_t step;
        std::int64_t last;
    };

    void Note(const Table& table, std::int64_t last);
    void WriteDown(const Taken& taken);

    sqlite3* db_;
    std::vector<Taken> taken_;
};

} // namespace refhost::sql
