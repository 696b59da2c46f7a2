#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ModPub/Conversions.h"
#include "ModPub/RuntimeErrors.h"

namespace kovra {

bool ClsPriceJustVou::GetStartEndDate(std::int16_t intMonth, std::int16_t intYear, host::Value* varStart,
                                      host::Value* varEnd) {
    if (state_.login == nullptr || !state_.connection) {
        ModPub::RaiseRuntimeError(host::error_number::objectNotSet);
    }
    const std::string sql = "Select dBegin,dEnd from QxSystem..UA_Period with (nolock) where cAcc_ID= N'" +
                            state_.login->AccountId() + "' and iYear=" + std::to_string(intYear) +
                            " and iID=" + std::to_string(intMonth);
    const std::unique_ptr<host::Recordset> recordset = state_.environment.CreateRecordset();
    recordset->SetCursorLocation(host::CursorLocation::client);
    recordset->Open(sql, *state_.connection, host::CursorType::forwardOnly, host::LockType::readOnly,
                    host::command_option::text);
    const bool found = !recordset->AtEOF();
    if (found && varStart != nullptr) {
        *varStart = ModPub::FormatDate(recordset->FieldValue("dBegin"));
    }
    if (found && varEnd != nullptr) {
        *varEnd = ModPub::FormatDate(recordset->FieldValue("dEnd"));
    }
    recordset->Close();
    return found;
}

} // namespace kovra
