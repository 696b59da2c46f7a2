#include "ClsKovra/ClsKovra.h"
#include "ModPub/Conversions.h"
#include "ModPub/RowLookups.h"
#include "ModPub/RuntimeErrors.h"

namespace kovra {

bool ClsKovra::InvCodeIsTorF(const std::string& cCode, const std::string& cType) {
    if (!state_.connection) {
        ModPub::RaiseRuntimeError(host::error_number::objectNotSet);
    }
    ModPub::RowLookups lookups(state_);
    return InvCodeIsTorF(lookups, cCode, cType);
}

bool ClsKovra::InvCodeIsTorF(ModPub::RowLookups& lookups, const std::string& cCode, std::string_view cType) {
    const auto row = lookups.FirstRow<1>({"SELECT ", cType, " FROM Inventory WHERE cInvCode='", cCode, "'"});
    if (!row) {
        state_.environment.ShowMessage("该存货没有找到！");
        return false;
    }
    return ModPub::ToBoolean(row->front());
}

} // namespace kovra
