#include "examples/opening-5000/FaultyOpening.h"

#include "import/reading/Workbook.h"
#include "import/writing/Book.h"

#include <functional>
#include <numeric>
#include <random>
#include <stdexcept>
#include <utility>

namespace opening {
namespace {

using importing::Cell;
using importing::Message;
namespace message = importing::message;

constexpr std::array<const char*, columnCount> headings = {"仓库编码", "存货编码", "数量", "单价",
                                                           "金额",     "入库日期", "备注"};
constexpr std::size_t warehouses = 5;
constexpr std::size_t itemsOfAWarehouse = rowCount / warehouses;

/// `number` with zeros in front.
std::string Padded(std::size_t number, std::size_t length) {
    const std::string digits = std::to_string(number);
    return std::string(length - digits.size(), '0') + digits;
}

std::string Warehouse(std::size_t number) { return Padded(number + 1, 2); }
/// Eight digits: class 0101, then the number.
std::string Item(std::size_t number) { return "0101" + Padded(number + 1, 4); }

/// Hundredths without zeros at their end.
std::string Hundredths(std::size_t number) {
    std::string text = std::to_string(number / 100);
    if (number % 100 != 0) {
        text.append(".").append(Padded(number % 100, 2));
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text;
}

/// The digits as a Chinese input method types them.
std::string FullWidth(const std::string& text) {
    std::string wide;
    for (const char c : text) {
        c >= '0' && c <= '9' ? wide.append("\xEF\xBC").push_back(static_cast<char>('\x90' + (c - '0')))
                             : wide.push_back(c);
    }
    return wide;
}

/// "1,234.5" for "1234.5".
std::string WithCommas(std::string text) {
    for (std::size_t at = std::min(text.find('.'), text.size()); at > 3;) {
        at -= 3;
        text.insert(at, 1, ',');
    }
    return text;
}

Cell Text(std::string text) { return {Cell::Kind::text, std::move(text)}; }
Cell Number(std::string text) { return {Cell::Kind::number, std::move(text)}; }

/// A way to type one row; it changes what is typed and says what must come of it.
using Typing = std::function<void(Row&)>;

struct Kind {
    /// How many rows are typed like that.
    std::size_t count;
    Typing type;
};

Typing Corrected(Column column, const std::function<std::string(const std::string&)>& typed) {
    return [=](Row& row) {
        row.typed[column] = Text(typed(row.meant[column]));
        row.correction = {column, row.typed[column].text, row.meant[column]};
    };
}

Typing Refused(Column column, const std::function<Cell(Row&)>& typed,
               const std::function<importing::Note(const Row&)>& note) {
    return [=](Row& row) {
        row.typed[column] = typed(row);
        row.fault = {column, note(row)};
    };
}

std::string YearMonthDay(const std::string& date, const char* a, const char* b, const char* c) {
    const auto number = [&date](std::size_t at) { return std::to_string(std::stoi(date.substr(at, 2))); };
    return date.substr(0, 4) + a + number(5) + b + number(8) + c;
}

/// What people type that is corrected, with how often.
std::vector<Kind> CorrectedKinds() {
    using std::string;
    return {
        {120, Corrected(amount, WithCommas)},
        {60, Corrected(quantity, FullWidth)},
        {40, Corrected(amount, [](const string& text) { return "¥" + WithCommas(text); })},
        {20, Corrected(amount, [](const string& text) { return text + "元"; })},
        {20, Corrected(quantity, [](const string& text) { return " " + text + " "; })},
        {80, Corrected(item, [](const string& text) { return text + " "; })},
        {30, Corrected(warehouse, FullWidth)},
        {10,
         [](Row& row) {
             row.meant[quantity] = "-" + row.meant[quantity];
             row.meant[amount] = "-" + row.meant[amount];
             row.typed[quantity] = Number(row.meant[quantity]);
             row.typed[amount] = Text("(" + row.meant[amount].substr(1) + ")");
             row.correction = {amount, row.typed[amount].text, row.meant[amount]};
         }},
        {10,
         [](Row& row) {
             row.meant[quantity] = "-" + row.meant[quantity];
             row.meant[amount] = "-" + row.meant[amount];
             row.typed[quantity] = Number(row.meant[quantity]);
             row.typed[amount] = Text(row.meant[amount].substr(1) + "-");
             row.correction = {amount, row.typed[amount].text, row.meant[amount]};
         }},
        {30, Corrected(date, [](const string& text) { return YearMonthDay(text, "/", "/", ""); })},
        {30, Corrected(date, [](const string& text) { return YearMonthDay(text, ".", ".", ""); })},
        {30, Corrected(date, [](const string& text) { return YearMonthDay(text, "年", "月", "日"); })},
        {20,
         Corrected(date, [](const string& text) { return text.substr(0, 4) + text.substr(5, 2) + text.substr(8); })},
        {25, Corrected(memo, [](const string& text) { return text + "　"; })},
    };
}

/// What people type that must be refused, with how often.
std::vector<Kind> RefusedKinds() {
    const auto cellText = [](Message message, Column column) {
        return [=](const Row& row) { return importing::Note{message, {row.typed[column].text}}; };
    };
    return {
        {15,
         Refused(
             warehouse, [](const Row& row) { return Number(row.meant[warehouse].substr(1)); },
             [](const Row& row) {
                 return importing::Note{message::codeLeadingZeros, {row.typed[warehouse].text, row.meant[warehouse]}};
             })},
        {15, Refused(
                 item, [](const Row& row) { return Number(row.meant[item].substr(1)); },
                 [](const Row& row) {
                     return importing::Note{message::codeLeadingZeros, {row.typed[item].text, row.meant[item]}};
                 })},
        {15, Refused(
                 item, [](const Row& row) { return Text("O" + row.meant[item].substr(1)); },
                 [](const Row& row) {
                     return importing::Note{message::codeDigitForLetter, {row.typed[item].text, row.meant[item]}};
                 })},
        {20, Refused(
                 item, [](const Row& row) { return Text(row.meant[item] + "X"); },
                 [](const Row& row) {
                     return importing::Note{message::codeUnknownNear,
                                            {row.typed[item].text, row.meant[item], "存货" + row.meant[item]}};
                 })},
        {5, Refused(
                item, [](const Row&) { return Text("1.01E+06"); }, cellText(message::codeExponent, item))},
        {5, Refused(
                item, [](const Row& row) { return Text(row.meant[item] + "'"); }, cellText(message::codeQuote, item))},
        {10, Refused(
                 warehouse, [](const Row&) { return Cell{}; },
                 [](const Row&) {
                     return importing::Note{message::valueMissing, {headings[warehouse]}};
                 })},
        {20, Refused(
                 amount, [](const Row&) { return Cell{}; },
                 [](const Row&) {
                     return importing::Note{message::valueMissing, {headings[amount]}};
                 })},
        {12, Refused(
                 quantity, [](const Row&) { return Text("1,23"); },
                 [](const Row&) {
                     return importing::Note{message::numberGrouping, {"1,23", "1.23", "123"}};
                 })},
        {6, Refused(
                cost, [](const Row&) { return Text("15%"); },
                [](const Row&) {
                    return importing::Note{message::numberPercent, {"15%", "0.15"}};
                })},
        {23, Refused(
                 quantity, [](const Row&) { return Text("两个"); }, cellText(message::numberNone, quantity))},
        {8, Refused(
                amount, [](const Row&) { return Text("#REF!"); }, cellText(message::cellError, amount))},
        {4, Refused(
                cost, [](const Row& row) { return Number("-" + row.meant[cost]); },
                cellText(message::numberNegative, cost))},
        {15, Refused(
                 date,
                 [](const Row& row) {
                     return Text(std::to_string(std::stoi(row.meant[date].substr(8)) % 11 + 1) + "/12/2023");
                 },
                 [](const Row& row) {
                     const std::size_t first = std::stoul(row.typed[date].text);
                     const std::string monthFirst = "2023-" + Padded(first, 2) + "-12";
                     const std::string dayFirst = "2023-12-" + Padded(first, 2);
                     return importing::Note{message::dateTwoReadings, {row.typed[date].text, monthFirst, dayFirst}};
                 })},
        // 45261 is 2023-12-01.
        {10,
         Refused(
             date, [](const Row& row) { return Number(std::to_string(45260 + std::stoi(row.meant[date].substr(8)))); },
             [](const Row& row) {
                 return importing::Note{message::dateSerial, {row.typed[date].text, row.meant[date]}};
             })},
        {6, Refused(
                date, [](const Row&) { return Text("2023-02-30"); }, cellText(message::dateNoDay, date))},
        {8, Refused(
                memo, [](const Row&) { return Text("好\xF0\x9F\x98\x80"); },
                [](const Row&) {
                    return importing::Note{message::textCodePage, {"\xF0\x9F\x98\x80"}};
                })},
        {7, Refused(
                memo, [](const Row&) { return Text(std::string(256, 'x')); },
                [](const Row&) {
                    return importing::Note{message::textLong, {"256", "255"}};
                })},
    };
}

constexpr std::size_t repeatedRows = 42;
constexpr std::size_t warnedRows = 25;

/// The same order in every run and on every machine.
std::vector<std::size_t> Shuffled(std::mt19937& random) {
    std::vector<std::size_t> order(rowCount);
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t left = rowCount; left > 1; --left) {
        std::swap(order[left - 1], order[random() % left]);
    }
    return order;
}

Row CleanRow(std::size_t number, std::mt19937& random) {
    Row row;
    row.line = number + 2;
    // An amount has a comma always.
    const std::size_t pieces = random() % 900 + 100;
    const std::size_t unit = random() % 99'000 + 1000;
    row.meant = {Warehouse(number % warehouses),
                 Item(number / warehouses),
                 std::to_string(pieces),
                 Hundredths(unit),
                 Hundredths(pieces * unit),
                 "2023-12-" + Padded(random() % 31 + 1, 2),
                 "期初" + std::to_string(number + 1)};
    row.typed = {Text(row.meant[warehouse]), Text(row.meant[item]),     Number(row.meant[quantity]),
                 Number(row.meant[cost]),    Number(row.meant[amount]), {Cell::Kind::date, row.meant[date]},
                 Text(row.meant[memo])};
    return row;
}

/// Types the code of a row further up a second time.
void Repeat(std::vector<Row>& rows, std::size_t row, std::size_t earlier) {
    rows[row].typed[warehouse] = Text(rows[earlier].meant[warehouse]);
    rows[row].typed[item] = Text(rows[earlier].meant[item]);
    rows[row].fault = {std::nullopt, {message::rowRepeated, {std::to_string(rows[earlier].line)}}};
}

/// One statement for as many rows as SQL Server takes at once, 1,000.
std::string Insert(const std::string& into, std::size_t count,
                   const std::function<std::string(std::size_t number)>& values) {
    std::string statement = "insert into " + into + " values";
    for (std::size_t number = 0; number < count; ++number) {
        statement.append(number == 0 ? "\n(" : ",\n(").append(values(number)).append(")");
    }
    return statement;
}

class Writer {
public:
    explicit Writer(const std::string& path) : book_(path) {
        format_set_num_format(date_, "yyyy/m/d");
        format_set_bold(heading_);
    }

