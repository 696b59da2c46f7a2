#pragma once

#include "refhost/sql/store/Catalog.h"

#include <cstdint>

namespace refhost::sql {

/// The format of account files that this program writes, kept in each file as SQLite's `user_version`. Every change of
/// what is stored (tables of the catalog, codes of types, order of texts, SQL of definitions) gets a number of its own
/// and a step in `UpgradeFile`; tests/refhost/sql/files holds a file of each earlier format.
///
///   0  unstamped: texts in the order of code points, identity columns without an end
///   1  texts in the order of Chinese_PRC_CI_AS; `seed` and `step` of identity columns
///   2  letters that stand for two are those two (`ß` is `ss`); computed columns, foreign keys, identity steps
inline constexpr std::int64_t formatVersion = 2;

/// Makes an account database of an empty file when `mayCreate`, and makes sure that a file is one. Throws `host::Error`
/// "unspecified" for a file that is none, and for one that a newer program wrote.
void InitializeFile(sqlite3* db, Schema schema, bool mayCreate);

/// Brings a file of an earlier format up to `formatVersion`, wholly or not at all. Throws `host::Error` "unspecified"
/// where rows stand in the way: such as two whose keys have become one.
void UpgradeFile(sqlite3* db, Catalog& catalog, Schema schema);

/// The format of an open file.
std::int64_t FileFormat(sqlite3* db, Schema schema);

} // namespace refhost::sql
