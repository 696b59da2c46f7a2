#include "import/writing/RefusedRows.h"

#include "ModPub/Numbers.h"
#include "import/cells/Defuse.h"
#include "import/reading/WholeNumber.h"
#include "import/writing/Book.h"
#include "import/writing/Files.h"
#include "text/Utf8.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace importing {
namespace {

/// The columns in front: why a row is refused, and where it was.
constexpr std::size_t front = 2;

/// Why a row is refused, in one text.
std::string Reasons(const Outcome& outcome, const RowOutcome& row, Language language) {
    std::string reasons;
    const auto add = [&](std::string_view words) {
        reasons.append(reasons.empty() || language == Language::chinese ? "" : " ").append(words);
    };
    for (const Finding& finding : row.row.refusals) {
        const std::vector<std::string>& headings = outcome.columns.headings;
        const bool hasHeading = finding.column && *finding.column < headings.size();
        add((hasHeading ? headings[*finding.column] + (language == Language::chinese ? "：" : ": ") : std::string()) +
            Words(finding.note, language));
    }
    for (const std::string& message : row.messages) {
        add(message);
    }
    return reasons;
}

/// The file's own headings and cells, and what stands in front of them; the same for both kinds of files.
class RefusedRows {
public:
    RefusedRows(const Outcome& outcome, Language language) : outcome_(outcome), language_(language) {}

    std::vector<std::string> Headings() const {
        std::vector<std::string> headings = {Words({message::refusedReason, {}}, language_),
                                             Words({message::refusedLine, {}}, language_)};
        headings.insert(headings.end(), Own(outcome_.columns.headings), outcome_.columns.headings.end());
        return headings;
    }

    /// Calls `use` with the reasons, the line and the cells of each refused row.
    template <class Use> void ForEach(const Use& use) const {
        for (const RowOutcome& row : outcome_.rows) {
            if (IsRefused(row.state)) {
                const std::vector<Cell>& cells = row.row.cells;
                use(Reasons(outcome_, row, language_), row.row.line, std::vector<Cell>(Own(cells), cells.end()));
            }
        }
    }

private:
    /// Where a file's own columns begin: it may be one of refused rows itself.
    template <class Cells> typename Cells::const_iterator Own(const Cells& cells) const {
        return cells.begin() + static_cast<std::ptrdiff_t>(std::min(outcome_.columns.front, cells.size()));
    }

    const Outcome& outcome_;
    Language language_;
};

void AppendCsvField(std::string& text, const std::string& field) {
    const std::string defused = Defused(field);
    const bool quoted = defused.find_first_of(",;\t\"\r\n") != std::string::npos;
    text.append(quoted ? "\"" : "");
    for (const char c : defused) {
        text.append(c == '"' ? 2 : 1, c);
    }
    text.append(quoted ? "\"" : "");
}

std::string CsvText(const RefusedRows& rows) {
    std::string text = "\xEF\xBB\xBF";
    for (const std::string& heading : rows.Headings()) {
        text.append(text.size() > 3 ? "," : "");
        AppendCsvField(text, heading);
    }
    rows.ForEach([&](const std::string& reasons, std::size_t line, const std::vector<Cell>& cells) {
        text.append("\r\n");
        AppendCsvField(text, reasons);
        text.append(",").append(std::to_string(line));
        for (const Cell& cell : cells) {
            text.push_back(',');
            AppendCsvField(text, cell.text);
        }
    });
    return text.append("\r\n");
}

/// The day and time of a date cell, "YYYY-MM-DD" or "YYYY-MM-DD hh:mm:ss"; nothing for another text, and for a day that
/// the 1900 date system lacks.
std::optional<lxw_datetime> ReadDay(std::string_view text) {
    constexpr std::size_t day = 10;
    constexpr std::size_t withTime = 19;
    if ((text.size() != day && text.size() != withTime) || text < "1900-03-01") {
        return std::nullopt;
    }
    const auto number = [&](std::size_t at, std::size_t length) {
        return at < text.size() ? static_cast<int>(WholeNumber(text.substr(at, length))) : 0;
    };
    return lxw_datetime{.year = number(0, 4),
                        .month = number(5, 2),
                        .day = number(8, 2),
                        .hour = number(11, 2),
                        .min = number(14, 2),
                        .sec = static_cast<double>(number(17, 2))};
}

class BookOfRows {
public:
    explicit BookOfRows(const std::string& path) : book_(path) {}