    void WriteText(const std::string& text) { Write({Cell::Kind::text, text}, heading_); }
    void Write(const Cell& cell) { Write(cell, nullptr); }
    void NextRow() {
        ++row_;
        column_ = 0;
    }
    void Save() {
        constexpr double width = 14;
        worksheet_set_column(&sheet_, 0, columnCount, width, nullptr);
        worksheet_freeze_panes(&sheet_, 1, 0);
        book_.Save();
    }

private:
    void Write(const Cell& cell, lxw_format* format) {
        const lxw_col_t column = column_++;
        if (cell.kind == Cell::Kind::number) {
            worksheet_write_number(&sheet_, row_, column, std::stod(cell.text), format);
        } else if (cell.kind == Cell::Kind::date) {
            lxw_datetime day{.year = std::stoi(cell.text.substr(0, 4)),
                             .month = std::stoi(cell.text.substr(5, 2)),
                             .day = std::stoi(cell.text.substr(8, 2)),
                             .hour = 0,
                             .min = 0,
                             .sec = 0};
            worksheet_write_datetime(&sheet_, row_, column, &day, date_);
        } else if (cell.kind != Cell::Kind::empty) {
            worksheet_write_string(&sheet_, row_, column, cell.text.c_str(), format);
        }
    }

    importing::Book book_;
    lxw_worksheet& sheet_ = book_.AddSheet("期初");
    lxw_format* date_ = &book_.AddFormat();
    lxw_format* heading_ = &book_.AddFormat();
    lxw_row_t row_ = 0;
    lxw_col_t column_ = 0;
};

} // namespace

std::vector<Row> Rows() {
    constexpr unsigned seed = 20240101;
    std::mt19937 random(seed);
    std::vector<Row> rows;
    for (std::size_t number = 0; number < rowCount; ++number) {
        rows.push_back(CleanRow(number, random));
    }
    const std::vector<std::size_t> order = Shuffled(random);
    auto next = order.begin();
    for (const std::vector<Kind>& kinds : {CorrectedKinds(), RefusedKinds()}) {
        for (const Kind& kind : kinds) {
            for (std::size_t count = 0; count < kind.count; ++count) {
                kind.type(rows[*next++]);
            }
        }
    }
    for (std::size_t count = 0; count < repeatedRows; ++count) {
        // Two rows without a fault; the later one repeats the earlier.
        const std::size_t one = *next++;
        const std::size_t other = *next++;
        Repeat(rows, std::max(one, other), std::min(one, other));
    }
    for (std::size_t count = 0; count < warnedRows; ++count) {
        Row& row = rows[*next++];
        row.meant[amount] = std::to_string(std::stoul(row.meant[amount]) + 1);
        row.typed[amount] = Number(row.meant[amount]);
        row.warned = true;
    }
    return rows;
}

importing::CodeLists Codes() {
    importing::CodeLists codes;
    for (std::size_t number = 0; number < warehouses; ++number) {
        codes[importing::CodeList::costedWarehouse].Add(Warehouse(number), "仓库" + Warehouse(number));
    }
    for (std::size_t number = 0; number < itemsOfAWarehouse; ++number) {
        codes[importing::CodeList::item].Add(Item(number), "存货" + Item(number));
    }
    return codes;
}

std::string AccountSql() {
    std::vector<std::string> batches = {
        "insert into AccInformation (cSysID, cName, cValue) values (N'IA', N'dIAStartDate', N'2024-01-01')",
        "insert into AccInformation (cSysID, cName, cValue) values (N'IA', N'cValueStyle', N'按仓库核算')",
        "insert into QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) "
        "values (N'001', 2024, 1, '2024-01-01', '2024-01-31')",
        "insert into code (ccode, ccode_name, iyear, bend) values "
        "(N'1403', N'原材料', 2024, 1), (N'1405', N'库存商品', 2024, 1)",
        "insert into IA_HeadSet (cWhCode, cInvHead, iYear) values (N'01', N'1403', 2024), (N'02', N'1403', 2024), "
        "(N'03', N'1405', 2024), (N'04', N'1405', 2024), (N'05', N'1405', 2024)",
    };
    batches.push_back(
        Insert("Warehouse (cWhCode, cWhName, cWhValueStyle, bInCost)", warehouses, [](std::size_t number) {
            return "N'" + Warehouse(number) + "', N'仓库" + Warehouse(number) + "', N'全月平均法', 1";
        }));
    batches.push_back(
        Insert("inventory (cInvCode, cInvName, bService, bInvType, bPTOModel)", itemsOfAWarehouse,
               [](std::size_t number) { return "N'" + Item(number) + "', N'存货" + Item(number) + "', 0, 0, 0"; }));
    std::string sql;
    for (const std::string& batch : batches) {
        sql.append(batch).append("\nGO\n");
    }
    return sql;
}

void WriteWorkbook(const std::string& path, const std::vector<Row>& rows) {
    Writer writer(path);
    for (const char* const heading : headings) {
        writer.WriteText(heading);
    }
    std::size_t pieces = 0;
    for (const Row& row : rows) {
        writer.NextRow();
        for (const Cell& cell : row.typed) {
            writer.Write(cell);
        }
        pieces += row.meant[quantity].starts_with('-') ? 0 : std::stoul(row.meant[quantity]);
    }
    writer.NextRow();
    writer.Write(Text("合计"));
    writer.Write({});
    writer.Write(Number(std::to_string(pieces)));
    writer.Save();
}

void CorrectRefused(const std::string& refused, const std::vector<Row>& rows, const std::string& corrected) {
    importing::Workbook workbook(refused);
    const std::unique_ptr<importing::Table> table = workbook.Open(0);
    Writer writer(corrected);
    importing::Line line;
    table->Next(line);
    for (const Cell& cell : line.cells) {
        writer.Write(cell);
    }
    while (table->Next(line)) {
        writer.NextRow();
        constexpr std::size_t front = 2;
        line.cells.resize(front + columnCount);
        const Row& row = rows.at(std::stoul(line.cells[1].text) - 2);
        if (!row.fault) {
            throw std::runtime_error("line " + line.cells[1].text + " has no fault");
        }
        if (row.fault->column) {
            line.cells[front + *row.fault->column] = Text(row.meant[*row.fault->column]);
        } else {
            line.cells[front + warehouse] = Text(row.meant[warehouse]);
            line.cells[front + item] = Text(row.meant[item]);
        }
        for (const Cell& cell : line.cells) {
            writer.Write(cell);
        }
    }
    writer.Save();
}

} // namespace opening
