#include "tests/docs/Pages.h"

#include "tests/support/Paths.h"
#include "text/Utf8.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace test {
namespace {

constexpr std::string_view fenceMark = "```";

std::string Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == text.npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(" \t") - first + 1));
}

} // namespace

std::vector<std::string> ClassPages() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() / "docs/zh")) {
        if (const std::string name = entry.path().stem().string(); name.starts_with("Cls")) {
            names.push_back(name);
        }
    }
    std::ranges::sort(names);
    return names;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> TableCells(const std::string& line) {
    std::vector<std::string> cells;
    if (!line.starts_with("|")) {
        return cells;
    }
    std::istringstream stream(line.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) {
        cells.push_back(Trimmed(cell));
    }
    return cells;
}

std::vector<std::string> PageMessages(const std::string& page) {
    std::vector<std::string> messages;
    for (const std::string& line : Lines(page)) {
        const std::vector<std::string> cells = TableCells(line);
        if (cells.empty() || cells[0].size() < 3 || cells[0].front() != '`' || cells[0].back() != '`') {
            continue;
        }
        const std::string message = cells[0].substr(1, cells[0].size() - 2);
        // A row of fields may hold several names or a range of them.
        if (message.find('`') == message.npos && !text::IsAscii(message)) {
            messages.push_back(message);
        }
    }
    return messages;
}

std::string WithoutNames(std::string_view message) {
    std::string plain;
    bool inside = false;
    for (const char c : message) {
        inside = inside && c != '}';
        if (!inside) {
            plain.push_back(c);
        }
        inside = inside || c == '{';
    }
    return plain;
}

std::vector<std::string> ConstantTexts(std::string_view message) {
    std::vector<std::string> texts;
    std::string rest = WithoutNames(message);
    for (std::size_t end = 0; end != rest.npos;) {
        end = rest.find("{}");
        if (std::string text = rest.substr(0, end); !text.empty()) {
            texts.push_back(std::move(text));
        }
        rest = end == rest.npos ? "" : rest.substr(end + 2);
    }
    return texts;
}

std::vector<Fence> Fences(const std::string& page) {
    std::vector<Fence> fences;
    bool inside = false;
    int number = 0;
    for (const std::string& line : Lines(page)) {
        ++number;
        if (line.starts_with(fenceMark)) {
            inside = !inside;
            if (inside) {
                fences.push_back({line.substr(fenceMark.size()), "", number});
            }
        } else if (inside) {
            fences.back().text.append(line).append("\n");
        }
    }
    return fences;
}

} // namespace test
