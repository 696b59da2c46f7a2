#include "import/report/Html.h"

#include <cstddef>
#include <utility>

namespace importing::report {

std::string Escaped(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped.append("&amp;");
            break;
        case '<':
            escaped.append("&lt;");
            break;
        case '>':
            escaped.append("&gt;");
            break;
        case '"':
            escaped.append("&quot;");
            break;
        case '\'':
            escaped.append("&#39;");
            break;
        case '\r':
            escaped.append("&#13;");
            break;
        default: {
            const bool isControl = (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || c == '\x7F';
            isControl ? escaped.append("\xEF\xBF\xBD") : escaped.append(1, c);
        }
        }
    }
    return escaped;
}

void Html::Element(std::string_view tag, std::string_view text, std::string_view id) {
    html_.append("<").append(tag);
    if (!id.empty()) {
        html_.append(" id=\"").append(id).append("\"");
    }
    html_.append(">").append(Escaped(text)).append("</").append(tag).append(">\n");
}

void Html::BeginTable(std::vector<Column> columns, std::string_view id) {
    columns_ = std::move(columns);
    html_.append("<table id=\"").append(id).append("\"><thead><tr>");
    for (const Column& column : columns_) {
        html_.append("<th scope=\"col\" class=\"").append(column.style).append("\">");
        html_.append(Escaped(column.heading)).append("</th>");
    }
    html_.append("</tr></thead><tbody>\n");
}

void Html::Row(const std::vector<std::string>& cells, std::string_view style) {
    html_.append("<tr class=\"").append(style).append("\">");
    for (std::size_t index = 0; index < columns_.size(); ++index) {
        const Column& column = columns_[index];
        html_.append("<td class=\"").append(column.style).append("\" data-heading=\"");
        html_.append(Escaped(column.heading)).append("\"><span>");
        html_.append(Escaped(cells.at(index))).append("</span></td>");
    }
    html_.append("</tr>\n");
}

void Html::EndTable() { html_.append("</tbody></table>\n"); }

} // namespace importing::report
