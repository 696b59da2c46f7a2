#include "import/reading/Csv.h"

#include "import/reading/UnreadableFile.h"

#include <algorithm>
#include <array>
#include <utility>

namespace importing {

char DetectSeparator(std::string_view text) noexcept {
    constexpr std::string_view separators = ",;\t";
    std::array<std::size_t, separators.size()> counts{};
    bool quoted = false;
    bool empty = true;
    for (const char c : text) {
        if (c == '"') {
            quoted = !quoted;
        }
        if (!quoted && (c == '\n' || c == '\r')) {
            if (!empty) {
                break;
            }
            continue;
        }
        empty = empty && (c == ' ' || c == '\t');
        if (const std::size_t index = separators.find(c); !quoted && index != std::string_view::npos) {
            ++counts[index];
        }
    }
    const auto most = std::ranges::max_element(counts);
    return *most == 0 ? ',' : separators[static_cast<std::size_t>(most - counts.begin())];
}

CsvTable::CsvTable(std::string text, char separator) : text_(std::move(text)), separator_(separator) {}

bool CsvTable::Next(Line& line) {
    if (position_ == text_.size()) {
        return false;
    }
    line.number = line_;
    line.hidden = false;
    std::size_t count = 0;
    bool more = true;
    while (more) {
        if (count == line.cells.size()) {
            line.cells.emplace_back();
        }
        Cell& cell = line.cells[count++];
        more = ReadField(cell.text);
        cell.kind = cell.text.empty() ? Cell::Kind::empty : Cell::Kind::text;
    }
    line.cells.resize(count);
    return true;
}

void CsvTable::Rewind() {
    position_ = 0;
    line_ = 1;
}

const std::vector<MergedCells>& CsvTable::Merged() const {
    static const std::vector<MergedCells> none;
    return none;
}

bool CsvTable::ReadField(std::string& field) {
    field.clear();
    if (position_ < text_.size() && text_[position_] == '"') {
        ReadQuoted(field);
    }
    // Behind a closing quote stands nothing in a sound file; what does stand there is kept, as spreadsheets do.
    const std::array<char, 3> ends = {separator_, '\n', '\r'};
    const std::size_t end = std::min(text_.find_first_of(ends.data(), position_, ends.size()), text_.size());
    field.append(text_, position_, end - position_);
    position_ = end;
    if (position_ == text_.size()) {
        return false;
    }
    if (text_[position_] == separator_) {
        ++position_;
        return true;
    }
    SkipLineEnd();
    return false;
}

void CsvTable::ReadQuoted(std::string& field) {
    const std::size_t firstLine = line_;
    ++position_;
    while (position_ < text_.size()) {
        const char c = text_[position_];
        if (c == '"') {
            ++position_;
            if (position_ == text_.size() || text_[position_] != '"') {
                return;
            }
            field.push_back('"');
            ++position_;
        } else if (c == '\r' || c == '\n') {
            SkipLineEnd();
            field.push_back('\n');
        } else {
            field.push_back(c);
            ++position_;
        }
    }
    throw UnreadableFile({message::quoteWithoutEnd, {std::to_string(firstLine)}});
}

void CsvTable::SkipLineEnd() {
    position_ += text_.compare(position_, 2, "\r\n") == 0 ? std::size_t{2} : std::size_t{1};
    ++line_;
}

} // namespace importing
