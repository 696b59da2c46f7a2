#include "refhost/ia/ProvisionVoucher.h"

#include "ModPub/Conversions.h"
#include "ModPub/Lookup.h"
#include "ModPub/XmlText.h"
#include "refhost/ia/NumberLock.h"
#include "text/SameName.h"
#include "text/SqlText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace refhost {
namespace {

/// Columns of the records that the tables do not take: the database's own numbers, and what a template adds.
constexpr std::array<std::string_view, 6> notStored = {"ID", "AutoID", "bEai", "cdepname", "cpersonname", "cwhname"};

/// The path to the records.
constexpr std::string_view recordPath = "/xml/rs:data/z:row";

/// The types by which the schema of a saved recordset calls columns of numbers.
constexpr std::array<std::string_view, 7> numberTypes = {"i2", "int", "r4", "float", "number", "ui1", "i8"};

struct Column {
    std::string name;
    host::DOMNodePtr type;
    /// Nothing as long as nobody has asked.
    std::optional<bool> number;

    /// Whether it takes numbers.
    bool IsNumber() {
        if (!number) {
            const host::DOMNodePtr datatype = type->SelectSingleNode("s:datatype");
            const std::string typeName = datatype ? datatype->GetAttribute("dt:type").value_or("") : "";
            number = std::ranges::find(numberTypes, typeName) != numberTypes.end();
        }
        return *number;
    }
};

/// The columns that the schema of saved records names.
std::vector<Column> Columns(const host::DOMDocument& records) {
    host::DOMNodeList types = records.SelectNodes("/xml/s:Schema/s:ElementType/s:AttributeType");
    std::vector<Column> columns;
    columns.reserve(types.size());
    for (host::DOMNodePtr& type : types) {
        std::string name = type->GetAttribute("name").value_or("");
        columns.push_back({std::move(name), std::move(type), {}});
    }
    return columns;
}

bool IsStored(std::string_view column) {
    return std::ranges::none_of(notStored, [&](std::string_view other) { return text::SameName(column, other); });
}

/// The statement that inserts one record, or why its values cannot be stored.
struct Insert {
    std::string sql;
    std::string refusal;
};

Insert MakeInsert(std::string_view table, std::vector<Column>& columns, const host::DOMNode& record,
                  const std::string& id) {
    std::string names = "ID";
    std::string values = id;
    for (Column& column : columns) {
        const std::optional<std::string> text = record.GetAttribute(column.name);
        // Most columns have no value; what there is to know of a column is asked for those that have one.
        if (!text || !IsStored(column.name)) {
            continue;
        }
        names.append(",[").append(column.name).append("]");
        values.append(",");
        if (text->empty()) {
            values.append("Null");
        } else if (!column.IsNumber()) {
            values.append(SqlText(*text));
        } else if (ModPub::IsNumeric(*text)) {
            values.append(ModPub::NumberText(ModPub::ToDouble(*text)));
        } else {
            return {{}, "列" + column.name + "的值" + *text + "不是数值。"};
        }
    }
    return {"Insert Into " + std::string(table) + " (" + names + ") Values (" + values + ")", {}};
}

std::string Text(const host::DOMNode& row, std::string_view column) { return row.GetAttribute(column).value_or(""); }

/// A row's amount; nothing where it has none or it is no number.
std::optional<double> Amount(const host::DOMNode& row, std::string_view column) {
    const std::string text = Text(row, column);
    return ModPub::IsNumeric(text) ? std::optional(ModPub::ToDouble(text)) : std::nullopt;
}

/// Appends the element `name` with the rows listed, if there are any.
void AppendList(std::string& xml, const std::string& name, const std::string& rows) {
    if (!rows.empty()) {
        xml.append("<" + name + ">").append(rows).append("</" + name + ">");
    }
}

void AppendRow(std::string& rows, const host::DOMNode& row) {
    rows.append("<z:row");
    ModPub::AppendXmlAttribute(rows, "cinvcode", Text(row, "cInvCode"));
    rows.append("/>");
}

} // namespace

std::string ProvisionVoucher::Save(host::DOMDocument& result) {
    const host::DOMNodePtr headRecord = head_.SelectSingleNode(recordPath);
    if (!headRecord) {
        return "没有单据头，不能保存。";
    }
    if (ListRows(result)) {
        return {};
    }
    const std::unique_ptr<host::Recordset> next = ModPub::OpenLookup(
        environment_, connection_, "Select isnull(max(ID),0)+1 as ID From IA_DecReady" + std::string(numberLock));
    const std::string id = std::to_string(ModPub::ToInt32(next->FieldValue(0)));
    next->Close();

    std::vector<Column> columns = Columns(head_);
    Insert insert = MakeInsert("IA_DecReady", columns, *headRecord, id);
    if (!insert.refusal.empty()) {
        return insert.refusal;
    }
    connection_.Execute(insert.sql, host::command_option::textNoRecords);
    columns = Columns(body_);
    for (const host::DOMNodePtr& record : body_.SelectNodes(recordPath)) {
        insert = MakeInsert("IA_DecReadys", columns, *record, id);
        if (!insert.refusal.empty()) {
            return insert.refusal;
        }
        connection_.Execute(insert.sql, host::command_option::textNoRecords);
    }
    return {};
}

/// Lists in `result` the rows beyond stock or budget; returns whether there are any.
bool ProvisionVoucher::ListRows(host::DOMDocument& result) {
    std::string beyondStock;
    std::string beyondBudget;
    for (const host::DOMNodePtr& row : body_.SelectNodes(recordPath)) {
        if (const std::optional<double> quantity = Amount(*row, "iQuantity")) {
            std::string sql = "Select sum(iQuantity) as iQuantity From CurrentStock Where cInvCode=" +
                              SqlText(Text(*row, "cInvCode"));
            if (const std::string warehouse = Text(*row, "cWhCode"); !warehouse.empty()) {
                sql += " And cWhCode=" + SqlText(warehouse);
            }
            if (const std::optional<double> stock = LookUpNumber(sql); stock && *quantity > *stock) {
                AppendRow(beyondStock, *row);
            }
        }
        const std::string project = Text(*row, "cItemCode");
        const std::optional<double> provision = Amount(*row, "iThisPrice");
        if (!project.empty() && provision) {
            const std::optional<double> budget =
                LookUpNumber("Select iBudget From ItemBudget Where cItem_class=" + SqlText(Text(*row, "cItem_class")) +
                             " And cItemCode=" + SqlText(project));
            if (budget && *budget < *provision) {
                AppendRow(beyondBudget, *row);
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
