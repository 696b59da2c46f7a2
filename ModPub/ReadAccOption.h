#pragma once

#include "host/Environment.h"

#include <string>
#include <string_view>

namespace ModPub {

/// One option of the host's table `AccInformation`, or the empty text when it has no row or only Nulls.
/// `cValue` is trimmed of blanks, `cDefault` (used where `cValue` is Null) stands as it is.
/// Throws the database's error.
std::string ReadAccOption(host::Environment& environment, host::Connection& connection, std::string_view cSysID,
                          std::string_view cName);

} // namespace ModPub
