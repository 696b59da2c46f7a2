#include "ClsKovra/Amounts.h"

#include "ClsKovra/Valuation.h"
#include "ModPub/Conversions.h"

namespace kovra {

void SplitPlannedAmount(Amounts& amounts, std::string_view method) {
    const double planned = ModPub::TwoPlaces(amounts.unitCost * amounts.quantity);
    const double given = ModPub::TwoPlaces(amounts.amount);
    if (method == valuation_method::plannedPrice) {
        amounts.debitDifference = given - planned;
    } else {
        amounts.creditDifference = planned - given;
    }
    amounts.amount = planned;
}

} // namespace kovra
