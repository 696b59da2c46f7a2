#include "ClsKovra/Amounts.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovra/OpeningRow.h"
#include "ClsKovra/Valuation.h"
#include "ModPub/RowLookups.h"
#include "ModPub/Trap.h"

namespace kovra {

void ClsKovra::ImportRow(const host::DOMNode& element) {
    const OpeningRow row = OpeningRow::Read(element);
    ModPub::RowLookups lookups(state_);
    Valuation valuation;
    if (!CheckRowMasterData(row, lookups, valuation) || !CheckRowDates(row, lookups)) {
        return;
    }
    std::string message;
    try {
        Amounts amounts;
        if (!WorkOutAmounts(row, lookups, valuation, amounts, message)) {
            return;
        }
        if (message.empty()) {
            InsertOpeningRow(row, amounts);
            state_.AddAccepted(row.key);
        } else {
            state_.AddRefused(row.key, message);
        }
    } catch (...) {
        // A message found before the error wins over the error's own text.
        state_.AddRefused(row.key, message.empty() ? ModPub::PendingError().description() : message);
    }
}

} // namespace kovra
