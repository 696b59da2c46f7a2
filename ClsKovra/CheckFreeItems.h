#pragma once

#include "ClsKovra/OpeningRow.h"
#include "ModPub/ImportState.h"

namespace kovra {

/// Whether the row fills every free item that its inventory item is kept by. Throws the database's error.
bool CheckFreeItems(ModPub::ImportState& state, const OpeningRow& row);

} // namespace kovra
