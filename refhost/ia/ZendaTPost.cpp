#include "ModPub/Conversions.h"
#include "refhost/ia/AllOrNothing.h"
#include "refhost/ia/QueryValue.h"
#include "refhost/ia/ZendaT.h"
#include "refhost/trace/HostCall.h"
#include "text/SqlText.h"

namespace refhost {
namespace {

/// One ledger row for each voucher row. The change of the stock's amount is matched by its price difference, so that
/// what the stock has really cost stays the same.
std::string PostStatement(const std::string& id, host::HostLogin& login, const std::string& today) {
    std::string columns;
    std::string values;
    for (int i = 1; i <= 10; ++i) {
        const std::string free = "cFree" + std::to_string(i);
        columns.append(", ").append(free);
        values.append(", B.").append(free);
    }
    return "INSERT INTO Ia_subsidiary (iYear, iMonth, id, cVouType, cVouCode, cBusType, dVouDate, dKeepDate, bRdFlag, "
           "cWhCode, cInvCode, iAInPrice, iCreditDifCost, cMaker, cAccounter, cMemo" +
           columns + ") SELECT " + std::to_string(ModPub::ToInt16(login.LoginYear())) + ", " +
           std::to_string(login.AccountingMonth()) + ", B.AutoID, H.VouchType, H.cCode, N'价格调整', H.dCJVDate, " +
           SqlText(today) + ", 1, B.cWhCode, B.cInvCode, B.iAdjustMoney, B.iAdjustMoney, H.cMaker, " +
           SqlText(login.UserName()) + ", H.cMemo" + values +
           " FROM CostJustVouch H INNER JOIN CostJustVouchs B ON B.ID = H.ID WHERE H.ID = " + id;
}

} // namespace

bool ZendaT::DoAccount(host::DOMDocument& head, host::DOMDocument&, std::shared_ptr<host::VoucherContext>& context,
                       host::Connection& connection, bool, std::string& message) {
    const HostCall hostCall;
    latestConnection_ = &connection;
    if (OptionIsSet(connection, "bPostLocked")) {
        message = "记账功能已锁定，不能记账";
        return false;
    }
    const host::DOMNodePtr record = head.SelectSingleNode("//rs:data/z:row");
    const std::string number = record ? record->GetAttribute("ID").value_or("") : std::string();
    if (!ModPub::IsNumeric(number)) {
        message = "单据不存在，不能记账";
        return false;
    }
    const std::string id = std::to_string(ModPub::ToInt32(number));
    const host::Value accounter =
        QueryValue(environment_, connection, "SELECT ISNULL(cAccounter, N'') FROM CostJustVouch WHERE ID = " + id);
    if (accounter.IsEmpty()) {
        message = "单据不存在，不能记账";
        return false;
    }
    if (!ModPub::ToText(accounter).empty()) {
        message = "单据已经记账，不能重复记账";
        return false;
    }
    host::HostLogin& login = context->Login();
    const std::string today = ModPub::FormatDate(login.CurrentDate());
    AllOrNothing(connection, [&] {
        connection.Execute(PostStatement(id, login, today));
        connection.Execute("UPDATE CostJustVouch SET cAccounter = " + SqlText(login.UserName()) +
                           ", dAccountDate = " + SqlText(today) + " WHERE ID = " + id);
    });
    return true;
}

} // namespace refhost
