#include "ClsKovra/Amounts.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovra/GetTrackFlag.h"
#include "ClsKovra/OpeningRow.h"
#include "ClsKovra/Valuation.h"
#include "ModPub/Conversions.h"

namespace kovra {
namespace {

constexpr std::string_view negativePrice = "单价必须大于等于零。";

std::string_view NegativeQuantityFailure(ModPub::RowLookups& lookups, const OpeningRow& row, std::string_view method) {
    if (method == valuation_method::individual) {
        return "个别计价法不允许录入负数量。";
    }
    const host::Value tracked = GetTrackFlag(lookups, row.cInvCode);
    return !tracked.IsNull() && ModPub::ToBoolean(tracked) ? "跟踪型管理的存货不允许录入负数量。" : std::string_view();
}

} // namespace

/// Fills `amounts`, or `message` when the row is to be refused.
/// @return false when the row's outcome is recorded already
bool ClsKovra::WorkOutAmounts(const OpeningRow& row, ModPub::RowLookups& lookups, Valuation& valuation,
                              Amounts& amounts, std::string& message) {
    const auto& [plannedPrice, method] = valuation;
    amounts.quantity = ModPub::Val(row.Field("iQuantity"));
    amounts.amount = ModPub::Val(row.iPrice);
    if (amounts.quantity < 0) {
        message = NegativeQuantityFailure(lookups, row, method);
        if (!message.empty()) {
            return true;
        }
    }
    // The item's planned price is tested whatever the valuation method: callers know the refusal.
    if (!plannedPrice.IsNull() && ModPub::ToDouble(plannedPrice) < 0) {
        message = negativePrice;
        return true;
    }
    if (method != valuation_method::retailPrice && method != valuation_method::plannedPrice) {
        amounts.unitCost = ModPub::Val(row.Field("iCost"));
    } else {
        if (amounts.quantity == 0) {
            message = "计划价/售价法不允许导入数量为0的期初数据。";
            return true;
        }
        if (!PlannedPriceByFreeItems(row, lookups, valuation.plannedPrice)) {
            return false;
        }
        if (plannedPrice.IsNull()) {
            message = method == valuation_method::plannedPrice ? "请在存货目录中录入该存货的计划单价。"
                                                               : "请在存货目录中录入该存货的售价。";
            return true;
        }
        amounts.unitCost = ModPub::ToDouble(plannedPrice);
        SplitPlannedAmount(amounts, method);
    }
    if (amounts.unitCost < 0) {
        message = negativePrice;
    }
    return true;
}

} // namespace kovra
