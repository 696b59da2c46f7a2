#include "ClsKovra/Amounts.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovra/OpeningRow.h"
#include "ModPub/Conversions.h"
#include "ModPub/SaveSetting.h"
#include "text/SameName.h"

#include <algorithm>
#include <array>

namespace kovra {
namespace {

/// How a child's text becomes a value of the statement.
enum class Form { skipped, text, date };

/// Where a child goes that is called `name` in whatever letter case.
struct ColumnMapping {
    std::string_view name;
    Form form;
    std::string_view column;
};

/// What the values of a row take, by far the most of them.
constexpr std::size_t usualSize = 448;

constexpr std::string_view null = "Null, ";
constexpr std::string_view separator = ", ";

constexpr std::array columnMappings = {
    ColumnMapping{"ICOST", Form::skipped, {}},
    ColumnMapping{"IQUANTITY", Form::skipped, {}},
    ColumnMapping{"IPRICE", Form::skipped, {}},
    ColumnMapping{"CVOUTYPE", Form::skipped, {}},
    ColumnMapping{"CBATCH", Form::text, "cBatchia, "},
    ColumnMapping{"DMADEDATE", Form::date, "dMadeDateia, "},
    ColumnMapping{"IMASSDATE", Form::text, "iMassDateia, "},
    ColumnMapping{"DVDATE", Form::date, "dVDateia, "},
    ColumnMapping{"CBATCHCODE", Form::text, "cBatchIA, "},
};

void AppendText(std::string& values, std::string_view text) {
    if (text.empty()) {
        values.append(null);
    } else {
        values += '\'';
        values.append(text);
        values += '\'';
        values.append(separator);
    }
}

void AppendNumber(std::string& values, double number) { values.append(ModPub::NumberText(number)).append(separator); }

void AppendNumberOrNull(std::string& values, double number) {
    if (number == 0) {
        values.append(null);
    } else {
        AppendNumber(values, number);
    }
}

/// Appends the child's column to the statement and its value to the values.
void AppendChild(std::string& sql, std::string& values, const host::DOMNode& child) {
    const std::string name = child.BaseName();
    const auto mapping = std::ranges::find_if(
        columnMappings, [&](const ColumnMapping& each) { return text::SameName(each.name, name); });
    if (mapping == columnMappings.end()) {
        sql.append(name).append(separator);
        AppendText(values, child.Text());
        return;
    }
    if (mapping->form == Form::skipped) {
        return;
    }
    sql.append(mapping->column);
    const std::string text = child.Text();
    AppendText(values, mapping->form == Form::date && !text.empty() ? ModPub::FormatDate(text) : text);
}

} // namespace

void ClsKovra::InsertOpeningRow(const OpeningRow& row, const Amounts& amounts) {
    std::string sql = ModPub::BeginStatement("Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, ");
    std::string values;
    values.reserve(usualSize);
    row.element.VisitChildren([&](const host::DOMNode& child) { AppendChild(sql, values, child); });
    if (amounts.quantity == 0) {
        sql.append("IAInPrice, iDebitDifCost, iCreditDifcost, cBusType ");
        AppendNumberOrNull(values, amounts.amount);
    } else {
        sql.append("IAInQuantity, iInCost, IAInPrice, iDebitDifCost, iCreditDifcost, cBusType ");
        AppendNumber(values, amounts.quantity);
        AppendNumber(values, amounts.unitCost);
        AppendNumber(values, amounts.amount);
    }
    AppendNumberOrNull(values, amounts.debitDifference);
    AppendNumberOrNull(values, amounts.creditDifference);
    sql.append(") Values(").append(state_.login->LoginYear()).append(",'34', 1,").append(values).append("'EAI' )");
    state_.connection->Execute(sql, host::command_option::textNoRecords);
}

} // namespace kovra
