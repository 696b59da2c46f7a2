#include "ModPub/Conversions.h"
#include "refhost/ia/AllOrNothing.h"
#include "refhost/ia/NumberLock.h"
#include "refhost/ia/QueryValue.h"
#include "refhost/ia/Stock.h"
#include "refhost/ia/ZendaT.h"
#include "refhost/trace/HostCall.h"
#include "text/SqlText.h"

#include <array>
#include <optional>

namespace refhost {
namespace {

constexpr std::string_view records = "//rs:data/z:row";

/// The columns of a row, as the rows document names them and `CostJustVouchs` stores them.
constexpr std::array<std::string_view, 18> rowColumns = {
    "cWhCode", "cInvCode", "cFree1",  "cFree2",      "cFree3",    "cFree4", "cFree5",    "cFree6",    "cFree7",
    "cFree8",  "cFree9",   "cFree10", "cValueStyle", "iQuantity", "iMoney", "iCJVBCost", "iCJVACost", "iAdjustMoney",
};

/// Rows that one statement inserts; SQL Server takes 1000 at the most.
constexpr std::size_t rowsPerStatement = 200;

/// An attribute's text as a literal; `NULL` when it is missing or empty.
std::string SqlTextOrNull(const std::optional<std::string>& text) {
    return text && !text->empty() ? SqlText(*text) : "NULL";
}

/// Why a voucher cannot be saved; empty when it can.
std::string_view Missing(const host::DOMNode* head, const host::DOMNodeList& rows) {
    if (rows.empty()) {
        return "单据没有明细行，不能保存";
    }
    if (head == nullptr) {
        return "单据没有表头，不能保存";
    }
    if (!ModPub::IsDate(head->GetAttribute("dCJVDate").value_or(""))) {
        return "单据没有正确的日期，不能保存";
    }
    if (head->GetAttribute("cCode").value_or("").empty()) {
        return "单据没有编号，不能保存";
    }
    for (const host::DOMNodePtr& row : rows) {
        if (row->GetAttribute("cInvCode").value_or("").empty()) {
            return "单据有明细行没有存货编码，不能保存";
        }
        if (!ModPub::IsNumeric(row->GetAttribute("iCJVACost").value_or(""))) {
            return "单据有明细行没有调整后的价格，不能保存";
        }
    }
    return {};
}

std::string InsertHead(const host::DOMNode& head) {
    std::string sql = "INSERT INTO CostJustVouch (ID, cCode, dCJVDate, cMaker, cMemo, VT_ID, VouchType) "
                      "SELECT ISNULL(MAX(ID), 0) + 1";
    for (const std::string_view column : {"cCode", "dCJVDate", "cMaker", "cMemo", "VT_ID", "VouchType"}) {
        sql.append(", ").append(SqlTextOrNull(head.GetAttribute(column)));
    }
    return sql.append(" FROM CostJustVouch").append(numberLock);
}

void InsertRows(host::Connection& connection, const std::string& id, const host::DOMNodeList& rows) {
    std::string start = "INSERT INTO CostJustVouchs (ID";
    for (const std::string_view column : rowColumns) {
        start.append(", ").append(column);
    }
    start.append(") VALUES ");

    std::string sql;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        sql.append(i % rowsPerStatement == 0 ? start : ", ").append("(").append(id);
        for (const std::string_view column : rowColumns) {
            sql.append(", ").append(SqlTextOrNull(rows[i]->GetAttribute(column)));
        }
        sql.append(")");
        if ((i + 1) % rowsPerStatement == 0 || i + 1 == rows.size()) {
            connection.Execute(sql);
            sql.clear();
        }
    }
}

/// Takes the rows' stock anew as of `day`.
void RestateStock(host::Connection& connection, const std::string& id, host::Date day) {
    for (const std::string_view warehouse : {"", "CostJustVouchs.cWhCode"}) {
        const Stock stock("CostJustVouchs", warehouse, day);
        connection.Execute("UPDATE CostJustVouchs SET iQuantity = " + stock.Quantity() +
                           ", iMoney = " + stock.Amount() + " WHERE ID = " + id +
                           (warehouse.empty() ? " AND cWhCode IS NULL" : " AND cWhCode IS NOT NULL"));
    }
    connection.Execute("UPDATE CostJustVouchs SET iAdjustMoney = " + std::string(adjustedAmount) + " WHERE ID = " + id);
}

/// Takes the new prices over: into the prices of the rows' free items where there are such, else into the items.
void UpdatePrices(host::Connection& connection, const std::string& id) {
    std::string sameFreeItems;
    std::string noFreeItems;
    for (int i = 1; i <= 10; ++i) {
        const std::string free = ".cFree" + std::to_string(i);
        sameFreeItems.append(" AND ISNULL(P").append(free).append(", N'') = ISNULL(B").append(free).append(", N'')");
        noFreeItems.append(" AND ISNULL(B").append(free).append(", N'') = N''");
    }
    connection.Execute("UPDATE P SET fInvRCost = B.iCJVACost FROM InvCheckFreeIA870 P "
                       "INNER JOIN CostJustVouchs B ON P.cInvCode = B.cInvCode" +
                       sameFreeItems + " WHERE B.ID = " + id);
    // A row without free items is the item's own price, which may stand among the free items' prices as well.
    connection.Execute("UPDATE I SET iInvRCost = B.iCJVACost FROM inventory I "
                       "INNER JOIN CostJustVouchs B ON I.cInvCode = B.cInvCode WHERE B.ID = " +
                       id + " AND ((1 = 1" + noFreeItems +
                       ") OR NOT EXISTS (SELECT * FROM InvCheckFreeIA870 P WHERE P.cInvCode = B.cInvCode" +
                       sameFreeItems + "))");
}

} // namespace

bool ZendaT::save(host::DOMDocument& head, host::DOMDocument& rows, int, std::string& message,
                  host::Connection& connection, bool, std::shared_ptr<host::VoucherContext>& context) {
    const HostCall hostCall;
    latestConnection_ = &connection;
    const host::DOMNodePtr headRecord = head.SelectSingleNode(records);
    const host::DOMNodeList rowRecords = rows.SelectNodes(records);
    if (const std::string_view missing = Missing(headRecord.get(), rowRecords); !missing.empty()) {
        message = missing;
        return false;
    }
    const host::Date day = ModPub::ToDate(headRecord->GetAttribute("dCJVDate").value_or(""));
    const host::Date today = ModPub::ToDate(context->Login().CurrentDate());
    // The caller commits what a failed save leaves: that must be nothing.
    AllOrNothing(connection, [&] {
        connection.Execute(InsertHead(*headRecord));
        const std::string id =
            ModPub::ToText(QueryValue(environment_, connection, "SELECT MAX(ID) FROM CostJustVouch"));
        InsertRows(connection, id, rowRecords);
        if (day != today) {
            RestateStock(connection, id, day);
        }
        UpdatePrices(connection, id);
    });
    return true;
}

} // namespace refhost
