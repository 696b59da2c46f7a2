#include "ClsKovra/ClsKovra.h"
#include "ModPub/Conversions.h"
#include "ModPub/FirstRow.h"
#include "ModPub/Joined.h"
#include "ModPub/RuntimeErrors.h"

namespace kovra {

bool ClsKovra::InvCodeIsTorF(const std::string& cCode, const std::string& cType) {
    if (!state_.connection) {
        ModPub::RaiseRuntimeError(host::error_number::objectNotSet);
    }
    const auto row =
        ModPub::FirstRow<1>(state_, ModPub::Joined({"SELECT ", cType, " FROM Inventory WHERE cInvCode='", cCode, "'"}));
    if (!row) {
        state_.environment.ShowMessage("该存货没有找到！");
        return false;
    }
    return ModPub::ToBoolean(row->front());
}

} // namespace kovra
