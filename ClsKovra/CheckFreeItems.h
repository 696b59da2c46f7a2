#pragma once

#include "ClsKovra/OpeningRow.h"
#include "ModPub/RowLookups.h"

namespace kovra {

/// Whether the row fills every free item that its inventory item is kept by. Throws the database's error.
bool CheckFreeItems(ModPub::RowLookups& lookups, const OpeningRow& row);

} // namespace kovra
