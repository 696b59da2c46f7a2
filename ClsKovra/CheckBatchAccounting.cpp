#include "ClsKovra/CheckBatchAccounting.h"

#include "ClsKovra/Valuation.h"
#include "ModPub/Conversions.h"
#include "ModPub/FirstRow.h"
#include "ModPub/Joined.h"

#include <algorithm>
#include <array>

namespace kovra {
namespace {

constexpr std::array methodsWithBatches = {valuation_method::monthlyAverage, valuation_method::movingAverage,
                                           valuation_method::firstInFirstOut, valuation_method::lastInFirstOut};

} // namespace

bool CheckBatchAccounting(ModPub::ImportState& state, const std::string& cWhCode, const OpeningRow& row) {
    const auto found = ModPub::FirstRow<1>(
        state, IsValuedByItem(state)
                   ? ModPub::Joined({"select cValueType from Inventory where cInvCode=N'", row.cInvCode, "'"})
                   : ModPub::Joined({"select cWhValueStyle from Warehouse where cWHCode=N'", cWhCode, "'"}));
    const std::string method = found ? ModPub::ToText(found->front()) : std::string();
    if (std::ranges::find(methodsWithBatches, method) == methodsWithBatches.end()) {
        return true;
    }
    const auto batch = ModPub::FirstRow<1>(
        state, ModPub::Joined({"select isnull(bCheckBatch,0) from inventory where cInvCode=N'", row.cInvCode, "'"}));
    return !(batch && ModPub::ToBoolean(batch->front()) && row.cBatchCode.empty());
}

} // namespace kovra
