#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the documents say, as the tests read it.
namespace test {

/// The names of the class pages, without folder and ending: one page a class in docs/zh and docs/en.
std::vector<std::string> ClassPages();

/// The messages of a page: the first cell of each table row that is one code span holding more than ASCII, in order.
/// `{…}` in them stands for a value.
std::vector<std::string> PageMessages(const std::string& page);

/// The message with every placeholder emptied, the same in both languages: "单据{}导入失败：{}".
std::string WithoutNames(std::string_view message);

/// The constant texts around the placeholders of a message; none is empty.
std::vector<std::string> ConstantTexts(std::string_view message);

/// A fenced block of a page.
struct Fence {
    /// What stands behind the opening fence: "sh", "sh exit=1", "text", "xml".
    std::string info;
    std::string text;
    /// Line of the opening fence, from 1.
    int line = 0;
};

/// The fenced blocks of a page, in order.
std::vector<Fence> Fences(const std::string& page);

/// The cells of a table row, trimmed; empty for a line that is none. Code spans may hold no "|".
std::vector<std::string> TableCells(const std::string& line);

/// The lines of a text, without their ends.
std::vector<std::string> Lines(const std::string& text);

} // namespace test
