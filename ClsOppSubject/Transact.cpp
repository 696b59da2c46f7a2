#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubject/OppositeSetting.h"
#include "ModPub/ImportRows.h"
#include "ModPub/SettingRow.h"
#include "ModPub/TransactFrame.h"
#include "ModPub/YearEndCheck.h"

namespace kovra {

std::string ClsOppSubject::Transact(std::string_view sXml, host::HostLogin* login) {
    const auto importRows = [this](const host::DOMNodeList& rows) {
        return ModPub::ImportRows(state_, rows, [this](const host::DOMNode& row) { ImportRow(row); });
    };
    return ModPub::RunTransact(
        state_,
        {
            .preCheck = [this] { return ModPub::YearEndCheck(state_, "102"); },
            .operations =
                {
                    ModPub::RowsOperation(state_, "ADD", importRows),
                    ModPub::RowsOperation(state_, "EDIT", importRows),
                    // SQL Server refuses the asterisk; callers know the error result that follows.
                    ModPub::StatementOperation(state_, "EMPTY", "Delete * From IA_OppHead"),
                },
        },
        sXml, login);
}

void ClsOppSubject::ImportRow(const host::DOMNode& row) {
    std::string key;
    ModPub::ImportSetting(state_, key, [&] {
        const OppositeSetting setting = OppositeSetting::Read(row);
        key = setting.Key();
        if (!CheckRow(key, setting)) {
            return false;
        }
        SaveRow(key, setting);
        return true;
    });
}

} // namespace kovra
