#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsInvSubject/InventorySetting.h"
#include "ModPub/SettingRow.h"
#include "ModPub/SettingsOperations.h"
#include "ModPub/YearEndCheck.h"

namespace kovra {

std::string ClsInvSubject::Transact(std::string_view sXml, host::HostLogin* login) {
    return ModPub::RunTransact(
        state_,
        [this] {
            return ModPub::FrameVariation{
                .preCheck = [this] { return ModPub::YearEndCheck(state_, "102"); },
                // SQL Server refuses the asterisk; callers know the error result that follows.
                .operations = ModPub::SettingsOperations(state_, "Delete * From IA_HeadSet",
                                                         [this](const host::DOMNode& row) { ImportRow(row); }),
            };
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
