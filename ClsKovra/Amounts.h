#pragma once

#include <string_view>

namespace kovra {

/// The numbers of a row.
struct Amounts {
    double quantity = 0;
    /// The planned or retail unit price where the item is valued by it.
    double unitCost = 0;
    double amount = 0;
    /// What the given amount is over the planned one.
    double debitDifference = 0;
    /// What the retail amount is over the given one.
    double creditDifference = 0;
};

/// Replaces the amount by the planned or retail one, rounded to two places, and puts the difference on the debit side
/// for planned price, on the credit side for any other `method`.
void SplitPlannedAmount(Amounts& amounts, std::string_view method);

} // namespace kovra
