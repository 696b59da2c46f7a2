#include "refhost/ia/ZendaT.h"

#include "ModPub/Conversions.h"
#include "ModPub/ReadAccOption.h"
#include "refhost/ia/NumberLock.h"
#include "refhost/ia/QueryValue.h"
#include "refhost/ia/VouchData.h"
#include "refhost/trace/HostCall.h"
#include "text/SqlText.h"

namespace refhost {

bool ZendaT::AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>&, host::Connection& connection) {
    const HostCall hostCall;
    latestConnection_ = &connection;
    if (OptionIsSet(connection, "bPriceAdjLocked")) {
        message = "期末处理正在进行，不能新增价格调整单";
        return false;
    }
    return true;
}

void ZendaT::OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) {
    latestConnection_ = &connection;
    if (recordset.IsOpen()) {
        recordset.Close();
    }
    recordset.Open(sql, connection, host::CursorType::openStatic, host::LockType::readOnly, host::command_option::text);
}

host::Value ZendaT::GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) {
    const HostCall hostCall;
    latestConnection_ = &connection;
    return QueryValue(environment_, connection,
                      "SELECT VT_ID FROM VoucherTemplates WHERE bDefault = 1 AND VT_CardNumber = " +
                          SqlText(cardNumber));
}

host::Value ZendaT::GetVouchNum(std::shared_ptr<host::VoucherContext>&, std::string_view,
                                host::RsXmlHelper::VouchData& data, bool, bool) {
    const HostCall hostCall;
    const auto* head = dynamic_cast<const VouchData*>(&data);
    if (latestConnection_ == nullptr || head == nullptr) {
        ModPub::RaiseRuntimeError(host::error_number::objectNotSet);
    }
    const std::string date = ModPub::FormatDate(ModPub::ToDate(head->Text("dCJVDate")));
    const std::string month = date.substr(0, 4) + date.substr(5, 2);
    // The highest number of the month so far; longer ones are higher.
    const host::Value latest =
        QueryValue(environment_, *latestConnection_,
                   "SELECT TOP 1 SUBSTRING(cCode, 7, 20) FROM CostJustVouch" + std::string(numberLock) +
                       " WHERE cCode LIKE N'" + month + "[0-9][0-9][0-9][0-9]%' AND cCode NOT LIKE N'" + month +
                       "%[^0-9]%' ORDER BY LEN(cCode) DESC, cCode DESC");
    std::string number = std::to_string(ModPub::ToInt32(latest) + 1);
    number.insert(0, number.size() < 4 ? 4 - number.size() : 0, '0');
    return month + number;
}

host::Value ZendaT::GetMaxID(host::Connection& connection, bool) {
    const HostCall hostCall;
    latestConnection_ = &connection;
    return QueryValue(environment_, connection, "SELECT MAX(AutoID) FROM CostJustVouch");
}

bool ZendaT::OptionIsSet(host::Connection& connection, std::string_view cName) {
    return ModPub::ReadAccOption(environment_, connection, "IA", cName) == "1";
}

} // namespace refhost
