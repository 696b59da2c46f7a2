#pragma once

#include "import/account/AccountReader.h"
#include "import/rows/Sheet.h"

namespace importing {

/// Reads the lists that the columns of `classFields` need, each once and whole.
/// Throws host::Error.
CodeLists ReadCodeLists(const ClassFields& classFields, AccountReader& account);

} // namespace importing
