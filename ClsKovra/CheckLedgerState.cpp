#include "ClsKovra/ClsKovra.h"
#include "ClsKovra/GlMendFlag.h"
#include "ModPub/Conversions.h"
#include "ModPub/Lookup.h"
#include "ModPub/ReadAccOption.h"
#include "ModPub/Trap.h"

namespace kovra {

bool ClsKovra::CheckLedgerState() {
    try {
        const std::string failure = LedgerFailure();
        if (failure.empty()) {
            return false;
        }
        state_.AddRefused({}, failure);
    } catch (...) {
        const host::Error error = ModPub::PendingError();
        state_.AddOutcome({}, error.number(), error.description());
    }
    return true;
}

/// Why the ledger takes no opening balances, or the empty text when it does.
std::string ClsKovra::LedgerFailure() {
    host::Environment& environment = state_.environment;
    host::Connection& connection = *state_.connection;
    const std::string year = state_.login->LoginYear();
    const std::string start = ModPub::FormatDate(state_.login->PeriodDates(1, ModPub::ToInt32(year)).first);

    if (!ModPub::IsDate(ModPub::ReadAccOption(environment, connection, "IA", "dIAStartDate"))) {
        return "没有启用存货核算系统。";
    }
    if (GlMendFlag(state_, "IA", 0)) {
        return "存货核算系统已经期初记账。";
    }
    if (ModPub::LookupFinds(environment, connection,
                            "SELECT id FROM IA_Subsidiary WHERE iMonth<>0 AND iYear = " + year +
                                " "
                                " and ((cVouType<>'24' and not (isnull(cbusType,'')='假退料' and iAOutQuantity>0 and "
                                "isnull(cPZID,'0') = '0')) or (cVouType='24' and not cPZID is null)) ")) {
        return "已有业务数据，不能导入期初数据。";
    }
    if (ModPub::LookupFinds(environment, connection,
                            "SELECT autoid FROM IA_enSubsidiary WHERE iMonth<>0 AND iYear = " + year + " ")) {
        return "已有发出商品业务，不能导入期初数据。";
    }
    if (ModPub::LookupFinds(environment, connection,
                            "SELECT cJvCode FROM JustInVouch where djvdate >='" + start + "'")) {
        return "已有调整单据，不能导入期初数据。";
    }
    if (ModPub::LookupFinds(environment, connection,
                            "SELECT autoid FROM CostJustVouch  where dcjvdate >='" + start + "'")) {
        return ModPub::ReadAccOption(environment, connection, "AA", "cSysVersion") == "商业"
                   ? "已有售价调整单，不能导入期初数据。"
                   : "已有计划价调整单，不能导入期初数据。";
    }
    if (ModPub::LookupFinds(environment, connection,
                            "select top 1 * from ia_summary where iYear = " + year +
                                " and isnull(iperiod,0) <>0 and imonth <>0")) {
        return "有存货的期末处理会计期不符，不能导入期初数据。";
    }
    return {};
}

} // namespace kovra
