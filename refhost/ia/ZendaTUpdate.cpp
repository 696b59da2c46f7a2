#include "ModPub/Conversions.h"
#include "ModPub/ReadAccOption.h"
#include "refhost/ia/QueryValue.h"
#include "refhost/ia/Stock.h"
#include "refhost/ia/ZendaT.h"
#include "refhost/trace/HostCall.h"

namespace refhost {
namespace {

/// "W.cFree1, …, W.cFree10", with the prefix given.
std::string FreeItems(std::string_view prefix) {
    std::string columns;
    for (int i = 1; i <= 10; ++i) {
        columns.append(i == 1 ? "" : ", ").append(prefix).append("cFree").append(std::to_string(i));
    }
    return columns;
}

std::string CreateStatement(std::string_view resultTable) {
    std::string sql = "CREATE TABLE [dbo].[";
    sql.append(resultTable).append("] (cWhCode nvarchar(10) NULL, cInvCode nvarchar(60) NOT NULL, ");
    for (int i = 1; i <= 10; ++i) {
        sql.append("cFree").append(std::to_string(i)).append(" nvarchar(20) NULL, ");
    }
    return sql.append("cValueStyle nvarchar(20) NULL, iQuantity decimal(19, 6) NULL, iMoney money NULL, "
                      "iCJVBCost decimal(30, 10) NULL, iCJVACost decimal(30, 10) NULL, iAdjustMoney money NULL)");
}

/// The price so far of a staged row: that of its free items where they have one, else the item's.
std::string OldPrice() {
    std::string sql = "ISNULL((SELECT MAX(P.fInvRCost) FROM InvCheckFreeIA870 P WHERE P.cInvCode = W.cInvCode";
    for (int i = 1; i <= 10; ++i) {
        const std::string free = ".cFree" + std::to_string(i);
        sql.append(" AND ISNULL(P").append(free).append(", N'') = ISNULL(W").append(free).append(", N'')");
    }
    return sql.append("), ISNULL(I.iInvRCost, 0))");
}

std::string FillStatement(std::string_view workTable, std::string_view resultTable, bool byItem, host::Date day) {
    const Stock stock("W", byItem ? "" : "H.cWhCode", day);
    std::string sql = "INSERT INTO [dbo].[";
    sql.append(resultTable).append("] (cWhCode, cInvCode, ").append(FreeItems(""));
    sql.append(", cValueStyle, iQuantity, iMoney, iCJVBCost, iCJVACost) SELECT ");
    sql.append(byItem ? "NULL" : "H.cWhCode").append(", W.cInvCode, ").append(FreeItems("W.")).append(", ");
    sql.append(byItem ? "I.cValueType" : "H.cWhValueStyle").append(", ");
    sql.append(stock.Quantity()).append(", ").append(stock.Amount()).append(", ").append(OldPrice());
    sql.append(", W.iCJVACost FROM [dbo].[").append(workTable);
    sql.append("] W INNER JOIN inventory I ON I.cInvCode = W.cInvCode");
    if (!byItem) {
        sql.append(" CROSS JOIN Warehouse H WHERE H.cWhValueStyle IN (N'计划价法', N'售价法')");
    }
    return sql;
}

} // namespace

void ZendaT::Update(std::string_view workTable, std::string_view resultTable,
                    std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                    std::string_view voucherId, bool) {
    const HostCall hostCall;
    latestConnection_ = &connection;
    const std::int32_t id = ModPub::ToInt32(voucherId);
    const host::Value day = id == -1
                                ? context->Login().CurrentDate()
                                : QueryValue(environment_, connection,
                                             "SELECT dCJVDate FROM CostJustVouch WHERE AutoID = " + std::to_string(id));
    const bool byItem = ModPub::ReadAccOption(environment_, connection, "IA", "cValueStyle") == "按存货核算";

    connection.Execute(CreateStatement(resultTable));
    connection.Execute(FillStatement(workTable, resultTable, byItem, ModPub::ToDate(day)));
    std::string sql = "UPDATE [dbo].[";
    connection.Execute(sql.append(resultTable).append("] SET iAdjustMoney = ").append(adjustedAmount));
}

} // namespace refhost
