#pragma once

#include "refhost/sql/functions/Call.h"

#include <span>

namespace refhost::sql {

// What plans call by name, by what it is about. All but the session's give the same for the same arguments.

/// Conversions and operators.
std::span<const FunctionRow> ArithmeticFunctions();
std::span<const FunctionRow> TextFunctions();
/// What looks for a text in another.
std::span<const FunctionRow> SearchFunctions();
std::span<const FunctionRow> NumberFunctions();
std::span<const FunctionRow> DateFunctions();
/// Functions whose result depends on the session.
std::span<const FunctionRow> SessionFunctions();

/// Sums, means and spreads, texts joined, and the one value of a subquery.
void RegisterAggregates(sqlite3* db, Runtime& runtime);

} // namespace refhost::sql
