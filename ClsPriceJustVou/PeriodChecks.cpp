#include "ClsPriceJustVou/PriceRowCheck.h"
#include "ModPub/Conversions.h"

namespace kovra {

bool PriceRowCheck::HasOpenMonth() {
    Open("select min(iyperiod) as iyperiod, cast(LEFT(min(iYPeriod), 4) as int) as iyear, "
         "cast(right(min(iyperiod), 2) as int) as imonth from GL_mend where bflag_IA = 0");
    if (recordset_->RecordCount() == 0) {
        message_ = "系统错误，没有设置会计期间";
    }
    // Null when every month is closed: the row is refused and the message stays as it is.
    const host::Value month = recordset_->FieldValue("iMonth");
    if (month.IsNull()) {
        return false;
    }
    periodMonth_ = ModPub::ToInt16(month);
    if (periodMonth_ == 0) {
        return Fail("系统没有期初记账");
    }
    periodYear_ = ModPub::ToInt16(recordset_->FieldValue("iYear"));
    recordset_->Close();
    return periodMonth_ > 0;
}

bool PriceRowCheck::DatesInOpenMonth() {
    // All dates compare as texts; an empty one sorts before every date.
    host::Value start;
    host::Value end;
    calendar_.GetStartEndDate(periodMonth_, periodYear_, &start, &end);
    const std::string first = ModPub::FormatDate(start);
    const std::string last = ModPub::FormatDate(end);
    const std::string today = ModPub::FormatDate(state_.login->CurrentDate());
    if (today < first || today > last || periodMonth_ != state_.login->AccountingMonth()) {
        return Fail("当前日期不在当前会计月份内，不能新增价格调整单");
    }
    if (const std::string date = ModPub::FormatDate(header_.dCJVDate); date < first || date > last) {
        return Fail("制单日期不在当前会计月份内，不能新增价格调整单");
    }
    Open("Select Max(dKeepDate) from ia_subsidiary", host::CursorType::forwardOnly);
    const host::Value kept = recordset_->FieldValue(0);
    recordset_->Close();
    if (!kept.IsNull() && ModPub::FormatDate(kept) > today) {
        return Fail("当前日期小于最大记账日期,不能新增价格调整单");
    }
    return true;
}

bool PriceRowCheck::HasRequiredFields() {
    if (header_.ID.empty()) {
        return Fail("调整单ID必输");
    }
    if (cMaker_.empty()) {
        return Fail("制单人必输");
    }
    if (entry_.cInvCode.empty()) {
        return Fail("存货编码不能为空");
    }
    return true;
}

} // namespace kovra
