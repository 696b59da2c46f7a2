#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsOppSubjectST/StandardCostCheck.h"
#include "ClsOppSubjectST/StandardCostSetting.h"
#include "ModPub/SettingRow.h"
#include "ModPub/SettingsOperations.h"
#include "ModPub/YearEndCheck.h"

namespace kovra {

std::string ClsOppSubjectST::Transact(std::string_view sXml, host::HostLogin* login) {
    return ModPub::RunTransact(
        state_,
        [this] {
            return ModPub::FrameVariation{
                .preCheck = [this]() -> std::optional<ModPub::RequestError> {
                    if (std::optional<ModPub::RequestError> error = StandardCostCheck(state_)) {
                        return error;
                    }
                    return ModPub::YearEndCheck(state_, "103");
                },
                // SQL Server refuses the asterisk; callers know the error result that follows.
                .operations = ModPub::SettingsOperations(state_, "Delete * From IA_OppHead",
                                                         [this](const host::DOMNode& row) { ImportRow(row); }),
            };
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
