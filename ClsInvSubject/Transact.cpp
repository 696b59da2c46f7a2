#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsInvSubject/InventorySetting.h"
#include "ModPub/ImportRows.h"
#include "ModPub/SettingRow.h"
#include "ModPub/TransactFrame.h"
#include "ModPub/YearEndCheck.h"

namespace kovra {

std::string ClsInvSubject::Transact(std::string_view sXml, host::HostLogin* login) {
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
                    ModPub::StatementOperation(state_, "EMPTY", "Delete * From IA_HeadSet"),
                },
        },
        sXml, login);
}

void ClsInvSubject::ImportRow(const host::DOMNode& row) {
    std::string key;
    ModPub::ImportSetting(state_, key, [&] {
        const InventorySetting setting = InventorySetting::Read(row);
        key = setting.Key();
        if (!ValidateSetting(key, setting)) {
            return false;
        }
        SaveSetting(key, setting);
        return true;
    });
}

} // namespace kovra
