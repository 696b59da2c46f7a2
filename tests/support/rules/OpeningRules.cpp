#include "tests/support/rules/OpeningRules.h"

namespace test {
namespace {

/// The login's own connection, which it opens for its first look at the calendar and keeps.
constexpr int loginConnection = 2;

} // namespace

std::string OpeningRules::Transact(const std::vector<OpeningRow>& rows) {
    return Transact(
        [&] {
            play_.LookUp("select top 1 * from ia_summary where iYear = 2023");
            return std::string();
        },
        rows);
}

std::string OpeningRules::RefusedTransact() {
    return Transact(
        [&] {
            play_.LookUp("cSysID='AA' AND cName='cSysVersion'");
            return std::string("已有计划价调整单，不能导入期初数据。");
        },
        {});
}

std::string OpeningRules::Ledger(const std::function<std::string()>& last) {
    std::string reason;
    try {
        play_.Do("LoginYear");
        play_.Do("PeriodDates", {}, loginConnection);
        play_.LookUp("cSysID='IA' AND cName='dIAStartDate'");
        play_.Do("LoginYear");
        play_.LookUp("Select bFlag_IA from gl_mend where iPeriod=0 AND iYEar =2023");
        play_.LookUp("SELECT id FROM IA_Subsidiary WHERE iMonth<>0");
        play_.LookUp("SELECT autoid FROM IA_enSubsidiary");
        play_.LookUp("SELECT cJvCode FROM JustInVouch");
        play_.LookUp("SELECT autoid FROM CostJustVouch");
        reason = last();
        if (!reason.empty()) {
            play_.Outcome("", 101, reason);
        }
    } catch (const host::Error& error) {
        reason = error.description();
        play_.Outcome("", error.number(), reason);
    }
    return reason;
}

std::string OpeningRules::Transact(const std::function<std::string()>& lastOfLedger,
                                   const std::vector<OpeningRow>& rows) {
    return PlayTransact(play_, {.ledgerCheck = [&]() -> std::optional<std::string> {
                                    const std::string reason = Ledger(lastOfLedger);
                                    if (reason.empty()) {
                                        return std::nullopt;
                                    }
                                    play_.Helper("GetAttr", "dsc");
                                    return play_.Refuse("101", reason);
                                },
                                .run =
                                    [&] {
                                        return PlayRows(play_, [&] {
                                            for (const OpeningRow& row : rows) {
                                                Row(row);
                                            }
                                        });
                                    }});
}

void OpeningRules::Row(const OpeningRow& row) {
    // The row is read outside every trap of its own.
    play_.Point();
    RowLookUps lookUps(play_);
    if (!Check(row, [&] { return MasterData(row, lookUps); }) || !Check(row, [&] { return Dates(row, lookUps); })) {
        return;
    }
    try {
        // The amounts are read.
        play_.Point();
        if (row.isNegative) {
            lookUps.LookUp("SELECT bTrack FROM Inventory");
        }
        if (row.planned && row.badAmount.empty() && !PriceByFreeItems(row, lookUps)) {
            return;
        }
        if (row.badAmount.empty()) {
            play_.Do("LoginYear");
            play_.Execute("Insert Into Ia_subsidiary");
            play_.Put(row.stored, row.stored);
            play_.Outcome(row.Key(), 0, "ok");
        } else {
            play_.Outcome(row.Key(), 101, row.badAmount);
        }
    } catch (const host::Error& error) {
        play_.Outcome(row.Key(), 101, row.badAmount.empty() ? error.description() : row.badAmount);
    }
}

/// A check refuses its row itself; an error in it, the refusal's own included, refuses it with the message so far.
bool OpeningRules::Check(const OpeningRow& row, const std::function<std::string()>& check) {
    std::string message;
    try {
        message = check();
        if (message.empty()) {
            return true;
        }
        play_.Outcome(row.Key(), 101, message);
    } catch (const host::Error&) {
        play_.Outcome(row.Key(), 101, message);
    }
    return false;
}

std::string OpeningRules::MasterData(const OpeningRow& row, RowLookUps& lookUps) {
    lookUps.LookUp("Select cValuetype,iInvRCost From inventory  Where cInvCode='" + row.item + "'");
    if (!row.unknownItem.empty()) {
        return row.unknownItem;
    }
    play_.LookUp("cName='cValueStyle'");
    lookUps.LookUp("Select bFree1,bFree2,bFree3");
    lookUps.LookUp("Select cwhvaluestyle From Warehouse  Where cWhCode='" + row.warehouse + "' and bincost = 1 ");
    play_.LookUp("cName='cValueStyle'");
    lookUps.LookUp("select cWhValueStyle from Warehouse where cWHCode=N'" + row.warehouse + "'");
    if (row.averaged) {
        lookUps.LookUp("select isnull(bCheckBatch,0) from inventory");
    }
    if (row.hasProject) {
        lookUps.LookUp("from fitem  Where citem_class='97' ");
        lookUps.LookUp("from fitemss97 Where cItemCode ='RD01' ");
    }
    return {};
}

std::string OpeningRules::Dates(const OpeningRow& row, RowLookUps& lookUps) {
    if (row.hasDate && !knowsStart_) {
        play_.Do("StartPeriod");
        play_.Do("LoginYear");
        play_.Do("PeriodDates", {}, loginConnection);
        // Asked of the login once a call.
        knowsStart_ = true;
    }
    if (!row.badDate.empty()) {
        return row.badDate;
    }
    if (row.hasBatch) {
        lookUps.LookUp("SELECT bInvBatch FROM Inventory");
    }
    lookUps.LookUp("SELECT bInvQuality FROM Inventory");
    return {};
}

bool OpeningRules::PriceByFreeItems(const OpeningRow& row, RowLookUps& lookUps) {
    try {
        lookUps.LookUp("select fInvRCost from InvCheckFreeIA870");
        return true;
    } catch (const host::Error&) {
        play_.Outcome(row.Key(), 101, "");
        return false;
    }
}

} // namespace test
