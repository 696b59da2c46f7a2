#include "import/rows/Sheet.h"

#include "ModPub/Numbers.h"
#include "import/cells/Characters.h"
#include "import/cells/Defuse.h"
#include "import/cells/ReadCode.h"
#include "import/cells/ReadDate.h"
#include "import/cells/ReadNumber.h"
#include "import/cells/ReadText.h"
#include "import/rows/Amounts.h"
#include "import/rows/Documents.h"
#include "import/rows/FindClass.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

namespace importing {
namespace {

/// Whether a cell says that its line is one of totals.
bool IsTotalsWord(const Cell& cell) {
    constexpr std::array<std::string_view, 5> words = {"合计", "总计", "小计", "total", "grandtotal"};
    std::string text(TrimBlanks(ToHalfWidth(cell.text)));
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    std::erase(text, ' ');
    while (text.ends_with(':')) {
        text.pop_back();
    }
    return std::ranges::find(words, text) != words.end();
}

/// Whether a line is one of totals: a cell says so, and it has no code, as a row has whose memo is "total".
bool IsTotals(const Line& line, const Columns& columns) {
    bool says = false;
    for (std::size_t column = 0; column < line.cells.size(); ++column) {
        const Cell& cell = line.cells[column];
        const Field* const field = column < columns.fields.size() ? columns.fields[column] : nullptr;
        const bool isWord = IsTotalsWord(cell);
        if (!isWord && field != nullptr && field->type == FieldType::code && !TrimBlanks(cell.text).empty()) {
            return false;
        }
        says = says || isWord;
    }
    return says;
}

class SheetReader {
public:
    SheetReader(Table& table, const ClassFields& classFields, const CodeLists& codes, const SheetOptions& options)
        : table_(table), codes_(codes), options_(options) {
        sheet_.classFields = &classFields;
    }

    Sheet Read() {
        if (!FindHeadings(table_, *sheet_.classFields, options_.headerLine, options_.headings, line_)) {
            sheet_.faults.push_back({message::headingsNotFound, {}});
            return std::move(sheet_);
        }
        sheet_.headerLine = line_.number;
        sheet_.columns = ReadHeadings(line_, *sheet_.classFields, options_.headings);
        sheet_.faults = sheet_.columns.faults;
        while (table_.Next(line_)) {
            if (sheet_.columns.front != 0) {
                Undefuse();
            }
            ReadLine();
        }
        RefuseMerged();
        RefuseDocuments();
        CheckHidden();
        CheckTotals();
        return std::move(sheet_);
    }

private:
    /// Takes a line of refused rows as it was in its original.
    void Undefuse() {
        for (Cell& cell : line_.cells) {
            if (cell.kind == Cell::Kind::text) {
                cell.text = std::string(Undefused(cell.text));
            }
        }
    }

    void ReadLine() {
        if (line_.Empty()) {
            return;
        }
        if (line_.hidden) {
            ++sheet_.hiddenRows;
            if (options_.hidden == SheetOptions::Hidden::skip) {
                return;
            }
        }
        if (IsTotals(line_, sheet_.columns)) {
            totals_ = line_;
            return;
        }
        Row& row = sheet_.rows.emplace_back();
        row.line = line_.number;
        const std::size_t count = sheet_.columns.fields.size();
        row.values.resize(count);
        row.cells = line_.cells;
        line_.cells.resize(std::max(count, line_.cells.size()));
        for (std::size_t column = 0; column < count; ++column) {
            if (const Field* const field = sheet_.columns.fields[column]) {
                ReadValue(row, column, *field);
            }
        }
        RefuseStrayCells(row, count);
        WarnOfAmount(sheet_.columns, row);
        if (!options_.allowDuplicates) {
            RefuseRepeated(row);
        }
    }

    void ReadValue(Row& row, std::size_t column, const Field& field) {
        const Cell& cell = line_.cells[column];
        Reading reading = ReadBy(field, cell);
        if (reading.refusal) {
            row.refusals.push_back({column, *std::move(reading.refusal), std::move(reading.proposal)});
            return;
        }
        if (reading.value.empty()) {
            if (field.required) {
                row.refusals.push_back({column, {message::valueMissing, {sheet_.columns.headings[column]}}, {}});
            }
            return;
        }
        if (reading.value != cell.text) {
            row.corrections.push_back({column, cell.text, reading.value});
        }
        row.values[column] = std::move(reading.value);
    }

    Reading ReadBy(const Field& field, const Cell& cell) const {
        switch (field.type) {
        case FieldType::code: {
            const auto known = codes_.find(field.list);
            return ReadCode(cell, {.length = field.length,
                                   .known = known == codes_.end() ? nullptr : &known->second,
                                   .fixLeadingZeros = options_.fixCodes});
        }
        case FieldType::number:
            return ReadNumber(cell);
        case FieldType::price: {
            Reading reading = ReadNumber(cell);
            return reading.value.starts_with('-') ? Reading::Refuse({message::numberNegative, {cell.text}}) : reading;
        }
        case FieldType::date:
            return ReadDate(cell);
        case FieldType::text:
        case FieldType::name:
            return ReadText(cell, {.length = field.length, .compared = field.type == FieldType::name});
        }
        return {};
    }

