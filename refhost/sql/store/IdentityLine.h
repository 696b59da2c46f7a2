#pragma once

#include "refhost/sql/store/Catalog.h"

#include <string>
#include <string_view>

namespace refhost::sql {

/// The line of an identity column in SQLite's CREATE TABLE. It ends where its type ends, see `identityEnd`.
std::string IdentityLine(const Column& column);
/// How names of the constraints begin that hold identity columns within their types; the type's name follows.
inline constexpr std::string_view identityEnd = "identity|";

/// The line of an identity column before it had an end.
std::string EndlessIdentityLine(const Column& column);

} // namespace refhost::sql
