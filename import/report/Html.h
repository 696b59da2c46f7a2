#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace importing::report {

/// `text` as text or attribute value of HTML; control characters that HTML has no form of become U+FFFD.
std::string Escaped(std::string_view text);

/// An HTML page that is being written. What is called text is escaped here; tags and classes are the caller's own.
class Html {
public:
    void Raw(std::string_view html) { html_.append(html); }
    void Text(std::string_view text) { html_.append(Escaped(text)); }
    /// `<tag id="id">text</tag>`; without `id` when it is empty.
    void Element(std::string_view tag, std::string_view text, std::string_view id = {});

    /// A column of a table.
    struct Column {
        std::string_view heading;
        /// Right-aligned figures, or another class of the style sheet; may be empty.
        std::string_view style = {};
    };
    /// Begins a table, whose columns outlive it.
    void BeginTable(std::vector<Column> columns, std::string_view id);
    /// Adds a row, a cell a column. On a narrow page each cell stands under its heading.
    /// @param style the row's class of the style sheet; may be empty
    void Row(const std::vector<std::string>& cells, std::string_view style = {});
    void EndTable();

    const std::string& html() const noexcept { return html_; }

private:
    std::string html_;
    std::vector<Column> columns_;
};

} // namespace importing::report
