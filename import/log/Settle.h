#pragma once

#include "import/ledger/Ledger.h"
#include "import/log/ImportLog.h"

#include <string>
#include <vector>

namespace importing {

/// Finds the records of units in the ledger: each unit noted as imported whose record is not known gets the first one
/// that matches it, and then the units that were begun get what is left, and are imported with it. A unit that was
/// begun and has no record is not in. Records that other units of the import have are left to them.
/// @param records those above the import's baseline
/// Returns the units that changed.
std::vector<LoggedUnit> MatchRecords(const std::vector<LoggedUnit>& units, const std::vector<LedgerRecord>& records);

/// Asks the ledger about what imports that were cut off left in doubt, notes the answers, and notes their end.
/// Returns their numbers. Throws host::Error and sqlite::Error.
std::vector<std::int64_t> SettleUnfinished(ImportLog& log, Ledger& ledger, const std::string& account,
                                           const std::string& className);

} // namespace importing
