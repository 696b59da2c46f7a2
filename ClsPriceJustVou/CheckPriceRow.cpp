#include "ClsPriceJustVou/PriceRowCheck.h"
#include "ModPub/Conversions.h"

namespace kovra {

bool ClsPriceJustVou::CheckPriceRow(const PriceHeader& header, const PriceEntry& entry, std::string& message) {
    try {
        return PriceRowCheck({state_, *this, header, cMaker_, entry}, message).Passes();
    } catch (...) {
        // The error is lost and the row refused with the message as it stands: callers know it so.
        return false;
    }
}

PriceRowCheck::PriceRowCheck(const Subject& subject, std::string& message)
    : state_(subject.state), calendar_(subject.calendar), header_(subject.header), cMaker_(subject.cMaker),
      entry_(subject.entry), message_(message), recordset_(state_.environment.CreateRecordset()) {
    recordset_->SetCursorLocation(host::CursorLocation::client);
}

bool PriceRowCheck::Passes() {
    if (!header_.dCJVDate.empty() && !ModPub::IsDate(header_.dCJVDate)) {
        return Fail("请输入正确的日期格式");
    }
    return HasOpenMonth() && DatesInOpenMonth() && HasRequiredFields() && ItemExists() && ItemHasPlannedPrice() &&
           ItemIsUnprocessed() && PriceIsValid() && CostAccountingAllows();
}

bool PriceRowCheck::Fail(std::string_view message) {
    message_ = message;
    return false;
}

void PriceRowCheck::Open(std::string_view sql, host::CursorType cursorType) {
    recordset_->Open(sql, *state_.connection, cursorType, host::LockType::readOnly, host::command_option::text);
}

bool PriceRowCheck::Finds(std::string_view sql, host::CursorType cursorType) {
    Open(sql, cursorType);
    const bool found = !recordset_->AtEOF();
    recordset_->Close();
    return found;
}

} // namespace kovra
