#include "ClsKovra/CheckBatchAccounting.h"
#include "ClsKovra/CheckFreeItems.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovra/OpeningRow.h"
#include "ClsKovra/PassesCheck.h"
#include "ClsKovra/ProjectFailure.h"
#include "ClsKovra/Valuation.h"
#include "ModPub/Conversions.h"
#include "ModPub/RowLookups.h"

namespace kovra {
namespace {

std::string MissingFields(const OpeningRow& row) {
    std::string message;
    if (row.cWhCode.empty()) {
        message = "仓库编码不能为空。";
    }
    if (row.cInvCode.empty()) {
        message += "存货编码不能为空。";
    }
    if (row.iPrice.empty()) {
        message += "金额不能为空。";
    }
    return message;
}

} // namespace

bool ClsKovra::CheckRowMasterData(const OpeningRow& row, ModPub::RowLookups& lookups, Valuation& valuation) {
    return PassesCheck(state_, row.key, [&] { return MasterDataFailure(row, lookups, valuation); });
}

std::string ClsKovra::MasterDataFailure(const OpeningRow& row, ModPub::RowLookups& lookups, Valuation& valuation) {
    if (std::string missing = MissingFields(row); !missing.empty()) {
        return missing;
    }
    const auto item = lookups.FirstRow<2>({"Select cValuetype,iInvRCost From inventory "
                                           " Where cInvCode='",
                                           row.cInvCode, "' and bService=0 and bInvType=0 and isnull(bPTOModel,0)=0 "});
    if (!item) {
        return "存货编码不合法。";
    }
    const auto& [cValuetype, iInvRCost] = *item;
    const bool byItem = IsValuedByItem(state_);
    if (byItem) {
        if (cValuetype.IsNull()) {
            return "该存货没有设置计价方式。";
        }
        valuation.method = ModPub::ToText(cValuetype);
    }
    valuation.plannedPrice = iInvRCost;

    if (!CheckFreeItems(lookups, row)) {
        return "设置自由项的存货必须输入自由项。";
    }

    const auto warehouse = lookups.FirstRow<1>({"Select cwhvaluestyle From Warehouse "
                                                " Where cWhCode='",
                                                row.cWhCode, "' and bincost = 1 "});
    if (!warehouse) {
        return "仓库编码不合法。";
    }
    if (!byItem) {
        const host::Value& cwhvaluestyle = warehouse->front();
        if (cwhvaluestyle.IsNull()) {
            return "该仓库没有设置计价方式。";
        }
        valuation.method = ModPub::ToText(cwhvaluestyle);
    }

    if (!CheckBatchAccounting(state_, lookups, byItem ? std::string() : row.cWhCode, row)) {
        return "批次核算的存货未录入批号，不允许导入。";
    }
    return ProjectFailure(lookups, row);
}

} // namespace kovra
