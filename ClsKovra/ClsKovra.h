#pragma once

#include "ModPub/ImportState.h"
#include "ModPub/RequestFields.h"
#include "ModPub/RowLookups.h"
#include "ModPub/TransactFrame.h"

#include <optional>
#include <string>
#include <string_view>

namespace kovra {

struct Amounts;
struct OpeningRow;
struct Valuation;

/// Imports opening balances into `Ia_subsidiary`: "ADD" and "EDIT" both append.
class ClsKovra {
public:
    /// @param observer watches the import; nobody where it is nullptr
    explicit ClsKovra(host::Environment& environment, ModPub::ImportObserver* observer = nullptr)
        : state_(environment, observer) {}

    /// Imports one request; serves one call an instance.
    /// @param sXml the request, UTF-8
    /// @param login the caller's login
    /// @return the result document or an error result. Never throws.
    std::string Transact(std::string_view sXml, host::HostLogin* login);

    /// Whether a flag of an item is set, asked on the connection that `Transact` opened. An unknown item is shown to
    /// the user in a message and counts as false.
    /// @param cCode the item's code
    /// @param cType a Boolean column of `Inventory`, for example "bInvBatch"
    /// Throws 91 when there is no connection yet, 94 for a Null flag, and the database's error.
    bool InvCodeIsTorF(const std::string& cCode, const std::string& cType);

    /// The fields that it reads of a request.
    static ModPub::RequestFields Fields();

private:
    std::optional<ModPub::RequestError> RefusedLedger();
    bool CheckLedgerState();
    std::string LedgerFailure();

    void ImportRow(const host::DOMNode& element);
    bool CheckRowMasterData(const OpeningRow& row, ModPub::RowLookups& lookups, Valuation& valuation);
    std::string MasterDataFailure(const OpeningRow& row, ModPub::RowLookups& lookups, Valuation& valuation);
    bool CheckRowDates(const OpeningRow& row, ModPub::RowLookups& lookups);
    std::string_view DatesFailure(const OpeningRow& row, ModPub::RowLookups& lookups);
    bool InvCodeIsTorF(ModPub::RowLookups& lookups, const std::string& cCode, std::string_view cType);
    bool WorkOutAmounts(const OpeningRow& row, ModPub::RowLookups& lookups, Valuation& valuation, Amounts& amounts,
                        std::string& message);
    bool PlannedPriceByFreeItems(const OpeningRow& row, ModPub::RowLookups& lookups, host::Value& plannedPrice);
    void InsertOpeningRow(const OpeningRow& row, const Amounts& amounts);

    const std::string& StartDate();

    ModPub::ImportState state_;
    /// The module's start date "YYYY-MM-DD", asked of the login once a call; empty when the calendar lacks it.
    std::optional<std::string> startDate_;
};

} // namespace kovra
