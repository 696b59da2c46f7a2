#pragma once

#include "import/account/AccountReader.h"
#include "import/run/Unit.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace importing {

/// A record of the ledger's table that a class writes.
struct LedgerRecord {
    std::int64_t id = 0;
    /// By which it is told which unit wrote it.
    std::string match;
    /// The hash of all its columns.
    std::string content;
};

struct LedgerTable;

/// The records that a class writes in an account: opening balances, settings, documents. Identity numbers rise, so the
/// records of an import are among those above the number that was the highest before.
/// Every member throws host::Error.
class Ledger {
public:
    /// @param account outlives the ledger
    Ledger(const ClassFields& classFields, AccountReader& account);

    /// The highest identity number so far; 0 of an empty table.
    std::int64_t HighestId();
    /// The identity numbers of the records of the login's year.
    std::set<std::int64_t> Ids();
    /// Whether records that are read may be changed by others before the transaction ends.
    enum class Lock { none, held };
    /// The records above an identity number, in order.
    std::vector<LedgerRecord> RecordsAbove(std::int64_t id, Lock lock = Lock::none);

    /// By which the record of a unit is found.
    std::string MatchOf(const Outcome& outcome, const Unit& unit) const;

    /// Whether single records can be taken back: opening balances and settings.
    bool CanUndo() const noexcept;
    /// Deletes the records; the caller holds a transaction.
    void Delete(const std::vector<std::int64_t>& ids);

private:
    void AddEntries(std::vector<LedgerRecord>& records, std::int64_t id);

    const LedgerTable& table_;
    AccountReader& account_;
};

} // namespace importing
