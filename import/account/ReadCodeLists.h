#pragma once

#include "host/Environment.h"
#include "import/rows/Sheet.h"

#include <string_view>

namespace importing {

/// Reads the lists that the columns of `classFields` need, each once and whole.
/// @param connection an open connection to the account
/// @param year the login's accounting year, which the accounts are of
/// Throws host::Error.
CodeLists ReadCodeLists(const ClassFields& classFields, host::Environment& environment, host::Connection& connection,
                        std::string_view year);

} // namespace importing
