#pragma once

#include <string>
#include <vector>

namespace refhost::sql {

/// What a statement touches, as SQLite tells while it prepares it.
struct TouchedTables {
    /// Tables of the account that it reads, and that it inserts into.
    std::vector<std::string> read;
    std::vector<std::string> inserted;
    /// Whether what it answers depends on its literals and the tables read alone.
    bool answersFromTables = true;

    /// Takes note of one thing; the arguments are those of SQLite's authorizer.
    void Note(int action, const char* first, const char* second, const char* database);
};

} // namespace refhost::sql
