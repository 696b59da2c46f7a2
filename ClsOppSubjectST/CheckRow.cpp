#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsOppSubjectST/StandardCostSetting.h"
#include "ModPub/CodeCheck.h"
#include "ModPub/SettingRow.h"

#include <array>

namespace kovra {
namespace {

constexpr ModPub::CodeQuery leafCategoryQuery{"Select cRdCode From rd_style "
                                              " Where bRdEnd = 1 and  cRdCode=N'",
                                              "' "};
constexpr ModPub::CodeQuery leafDepartmentQuery{"select cDepCode from department where bDepEnd = 1 and cdepcode = N'",
                                                "' "};

using Setting = StandardCostSetting;
using Check = ModPub::CodeCheck<Setting>;

constexpr std::array keyChecks = {
    Check{&Setting::cInvcCode, ModPub::itemClassQuery, "存货分类编码不合法。"},
    Check{&Setting::cRdCode, leafCategoryQuery, "收发类别编码不合法。"},
    Check{&Setting::cDepCode, leafDepartmentQuery, "部门编码不合法。"},
};

// cProcessHead and cOOmCostCode are asked for twice: callers see the look-ups in this order.
constexpr std::array accountChecks = {
    Check{&Setting::cOppHead, ModPub::accountQuery, "直接材料对方科目编码不合法。"},
    Check{&Setting::cProcessHead, ModPub::accountQuery, "委外加工费科目编码不合法。"},
    Check{&Setting::cMaterialHead, ModPub::accountQuery, "委外材料费科目编码不合法。"},
    Check{&Setting::cOLaborStdCostCode, ModPub::accountQuery, "人工费用对方科目编码不合法。"},
    Check{&Setting::cOManuFixStdCostCode, ModPub::accountQuery, "固定制造费用对方科目编码不合法。"},
    Check{&Setting::cOManuVarStdCostCode, ModPub::accountQuery, "变动制造费用对方科目编码不合法。"},
    Check{&Setting::cProcessHead, ModPub::accountQuery, "委外加工费科目编码不合法。"},
    Check{&Setting::cOOmCostCode, ModPub::accountQuery, "委外加工费对方科目编码不合法。"},
    Check{&Setting::cOOmCostCode, ModPub::accountQuery, "委外加工费对方科目编码不合法。"},
    Check{&Setting::cOiqtCode, ModPub::accountQuery, "材料量差对方科目编码不合法。"},
    Check{&Setting::cOPriceCode, ModPub::accountQuery, "材料价差对方科目编码不合法。"},
    Check{&Setting::fLaborCostEffRateDifCode, ModPub::accountQuery, "人工费用效率差对方科目编码不合法。"},
    Check{&Setting::fLaborCostRateDifCode, ModPub::accountQuery, "人工费用费率差对方科目编码不合法。"},
    Check{&Setting::fSemiLaborDifCode, ModPub::accountQuery, "耗用半成品人工差异对方科目编码不合法。"},
    Check{&Setting::fManuFixCostEffRateDifCode, ModPub::accountQuery, "耗用固定制造费用效率差对方科目编码不合法。"},
    Check{&Setting::fManuFixCostRateDifCode, ModPub::accountQuery, "固定制造费用费率差对方科目编码不合法。"},
    Check{&Setting::fSemiManuFixDifCode, ModPub::accountQuery, "耗用半成品固定制造差异对方科目编码不合法。"},
    Check{&Setting::fManuVarCostEffRateDifCode, ModPub::accountQuery, "变动制造费用效率差对方科目编码不合法。"},
    Check{&Setting::fManuVarCostRateDifCode, ModPub::accountQuery, "变动制造费用费率差对方科目编码不合法。"},
    Check{&Setting::fSemiManuVarDifCode, ModPub::accountQuery, "耗用半成品变动制造差异对方科目编码不合法。"},
    Check{&Setting::fOmCostEDifCode, ModPub::accountQuery, "委外加工费差异对方科目编码不合法。"},
    Check{&Setting::fSemiOmDifCode, ModPub::accountQuery, "耗用半成品委外加工费差异对方科目编码不合法。"},
    Check{&Setting::cOTaxRefundCode, ModPub::accountQuery, "退税转成本对方科目编码不合法。"},
};

} // namespace

bool ClsOppSubjectST::CheckRow(const std::string& key, const StandardCostSetting& setting) {
    ModPub::RowLookups lookups(state_);
    return ModPub::CheckSetting(state_, key, [&](std::string& message) {
        if (key.empty()) {
            message = "收发类别编码、存货分类编码、部门编码三项必须输入其中之一。";
        }
        if (message.empty()) {
            message = ModPub::FirstFailure<Setting>(state_, lookups, setting, keyChecks);
        }
        if (message.empty()) {
            message = ModPub::FirstFailure<Setting>(state_, lookups, setting, accountChecks);
        }
    });
}

} // namespace kovra
