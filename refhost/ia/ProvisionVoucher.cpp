#include "refhost/ia/ProvisionVoucher.h"

#include "ModPub/Conversions.h"
#include "ModPub/Lookup.h"
#include "ModPub/XmlText.h"
#include "refhost/ia/NumberLock.h"
#include "refhost/ia/SavedRecords.h"
#include "text/SameName.h"
#include "text/SqlText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace refhost {
namespace {

/// Columns of the records that the tables do not take: the database's own numbers, and what a template adds.
constexpr std::array<std::string_view, 6> notStored = {"ID", "AutoID", "bEai", "cdepname", "cpersonname", "cwhname"};

bool IsStored(std::string_view column) {
    return std::ranges::none_of(notStored, [&](std::string_view other) { return text::SameName(column, other); });
}

/// The statement that inserts one record, or why its values cannot be stored.
struct Insert {
    std::string sql;
    std::string refusal;
};

Insert MakeInsert(std::string_view table, const SavedRecords& records, const SavedRecord& record,
                  const std::string& id) {
    std::string sql;
    std::string values;
    // What most records take.
    sql.reserve(512);
    values.reserve(256);
    sql.append("Insert Into ").append(table).append(" (ID");
    values.append(") Values (").append(id);
    for (const SavedRecords::Cell& cell : records.CellsOf(record)) {
        if (!IsStored(cell.name)) {
            continue;
        }
        sql.append(",[").append(cell.name).append("]");
        values.append(",");
        if (cell.text.empty()) {
            values.append("Null");
        } else if (!cell.number) {
            values.append(SqlText(cell.text));
        } else if (const std::optional<double> number = ModPub::NumericValue(cell.text)) {
            values.append(ModPub::NumberText(*number));
        } else {
            return {{}, "列" + std::string(cell.name) + "的值" + std::string(cell.text) + "不是数值。"};
        }
    }
    sql.append(values).append(")");
    return {std::move(sql), {}};
}

/// Appends the element `name` with the rows listed, if there are any.
void AppendList(std::string& xml, const std::string& name, const std::string& rows) {
    if (!rows.empty()) {
        xml.append("<" + name + ">").append(rows).append("</" + name + ">");
    }
}

void AppendRow(std::string& rows, const SavedRecord& row) {
    rows.append("<z:row");
    ModPub::AppendXmlAttribute(rows, "cinvcode", row.Text("cInvCode"));
    rows.append("/>");
}

} // namespace

std::string ProvisionVoucher::Save(host::DOMDocument& result) {
    const SavedRecords head(head_);
    const SavedRecords body(body_);
    if (head.records().empty()) {
        return "没有单据头，不能保存。";
    }
    if (ListRows(body, result)) {
        return {};
    }
    const std::unique_ptr<host::Recordset> next = ModPub::OpenLookup(
        environment_, connection_, "Select isnull(max(ID),0)+1 as ID From IA_DecReady" + std::string(numberLock));
    const std::string id = std::to_string(ModPub::ToInt32(next->FieldValue(0)));
    next->Close();

    Insert insert = MakeInsert("IA_DecReady", head, head.records().front(), id);
    if (!insert.refusal.empty()) {
        return insert.refusal;
    }
    connection_.Execute(insert.sql, host::command_option::textNoRecords);
    for (const SavedRecord& record : body.records()) {
        insert = MakeInsert("IA_DecReadys", body, record, id);
        if (!insert.refusal.empty()) {
            return insert.refusal;
        }
        connection_.Execute(insert.sql, host::command_option::textNoRecords);
    }
    return {};
}

/// Lists in `result` the rows beyond stock or budget; returns whether there are any.
bool ProvisionVoucher::ListRows(const SavedRecords& body, host::DOMDocument& result) {
    std::string beyondStock;
    std::string beyondBudget;
    for (const SavedRecord& row : body.records()) {
        if (const std::optional<double> quantity = row.Amount("iQuantity")) {
            std::string sql =
                "Select sum(iQuantity) as iQuantity From CurrentStock Where cInvCode=" + SqlText(row.Text("cInvCode"));
            if (const std::string_view warehouse = row.Text("cWhCode"); !warehouse.empty()) {
                sql += " And cWhCode=" + SqlText(warehouse);
            }
            if (const std::optional<double> stock = LookUpNumber(sql); stock && *quantity > *stock) {
                AppendRow(beyondStock, row);
            }
        }
        const std::string_view project = row.Text("cItemCode");
        const std::optional<double> provision = row.Amount("iThisPrice");
        if (!project.empty() && provision) {
            const std::optional<double> budget =
                LookUpNumber("Select iBudget From ItemBudget Where cItem_class=" + SqlText(row.Text("cItem_class")) +
                             " And cItemCode=" + SqlText(project));
            if (budget && *budget < *provision) {
                AppendRow(beyondBudget, row);
            }
        }
    }
    if (beyondStock.empty() && beyondBudget.empty()) {
        return false;
    }
    std::string xml = "<result xmlns:z=\"#RowsetSchema\">";
    AppendList(xml, "zeroout", beyondStock);
    AppendList(xml, "itemcheck", beyondBudget);
    if (!result.LoadXML(xml.append("</result>"))) {
        throw host::Error(host::error_number::unspecified, "检查结果不能写入。");
    }
    return true;
}

/// The first value of a look-up; nothing where there is no row or it is Null.
std::optional<double> ProvisionVoucher::LookUpNumber(const std::string& sql) {
    const std::unique_ptr<host::Recordset> recordset = ModPub::OpenLookup(environment_, connection_, sql);
    std::optional<double> number;
    if (!recordset->AtEOF()) {
        if (const host::Value value = recordset->FieldValue(0); !value.IsNull()) {
            number = ModPub::ToDouble(value);
        }
    }
    recordset->Close();
    return number;
}

} // namespace refhost
