#pragma once

#include "ClsKovra/OpeningRow.h"
#include "ModPub/RowLookups.h"

#include <string>

namespace kovra {

/// The message about the row's project class and project, or the empty text. Their names are written into the row's
/// children cItemCName and cName. Throws 91 when the row lacks one of these, and the database's error.
std::string ProjectFailure(ModPub::RowLookups& lookups, const OpeningRow& row);

} // namespace kovra
