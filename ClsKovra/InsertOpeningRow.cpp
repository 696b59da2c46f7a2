#include "ClsKovra/Amounts.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovra/OpeningRow.h"
#include "ModPub/Conversions.h"
#include "ModPub/Joined.h"
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

/// What the columns and the values of a row take, by far the most of them.
constexpr std::size_t usualSize = 448;

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
        values.append("Null, ");
    } else {
        values.append("'").append(text).append("', ");
    }
}

void AppendNumber(std::string& values, double number) { values.append(ModPub::NumberText(number)).append(", "); }

void AppendNumberOrNull(std::string& values, double number) {
    if (number == 0) {
        values.append("Null, ");
    } else {
        AppendNumber(values, number);
    }
}

void AppendChild(std::string& columns, std::string& values, const host::DOMNode& child) {
    const std::string name = child.BaseName();
    const auto mapping = std::ranges::find_if(
        columnMappings, [&](const ColumnMapping& each) { return text::SameName(each.name, name); });
    if (mapping == columnMappings.end()) {
        columns.append(name).append(", ");
        AppendText(values, child.Text());
        return;
    }
    if (mapping->form == Form::skipped) {
        return;
    }
    columns.append(mapping->column);
    const std::string text = child.Text();
    AppendText(values, mapping->form == Form::date && !text.empty() ? ModPub::FormatDate(text) : text);
}

} // namespace

void ClsKovra::InsertOpeningRow(const OpeningRow& row, const Amounts& amounts) {
    std::string columns;
    std::string values;
    columns.reserve(usualSize);
    values.reserve(usualSize);
    row.element.VisitChildren([&](const host::DOMNode& child) { AppendChild(columns, values, child); });
    if (amounts.quantity == 0) {
        columns.append("IAInPrice, iDebitDifCost, iCreditDifcost, cBusType ");
        AppendNumberOrNull(values, amounts.amount);
    } else {
        columns.append("IAInQuantity, iInCost, IAInPrice, iDebitDifCost, iCreditDifcost, cBusType ");
        AppendNumber(values, amounts.quantity);
        AppendNumber(values, amounts.unitCost);
        AppendNumber(values, amounts.amount);
    }
    AppendNumberOrNull(values, amounts.debitDifference);
    AppendNumberOrNull(values, amounts.creditDifference);
    values.append("'EAI' ");

    state_.connection->Execute(ModPub::Joined({"Insert Into Ia_subsidiary (iYear,cVouType, bRdFlag, ", columns,
                                               ") Values(", state_.login->LoginYear(), ",'34', 1,", values, ")"}),
                               host::command_option::textNoRecords);
}

} // namespace kovra
