#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsInvSubject/InventorySetting.h"
#include "ModPub/CodeCheck.h"
#include "ModPub/SettingRow.h"

#include <array>

namespace kovra {
namespace {

constexpr ModPub::CodeQuery classQuery{"Select cInvCCode From inventoryclass "
                                       " Where cInvCCode='",
                                       "'"};
constexpr ModPub::CodeQuery warehouseQuery{"Select cwhvaluestyle From Warehouse "
                                           " Where cWhCode='",
                                           "' "};

using Check = ModPub::CodeCheck<InventorySetting>;

constexpr std::array codeChecks = {
    Check{&InventorySetting::cInvCode, ModPub::itemQuery, "存货编码不合法。"},
    Check{&InventorySetting::cInvCCode, classQuery, "存货分类编码不合法。"},
    Check{&InventorySetting::cWhCode, warehouseQuery, "仓库编码不合法。"},
    Check{&InventorySetting::cInvHead, ModPub::accountQuery, "存货科目编码不合法。"},
    Check{&InventorySetting::cDifHead, ModPub::accountQuery, "差异科目编码不合法。"},
    Check{&InventorySetting::cOutHead, ModPub::accountQuery, "分期收款发出商品科目编码不合法。"},
    Check{&InventorySetting::cEnDispHead, ModPub::accountQuery, "委托代销发出商品科目编码不合法。"},
    Check{&InventorySetting::czyHead, ModPub::accountQuery, "直运科目编码不合法。"},
};

std::string MissingFields(const std::string& key, const InventorySetting& setting) {
    std::string message;
    if (key.empty()) {
        message = "仓库编码、存货分类编码、存货编码三者必须输入其中之一。";
    }
    if (!setting.cInvCode.empty() && !setting.cInvCCode.empty()) {
        message = "存货和存货分类不能同时存在。";
    }
    if (setting.cInvHead.empty() && setting.cDifHead.empty() && setting.cOutHead.empty() &&
        setting.cEnDispHead.empty() && setting.czyHead.empty()) {
        // Follows an earlier message directly: callers know the two texts joined.
        message += "存货科目编码、差异科目编码、分期收款发出商品科目编码、委托代销发出商品科目编码、"
                   "直运科目编码五项必须输入其中之一。";
    }
    return message;
}

} // namespace

bool ClsInvSubject::ValidateSetting(const std::string& key, const InventorySetting& setting) {
    ModPub::RowLookups lookups(state_);
    return ModPub::CheckSetting(state_, key, [&](std::string& message) {
        message = MissingFields(key, setting);
        if (message.empty()) {
            message = ModPub::FirstFailure<InventorySetting>(state_, lookups, setting, codeChecks);
        }
    });
}

} // namespace kovra
