#pragma once

#include "ClsKovra/OpeningRow.h"
#include "ModPub/RowLookups.h"

#include <string>

namespace kovra {

/// Whether the row has a batch number where its item's cost is accounted by batch. Individual, planned and retail
/// pricing are exempt. Throws the database's error.
/// @param cWhCode the warehouse whose valuation method counts; unused when the item's does
bool CheckBatchAccounting(ModPub::ImportState& state, ModPub::RowLookups& lookups, const std::string& cWhCode,
                          const OpeningRow& row);

} // namespace kovra
