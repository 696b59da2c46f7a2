#pragma once

#include "import/rows/Sheet.h"

#include <string>

namespace cli {

/// The codes that an account has for the columns of a class; the account is opened for it.
/// @param login a login file
/// Throws std::runtime_error for a login that cannot be used and host::Error for what the database refuses.
importing::CodeLists CodesOfAccount(const std::string& login, const importing::ClassFields& classFields);

} // namespace cli
