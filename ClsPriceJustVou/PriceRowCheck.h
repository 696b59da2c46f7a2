#pragma once

#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ClsPriceJustVou/PriceVoucher.h"

namespace kovra {

/// The checks of one row together with its document's header, over one recordset. They run in a fixed order and stop at
/// the first failure.
class PriceRowCheck {
public:
    /// What the checks look at; everything outlives the checks.
    struct Subject {
        ModPub::ImportState& state;
        /// Gives the accounting months.
        ClsPriceJustVou& calendar;
        const PriceHeader& header;
        /// The document's maker: the operator where the header names none.
        const std::string& cMaker;
        const PriceEntry& entry;
    };

    /// @param message receives the failure's text; stays as it is on success, and for a ledger without an open month
    PriceRowCheck(const Subject& subject, std::string& message);

    /// Whether the row may become part of a voucher. Throws what the database throws.
    bool Passes();

private:
    bool Fail(std::string_view message);
    void Open(std::string_view sql, host::CursorType cursorType = host::CursorType::openStatic);
    /// Whether a query finds a record; the recordset is closed again.
    bool Finds(std::string_view sql, host::CursorType cursorType = host::CursorType::openStatic);
    std::string ValueStyle();

    /// Finds the first month that is open for inventory accounting.
    bool HasOpenMonth();
    bool DatesInOpenMonth();
    bool HasRequiredFields();
    bool ItemExists();
    bool ItemHasPlannedPrice();
    bool ItemIsUnprocessed();
    bool ItemIsUnprocessedByItem();
    bool ItemIsUnprocessedByWarehouse();
    bool PriceIsValid();
    bool CostAccountingAllows();

    ModPub::ImportState& state_;
    ClsPriceJustVou& calendar_;
    const PriceHeader& header_;
    const std::string& cMaker_;
    const PriceEntry& entry_;
    std::string& message_;
    std::unique_ptr<host::Recordset> recordset_;
    std::int16_t periodMonth_ = 0;
    std::int16_t periodYear_ = 0;
};

} // namespace kovra
