#pragma once

#include <cstddef>

#include <sqlite3.h>

namespace refhost::sql {

/// How many columns a query that is applied may have.
inline constexpr std::size_t mostAppliedColumns = 100;

/// Teaches a connection to apply a query to each row of its neighbours, since SQLite lets none in FROM see them; the
/// arguments of a table-valued function may. `k_pack(c0, c1, …)` is an aggregate that packs its rows into one value,
/// and `k_rows(packed)` gives them back as a table with the columns c0, c1, ….
void RegisterAppliedRows(sqlite3* db);

} // namespace refhost::sql
