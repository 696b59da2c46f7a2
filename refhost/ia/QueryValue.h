#pragma once

#include "host/Environment.h"

#include <string_view>

namespace refhost {

/// The first value of a query's first row; Empty when it has no row. Throws the database's error.
host::Value QueryValue(host::Environment& environment, host::Connection& connection, std::string_view sql);

} // namespace refhost
