#include "ClsPriceJustVou/PriceRowCheck.h"
#include "ModPub/Conversions.h"

namespace kovra {

bool PriceRowCheck::PriceIsValid() {
    const std::string& price = entry_.iCJVACost;
    if (price.empty()) {
        return Fail("调整后计划价/售价不能为空!");
    }
    if (!ModPub::IsNumeric(price) || ModPub::ToDouble(price) < 0) {
        return Fail("数字不正确或小于零！");
    }
    return true;
}

bool PriceRowCheck::CostAccountingAllows() {
    if (!Finds("select cValue from AccInformation where cSysID ='ca' and cName ='dCAFirstDate' "
               "and isnull(cValue,N'') <> N''",
               host::CursorType::forwardOnly)) {
        return true;
    }
    if (!Finds("select cValue  from AccInformation where cSysID ='ca' and cName ='bRLOrST' "
               "and isnull(cValue,N'0') = N'1'")) {
        return true;
    }
    if (Finds("SELECT cInvCode FROM v_CO_BOMList WHERE cInvCode = N'" + entry_.cInvCode + "'")) {
        return Fail("不能导入半成品或产成品价格调整单。");
    }
    return true;
}

} // namespace kovra
