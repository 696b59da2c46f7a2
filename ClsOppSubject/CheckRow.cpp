#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubject/OppositeSetting.h"
#include "ClsOppSubject/ProjectCheck.h"
#include "ModPub/CodeCheck.h"
#include "ModPub/RowKey.h"
#include "ModPub/SettingRow.h"

#include <array>

namespace kovra {
namespace {

constexpr ModPub::CodeQuery categoryQuery{"Select cRdCode From rd_style "
                                          " Where cRdCode='",
                                          "' "};
constexpr ModPub::CodeQuery departmentQuery{"select cDepCode from department where cdepcode = '", "' "};

using Check = ModPub::CodeCheck<OppositeSetting>;

constexpr std::array masterDataChecks = {
    Check{&OppositeSetting::cInvCode, ModPub::itemQuery, "存货编码不合法。"},
    Check{&OppositeSetting::cInvcCode, ModPub::itemClassQuery, "存货分类编码不合法。"},
    Check{&OppositeSetting::cRdCode, categoryQuery, "收发类别编码不合法。"},
    Check{&OppositeSetting::cDepCode, departmentQuery, "部门编码不合法。"},
};

constexpr std::array accountChecks = {
    Check{&OppositeSetting::cOppHead, ModPub::accountQuery, "对方科目编码不合法。"},
    Check{&OppositeSetting::cEstHead, ModPub::accountQuery, "暂估科目编码不合法。"},
};

} // namespace

bool ClsOppSubject::CheckRow(std::string& key, const OppositeSetting& setting) {
    ModPub::RowLookups lookups(state_);
    return ModPub::CheckSetting(state_, key, [&](std::string& message) {
        if (key.empty()) {
            message = "收发类别编码、存货分类编码、存货编码、部门编码四项必须输入其中之一。";
        }
        ModPub::AppendKeyPart(key, "项目大类编码：", setting.citem_class);
        ModPub::AppendKeyPart(key, "项目编码：", setting.citemcode);
        if (setting.cOppHead.empty() && setting.cEstHead.empty()) {
            // Follows the earlier message directly: callers know the two texts joined.
            message += "对方科目编码、暂估科目编码两项必须输入其中之一。";
        }
        if (message.empty()) {
            message = ModPub::FirstFailure<OppositeSetting>(state_, lookups, setting, masterDataChecks);
        }
        if (message.empty()) {
            message = ProjectFailure(lookups, setting);
        }
        if (message.empty()) {
            message = ModPub::FirstFailure<OppositeSetting>(state_, lookups, setting, accountChecks);
        }
    });
}

} // namespace kovra
