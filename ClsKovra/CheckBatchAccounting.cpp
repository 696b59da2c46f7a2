#include "ClsKovra/CheckBatchAccounting.h"

#include "ClsKovra/Valuation.h"
#include "ModPub/Conversions.h"

#include <algorithm>
#include <array>

namespace kovra {
namespace {

constexpr std::array methodsWithBatches = {valuation_method::monthlyAverage, valuation_method::movingAverage,
                                           valuation_method::firstInFirstOut, valuation_method::lastInFirstOut};

} // namespace

bool CheckBatchAccounting(ModPub::ImportState& state, ModPub::RowLookups& lookups, const std::string& cWhCode,
                          const OpeningRow& row) {
    const auto found =
        IsValuedByItem(state)
            ? lookups.FirstRow<1>({"select cValueType from Inventory where cInvCode=N'", row.cInvCode, "'"})
            : lookups.FirstRow<1>({"select cWhValueStyle from Warehouse where cWHCode=N'", cWhCode, "'"});
    const std::string method = found ? ModPub::ToText(found->front()) : std::string();
    if (std::ranges::find(methodsWithBatches, method) == methodsWithBatches.end()) {
        return true;
    }
    const auto batch =
        lookups.FirstRow<1>({"select isnull(bCheckBatch,0) from inventory where cInvCode=N'", row.cInvCode, "'"});
    return !(batch && ModPub::ToBoolean(batch->front()) && row.cBatchCode.empty());
}

} // namespace kovra
