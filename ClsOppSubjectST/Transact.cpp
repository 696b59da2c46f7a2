#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsOppSubjectST/StandardCostCheck.h"
#include "ClsOppSubjectST/StandardCostSetting.h"
#include "ModPub/ImportRows.h"
#include "ModPub/SettingRow.h"
#include "ModPub/TransactFrame.h"
#include "ModPub/YearEndCheck.h"

namespace kovra {

std::string ClsOppSubjectST::Transact(std::string_view sXml, host::HostLogin* login) {
    const auto importRows = [this](const host::DOMNodeList& rows) {
        return ModPub::ImportRows(state_, rows, [this](const host::DOMNode& row) { ImportRow(row); });
    };
    return ModPub::RunTransact(
        state_,
        {
            .preCheck = [this]() -> std::optional<ModPub::RequestError> {
                if (std::optional<ModPub::RequestError> error = StandardCostCheck(state_)) {
                    return error;
                }
                return ModPub::YearEndCheck(state_, "103");
            },
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

void ClsOppSubjectST::ImportRow(const host::DOMNode& row) {
    std::string key;
    ModPub::ImportSetting(state_, key, [&] {
        const StandardCostSetting setting = StandardCostSetting::Read(row);
        key = setting.Key();
        if (!CheckRow(key, setting)) {
            return false;
        }
        SaveRow(key, setting);
        return true;
    });
}

} // namespace kovra