    void Write(const RefusedRows& rows, Language language) {
        format_set_bold(heading_);
        format_set_text_wrap(wrapped_);
        format_set_align(wrapped_, LXW_ALIGN_VERTICAL_TOP);
        format_set_num_format_index(text_, textFormat);
        format_set_num_format(date_, "yyyy-mm-dd");
        format_set_num_format(time_, "yyyy-mm-dd hh:mm:ss");
        lxw_worksheet& sheet = book_.AddSheet(Words({message::sheetOfRefused, {}}, language));
        lxw_col_t column = 0;
        for (const std::string& heading : rows.Headings()) {
            WriteText(sheet, 0, column++, heading, heading_);
        }
        constexpr double reasonWidth = 50;
        constexpr double width = 14;
        worksheet_set_column(&sheet, 0, 0, reasonWidth, nullptr);
        // Formatted as text, so that a code that is typed again keeps its zeros.
        worksheet_set_column(&sheet, front, std::max<lxw_col_t>(column, front), width, text_);
        lxw_row_t row = 0;
        rows.ForEach([&](const std::string& reasons, std::size_t line, const std::vector<Cell>& cells) {
            ++row;
            WriteText(sheet, row, 0, reasons, wrapped_);
            worksheet_write_number(&sheet, row, 1, static_cast<double>(line), nullptr);
            for (std::size_t index = 0; index < cells.size(); ++index) {
                WriteCell(sheet, row, static_cast<lxw_col_t>(front + index), cells[index]);
            }
        });
        worksheet_freeze_panes(&sheet, 1, front);
        book_.Save();
    }

private:
    static void WriteText(lxw_worksheet& sheet, lxw_row_t row, lxw_col_t column, const std::string& text,
                          lxw_format* format) {
        // A cell holds no more, and no column takes as much: it stays refused.
        constexpr std::size_t mostBytes = 32'767;
        std::string defused = Defused(text);
        if (defused.size() > mostBytes) {
            defused.resize(mostBytes);
            while (!text::IsUtf8(defused)) {
                defused.pop_back();
            }
        }
        worksheet_write_string(&sheet, row, column, CellText(defused).c_str(), format);
    }

    void WriteCell(lxw_worksheet& sheet, lxw_row_t row, lxw_col_t column, const Cell& cell) const {
        switch (cell.kind) {
        case Cell::Kind::empty:
            return;
        case Cell::Kind::number:
            worksheet_write_number(&sheet, row, column, ModPub::Val(cell.text), text_);
            return;
        case Cell::Kind::noDate:
            worksheet_write_number(&sheet, row, column, ModPub::Val(cell.text), date_);
            return;
        case Cell::Kind::boolean:
            worksheet_write_boolean(&sheet, row, column, cell.text == "TRUE" ? 1 : 0, nullptr);
            return;
        case Cell::Kind::date:
            if (std::optional<lxw_datetime> day = ReadDay(cell.text)) {
                constexpr std::size_t dayAlone = 10;
                worksheet_write_datetime(&sheet, row, column, &*day, cell.text.size() == dayAlone ? date_ : time_);
                return;
            }
            break;
        case Cell::Kind::text:
        case Cell::Kind::error:
        case Cell::Kind::noValue:
            break;
        }
        // The words of an error or formula are refused like the error or formula itself.
        WriteText(sheet, row, column, cell.text, text_);
    }

    Book book_;
    lxw_format* heading_ = &book_.AddFormat();
    lxw_format* wrapped_ = &book_.AddFormat();
    lxw_format* text_ = &book_.AddFormat();
    lxw_format* date_ = &book_.AddFormat();
    lxw_format* time_ = &book_.AddFormat();
};

bool IsWorkbook(const std::string& path) { return path.ends_with(".xlsx"); }

} // namespace

std::string RefusedRowsPath(const std::string& input, Language language) {
    const bool workbook = IsWorkbook(input) || input.ends_with(".xlsm") || input.ends_with(".XLSX");
    return PathBeside(input, Words({message::refusedFile, {}}, language), workbook ? ".xlsx" : ".csv");
}

void WriteRefusedRows(const Outcome& outcome, Language language, const std::string& path) {
    const RefusedRows rows(outcome, language);
    if (IsWorkbook(path)) {
        BookOfRows(path).Write(rows, language);
    } else {
        WriteFile(path, CsvText(rows));
    }
}

} // namespace importing
