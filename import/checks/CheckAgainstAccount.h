#pragma once

#include "import/account/AccountReader.h"
#include "import/outcome/Outcome.h"

namespace importing {

/// Checks every row against what the account says of it, all faults at once, before the class is asked: what the class
/// would say of items, batches, dates, projects and settings, in its words. Reads each table once and whole, and asks
/// nothing by row. Notes the ledger accounts of opening balances too. Throws host::Error.
void CheckAgainstAccount(Outcome& outcome, AccountReader& account);

/// Refuses rows that the ledger has already: opening balances of the same warehouse, item, batch and free items,
/// settings with the same key, documents with the same number. Rows that are known to be in (`alreadyIn`) are let
/// alone. Throws host::Error.
void RefuseWhatTheLedgerHas(Outcome& outcome, AccountReader& account);

// The parts of `CheckAgainstAccount`.
void CheckOpening(Outcome& outcome, AccountReader& account);
void CheckSettings(Outcome& outcome);
void CheckProjects(Outcome& outcome, AccountReader& account);
/// Notes the ledger account of each opening balance: the inventory account that the most particular setting names, that
/// of the item in the warehouse, of the item, of its class (or the class above) in the warehouse, of its class, of the
/// warehouse.
void NoteLedgerAccounts(Outcome& outcome, AccountReader& account);

} // namespace importing
