#include "ClsKovra/ClsKovra.h"
#include "ClsKovra/OpeningRow.h"
#include "ModPub/RowLookups.h"

namespace kovra {
namespace {

std::string PriceStatement(const OpeningRow& row) {
    std::string sql = "select fInvRCost from InvCheckFreeIA870 where cInvCode = N'" + row.cInvCode + "' ";
    for (const std::string_view name : freeItemNames) {
        sql.append(" and ( isnull(").append(name).append(",N'') = isnull(N'").append(row.Field(name));
        sql.append("',N'') or isnull(").append(name).append(",N'') = N'') ");
    }
    return sql;
}

} // namespace

bool ClsKovra::PlannedPriceByFreeItems(const OpeningRow& row, ModPub::RowLookups& lookups, host::Value& plannedPrice) {
    try {
        if (const auto price = lookups.FirstRow<1>({PriceStatement(row)})) {
            plannedPrice = price->front();
        }
        return true;
    } catch (...) {
        // The error's own text is not reported.
        state_.AddRefused(row.key, {});
        return false;
    }
}

} // namespace kovra
