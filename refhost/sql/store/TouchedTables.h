#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace refhost::sql {

/// What a statement touches, as SQLite tells while it prepares it.
struct TouchedTables {
    /// Tables of the account that it reads, and that it inserts into, where `complete`.
    std::vector<std::string> read;
    std::vector<std::string> inserted;
    /// Whether what it answers depends on its literals and the tables read alone.
    bool answersFromTables = true;

    /// Whether memory was enough to take note of everything.
    bool complete = true;

    /// Takes note of one thing; the arguments are those of SQLite's authorizer. SQLite calls it, and no exception may
    /// pass through SQLite.
    void Note(int action, const char* first, const char* second, const char* database) noexcept;

private:
    void Add(std::vector<std::string>& tables, std::string_view table) noexcept;
};

} // namespace refhost::sql
