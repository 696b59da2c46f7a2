#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsInvSubject/InventorySetting.h"
#include "ModPub/Lookup.h"

#include <array>

namespace kovra {
namespace {

/// One look-up of a code in the host's master data: the statement is `before` + code + `after`, followed by the
/// login's year where `byYear`.
struct MasterDataCheck {
    std::string InventorySetting::*field;
    std::string_view before;
    std::string_view after;
    bool byYear;
    std::string_view message;
};

constexpr std::string_view accountBefore = "select ccode from code where ccode = '";
constexpr std::string_view accountAfter = "' and  bend =1 and iyear =";

constexpr std::array masterDataChecks = {
    MasterDataCheck{&InventorySetting::cInvCode,
                    "Select cValuetype From inventory "
                    " Where cInvCode='",
                    "' and bService=0 and bInvType=0 and isnull(bPTOModel,0)=0 ", false, "存货编码不合法。"},
    MasterDataCheck{&InventorySetting::cInvCCode,
                    "Select cInvCCode From inventoryclass "
                    " Where cInvCCode='",
                    "'", false, "存货分类编码不合法。"},
    MasterDataCheck{&InventorySetting::cWhCode,
                    "Select cwhvaluestyle From Warehouse "
                    " Where cWhCode='",
                    "' ", false, "仓库编码不合法。"},
    MasterDataCheck{&InventorySetting::cInvHead, accountBefore, accountAfter, true, "存货科目编码不合法。"},
    MasterDataCheck{&InventorySetting::cDifHead, accountBefore, accountAfter, true, "差异科目编码不合法。"},
    MasterDataCheck{&InventorySetting::cOutHead, accountBefore, accountAfter, true, "分期收款发出商品科目编码不合法。"},
    MasterDataCheck{&InventorySetting::cEnDispHead, accountBefore, accountAfter, true,
                    "委托代销发出商品科目编码不合法。"},
    MasterDataCheck{&InventorySetting::czyHead, accountBefore, accountAfter, true, "直运科目编码不合法。"},
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

/// The message of the first code that the master data do not know, or the empty text.
std::string UnknownCode(ModPub::ImportState& state, const InventorySetting& setting) {
    std::string sql;
    for (const MasterDataCheck& check : masterDataChecks) {
        const std::string& code = setting.*check.field;
        if (code.empty()) {
            continue;
        }
        sql.assign(check.before).append(code).append(check.after);
        if (check.byYear) {
            sql.append(state.login->LoginYear());
        }
        if (!ModPub::LookupFinds(state.environment, *state.connection, sql)) {
            return std::string(check.message);
        }
    }
    return {};
}

} // namespace

bool ClsInvSubject::ValidateSetting(const std::string& key, const InventorySetting& setting) {
    std::string message;
    try {
        message = MissingFields(key, setting);
        if (message.empty()) {
            message = UnknownCode(state_, setting);
        }
        if (message.empty()) {
            return true;
        }
    } catch (...) {
        // An error refuses the row with the message gathered so far, the empty one: its own text is not reported.
    }
    state_.AddRefused(key, message);
    return false;
}

} // namespace kovra
