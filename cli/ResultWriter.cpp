#include "cli/ResultWriter.h"

#include "cli/Table.h"
#include "refhost/ado/JsonRow.h"

#include <array>
#include <utility>
#include <vector>

namespace cli {
namespace {

bool IsNumber(host::FieldType type) {
    using enum host::FieldType;
    switch (type) {
    case smallInt:
    case integer:
    case single:
    case doubleFloat:
    case currency:
    case unsignedTinyInt:
    case bigInt:
    case numeric:
        return true;
    default:
        return false;
    }
}

host::Value CellAt(const refhost::ResultSet& result, std::size_t row, std::size_t column) {
    return result.cells[row * result.fields->size() + column];
}

std::string TableText(const refhost::ResultSet& result, std::size_t width, const Messages& messages) {
    std::vector<Table::Column> columns;
    for (const host::Field& field : *result.fields) {
        columns.push_back({field.name, IsNumber(field.type) ? Table::Alignment::right : Table::Alignment::left});
    }
    Table table(std::move(columns));
    for (std::size_t row = 0; row < result.rowCount; ++row) {
        std::vector<std::string> cells;
        for (std::size_t column = 0; column < result.fields->size(); ++column) {
            const host::Value value = CellAt(result, row, column);
            cells.push_back(value.As<host::Null>() != nullptr ? "NULL" : refhost::PlainText(value));
        }
        table.AddRow(std::move(cells));
    }
    return table.Text(width) + "(" + Count(result.rowCount, messages.row) + ")\n";
}

void AppendCsvField(std::string& line, std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        line += text;
        return;
    }
    line += '"';
    for (const char c : text) {
        line += c;
        if (c == '"') {
            line += c;
        }
    }
    line += '"';
}

std::string CsvText(const refhost::ResultSet& result) {
    std::string text;
    const std::size_t count = result.fields->size();
    for (std::size_t column = 0; column < count; ++column) {
        text += column > 0 ? "," : "";
        AppendCsvField(text, (*result.fields)[column].name);
    }
    text += "\r\n";
    for (std::size_t row = 0; row < result.rowCount; ++row) {
        for (std::size_t column = 0; column < count; ++column) {
            text += column > 0 ? "," : "";
            AppendCsvField(text, refhost::PlainText(CellAt(result, row, column)));
        }
        text += "\r\n";
    }
    return text;
}

std::string JsonText(const refhost::ResultSet& result) {
    std::string text;
    for (std::size_t row = 0; row < result.rowCount; ++row) {
        refhost::AppendJsonRow(text, result, row);
        text.push_back('\n');
    }
    return text;
}

} // namespace

std::optional<RowFormat> RowFormatNamed(std::string_view name) noexcept {
    constexpr std::array<std::pair<std::string_view, RowFormat>, 3> names{
        {{"table", RowFormat::table}, {"json", RowFormat::json}, {"csv", RowFormat::csv}}};
    for (const auto& [known, format] : names) {
        if (known == name) {
            return format;
        }
    }
    return std::nullopt;
}

std::string ResultText(const refhost::ResultSet& result, RowFormat format, std::size_t width,
                       const Messages& messages) {
    switch (format) {
    case RowFormat::table:
        return TableText(result, width, messages);
    case RowFormat::json:
        return JsonText(result);
    case RowFormat::csv:
        return CsvText(result);
    }
    return {};
}

} // namespace cli