    /// Refuses what stands beside the headings: nobody would see it go.
    void RefuseStrayCells(Row& row, std::size_t count) const {
        for (std::size_t column = 0; column < line_.cells.size(); ++column) {
            const bool headed = column < count && sheet_.columns.fields[column] != nullptr;
            const bool unknown = column < count && !sheet_.columns.headings[column].empty();
            if (!headed && !unknown && !TrimBlanks(line_.cells[column].text).empty()) {
                row.refusals.push_back({column, {message::cellWithoutHeading, {line_.cells[column].text}}, {}});
            }
        }
    }

    /// Whether the finding is about a column that tells rows from each other.
    bool IsOfKey(const Finding& finding) const {
        const std::vector<const Field*>& fields = sheet_.columns.fields;
        return finding.column && *finding.column < fields.size() && fields[*finding.column] != nullptr &&
               fields[*finding.column]->key;
    }

    void RefuseRepeated(Row& row) {
        // What a row repeats is not known before its codes are.
        if (std::ranges::any_of(row.refusals, [this](const Finding& finding) { return IsOfKey(finding); })) {
            return;
        }
        std::string key;
        for (std::size_t column = 0; column < row.values.size(); ++column) {
            if (const Field* const field = sheet_.columns.fields[column]; field != nullptr && field->key) {
                key.append(row.values[column]).push_back('\x1F');
            }
        }
        if (key.find_first_not_of('\x1F') == std::string::npos) {
            return;
        }
        const auto [first, isNew] = seen_.try_emplace(std::move(key), row.line);
        if (!isNew) {
            row.refusals.push_back({std::nullopt, {message::rowRepeated, {std::to_string(first->second)}}, {}});
        }
    }

    void RefuseMerged() {
        for (const MergedCells& merged : table_.Merged()) {
            for (Row& row : sheet_.rows) {
                if (row.line >= merged.firstLine && row.line <= merged.lastLine) {
                    row.refusals.push_back({merged.firstColumn, {message::cellsMerged, {}}, {}});
                }
            }
        }
    }

    /// A document is taken as a whole or not at all, and has one header.
    void RefuseDocuments() {
        const std::optional<std::size_t> number = sheet_.columns.Find(sheet_.classFields->document);
        if (!number) {
            return;
        }
        std::map<std::string, Row*> first;
        for (Row& row : sheet_.rows) {
            Row* const header = first.try_emplace(row.values[*number], &row).first->second;
            if (!row.values[*number].empty() && !SameHeader(*header, row)) {
                row.refusals.push_back(
                    {number, {message::headerDiffers, {row.values[*number], std::to_string(header->line)}}, {}});
            }
        }
        std::vector<Row*> rows;
        for (Row& row : sheet_.rows) {
            rows.push_back(&row);
        }
        RefuseWithTheirDocuments(*sheet_.classFields, sheet_.columns, rows);
    }

    bool SameHeader(const Row& a, const Row& b) const {
        for (std::size_t column = 0; column < sheet_.columns.fields.size(); ++column) {
            const Field* const field = sheet_.columns.fields[column];
            if (field != nullptr && field->place == Place::header && a.values[column] != b.values[column]) {
                return false;
            }
        }
        return true;
    }

    void CheckHidden() {
        if (sheet_.hiddenRows != 0 && options_.hidden == SheetOptions::Hidden::refuse) {
            sheet_.faults.push_back({message::rowsHidden, {std::to_string(sheet_.hiddenRows)}});
        }
    }

    /// Holds the line of totals against the rows above it, where those could all be read.
    void CheckTotals() {
        if (!totals_ || !std::ranges::all_of(sheet_.rows, [](const Row& row) { return row.refusals.empty(); })) {
            return;
        }
        for (std::size_t column = 0; column < sheet_.columns.fields.size() && column < totals_->cells.size();
             ++column) {
            const Field* const field = sheet_.columns.fields[column];
            if (field == nullptr || field->type != FieldType::number) {
                continue;
            }
            const Reading total = ReadNumber(totals_->cells[column]);
            const double sum = SumOf(sheet_.rows, column);
            constexpr double cent = 0.005;
            if (!total.refusal && !total.value.empty() && std::abs(ModPub::Val(total.value) - sum) > cent) {
                sheet_.faults.push_back(
                    {message::totalsDiffer, {CellName(column, totals_->number), total.value, ModPub::NumberText(sum)}});
            }
        }
    }

    Table& table_;
    const CodeLists& codes_;
    const SheetOptions& options_;
    Sheet sheet_;
    Line line_;
    std::optional<Line> totals_;
    std::unordered_map<std::string, std::size_t> seen_;
};

} // namespace

Sheet ReadSheet(Table& table, const ClassFields& classFields, const CodeLists& codes, const SheetOptions& options) {
    return SheetReader(table, classFields, codes, options).Read();
}

} // namespace importing
