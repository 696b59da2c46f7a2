#include "import/reading/SheetTable.h"

#include "ModPub/Numbers.h"
#include "import/reading/SharedStrings.h"
#include "import/reading/UnreadableFile.h"
#include "import/reading/WholeNumber.h"

#include <charconv>

namespace importing {
namespace {

/// The largest sheet of the format: 16,384 columns, 1,048,576 rows.
constexpr std::size_t mostColumns = 16'384;
constexpr std::size_t mostLines = 1'048'576;

} // namespace

SheetTable::SheetTable(Archive& archive, const std::string& part, Shared shared)
    : archive_(archive), part_(part), shared_(shared), mostCells_(archive.bounds().cells) {
    reader_.emplace(archive_, part_);
}

void SheetTable::Rewind() {
    reader_.emplace(archive_, part_);
    merged_.clear();
    line_ = 0;
    cells_ = 0;
}

bool SheetTable::Next(Line& line) {
    for (auto event = reader_->Next(); event != PartReader::Event::none; event = reader_->Next()) {
        if (event != PartReader::Event::start) {
            continue;
        }
        if (reader_->Name() == "row") {
            ReadRow(line);
            return true;
        }
        if (reader_->Name() == "mergeCell") {
            ReadMerge(reader_->Attribute("ref"));
        }
    }
    return false;
}

void SheetTable::ReadRow(Line& line) {
    const std::string_view number = reader_->Attribute("r");
    line_ = number.empty() ? line_ + 1 : WholeNumber(number);
    if (line_ == 0 || line_ > mostLines) {
        Broken();
    }
    line.number = line_;
    line.hidden = reader_->IsTrue("hidden");
    std::size_t count = 0;
    std::size_t next = 0;
    for (auto event = reader_->Next(); event != PartReader::Event::end; event = reader_->Next()) {
        if (event == PartReader::Event::none) {
            Broken();
        }
        if (event == PartReader::Event::start) {
            if (reader_->Name() == "c") {
                ReadCell(line, next, count);
                next = count;
            } else {
                reader_->Skip();
            }
        }
    }
    line.cells.resize(count);
    cells_ += count;
    if (cells_ > mostCells_) {
        throw UnreadableFile({message::tooManyCells, {}});
    }
}

void SheetTable::ReadCell(Line& line, std::size_t next, std::size_t& count) {
    std::size_t column = next;
    if (const std::string_view name = reader_->Attribute("r"); !name.empty()) {
        const std::optional<Position> position = ReadPosition(name);
        if (!position) {
            Broken();
        }
        column = position->column;
    }
    if (column < next || column >= mostColumns) {
        Broken();
    }
    const std::size_t style = WholeNumber(reader_->Attribute("s"));
    type_ = reader_->Attribute("t");
    while (count <= column) {
        if (count == line.cells.size()) {
            line.cells.emplace_back();
        } else {
            line.cells[count].kind = Cell::Kind::empty;
            line.cells[count].text.clear();
        }
        ++count;
    }
    Cell& cell = line.cells[column];
    std::string formula;
    bool hasFormula = false;
    bool hasValue = false;
    std::string* into = nullptr;
    for (auto event = reader_->Next(); event != PartReader::Event::none; event = reader_->Next()) {
        if (event == PartReader::Event::start) {
            const std::string_view name = reader_->Name();
            if (name == "is") {
                hasValue = true;
                ReadStringItem(*reader_, cell.text);
            } else if (name == "v") {
                hasValue = true;
                into = &cell.text;
            } else if (name == "f") {
                hasFormula = true;
                into = &formula;
            } else {
                reader_->Skip();
            }
        } else if (event == PartReader::Event::text) {
            if (into != nullptr) {
                into->append(reader_->Text());
            }
        } else if (into != nullptr) {
            into = nullptr;
        } else if (reader_->Name() == "c") {
            break;
        }
    }
    if (hasFormula && (!hasValue || cell.text.empty())) {
        // A formula whose text is empty has a value of type "str".
        cell.kind = type_ == "str" && hasValue ? Cell::Kind::empty : Cell::Kind::noValue;
        cell.text = cell.kind == Cell::Kind::noValue ? "=" + formula : "";
    } else if (hasValue) {
        Interpret(cell, type_, style);
    }
}

void SheetTable::Interpret(Cell& cell, std::string_view type, std::size_t style) const {
    if (type == "s") {
        const std::size_t index = WholeNumber(cell.text);
        if (index >= shared_.strings.size()) {
            Broken();
        }
        cell.text = shared_.strings[index];
        cell.kind = Cell::Kind::text;
    } else if (type == "str" || type == "inlineStr") {
        if (type == "str") {
            DecodeEscapes(cell.text);
        }
        cell.kind = Cell::Kind::text;
    } else if (type == "b") {
        cell.kind = Cell::Kind::boolean;
        cell.text = cell.text == "1" ? "TRUE" : "FALSE";
    } else if (type == "e") {
        cell.kind = Cell::Kind::error;
    } else if (type == "d") {
        // ISO 8601, as the strict form writes dates.
        cell.kind = Cell::Kind::date;
        if (const std::size_t time = cell.text.find('T'); time != std::string::npos) {
            cell.text[time] = ' ';
            if (cell.text.substr(time).starts_with(" 00:00:00")) {
                cell.text.resize(time);
            }
        }
    } else {
        InterpretNumber(cell, style);
    }
    if (cell.kind == Cell::Kind::text && cell.text.empty()) {
        cell.kind = Cell::Kind::empty;
    }
}

void SheetTable::InterpretNumber(Cell& cell, std::size_t style) const {
    double number = 0;
    const char* const end = cell.text.data() + cell.text.size();
    const auto [rest, error] = std::from_chars(cell.text.data(), end, number);
    if (error != std::errc() || rest != end) {
        Broken();
    }
    if (style < shared_.dateStyles.size() && shared_.dateStyles[style]) {
        std::optional<std::string> date = SerialDate(number, shared_.dateSystem);
        cell.kind = date ? Cell::Kind::date : Cell::Kind::noDate;
        cell.text = date ? *std::move(date) : ModPub::NumberText(number);
        return;
    }
    cell.kind = Cell::Kind::number;
    cell.text = ModPub::NumberText(number);
}

std::optional<SheetTable::Position> SheetTable::ReadPosition(std::string_view name) {
    std::size_t column = 0;
    std::size_t letters = 0;
    while (letters < name.size() && letters < 4 && name[letters] >= 'A' && name[letters] <= 'Z') {
        column = column * 26 + static_cast<std::size_t>(name[letters++] - 'A' + 1);
    }
    const std::size_t line = WholeNumber(name.substr(letters));
    if (letters == 0 || column > mostColumns || line == 0 || line > mostLines) {
        return std::nullopt;
    }
    return Position{column - 1, line};
}

void SheetTable::ReadMerge(std::string_view block) {
    const std::size_t colon = block.find(':');
    const std::optional<Position> first = ReadPosition(block.substr(0, colon));
    const std::optional<Position> last =
        colon == std::string_view::npos ? first : ReadPosition(block.substr(colon + 1));
    if (!first || !last) {
        Broken();
    }
    merged_.push_back({first->column, first->line, last->column, last->line});
}

void SheetTable::Broken() const { throw UnreadableFile({message::partBroken, {part_}}); }

} // namespace importing
