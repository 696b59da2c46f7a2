#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubject/OppositeSetting.h"
#include "ModPub/SettingRow.h"
#include "ModPub/SettingsOperations.h"
#include "ModPub/YearEndCheck.h"

namespace kovra {

std::string ClsOppSubject::Transact(std::string_view sXml, host::HostLogin* login) {
    return ModPub::RunTransact(
        state_,
        [this] {
            return ModPub::FrameVariation{
                .preCheck = [this] { return ModPub::YearEndCheck(state_, "102"); },
                // SQL Server refuses the asterisk; callers know the error result that follows.
                .operations = ModPub::SettingsOperations(state_, "Delete * From IA_OppHead",
                                                         [this](const host::DOMNode& row) { ImportRow(row); }),
            };
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
