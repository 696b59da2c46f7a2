#include "ModPub/XmlText.h"

#include <array>

namespace ModPub {
namespace {

/// What stands for each byte below 0x80 in XML text; empty for a byte that stands for itself.
using Escapes = std::array<std::string_view, 128>;

constexpr Escapes CommonEscapes() {
    Escapes escapes{};
    for (std::size_t control = 0; control < 0x20; ++control)
        escapes[control] = "\xEF\xBF\xBD";
    escapes['\t'] = {};
    escapes['\n'] = {};
    escapes['\r'] = "&#xD;";
    escapes['&'] = "&amp;";
    escapes['<'] = "&lt;";
    escapes['>'] = "&gt;";
    return escapes;
}

constexpr Escapes textEscapes = CommonEscapes();
constexpr Escapes attributeEscapes = [] {
    Escapes escapes = CommonEscapes();
    escapes['\t'] = "&#x9;";
    escapes['\n'] = "&#xA;";
    escapes['"'] = "&quot;";
    return escapes;
}();

void AppendEscaped(std::string& out, std::string_view text, const Escapes& escapes) {
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >= escapes.size() || escapes[byte].empty())
            continue;
        out.append(text, plain, at - plain);
        out.append(escapes[byte]);
        plain = at + 1;
    }
    out.append(text, plain);
}

} // namespace

void AppendXmlAttribute(std::string& xml, std::string_view name, std::string_view value) {
    xml.append(" ").append(name).append("=\"");
    AppendEscaped(xml, value, attributeEscapes);
    xml.push_back('"');
}

void AppendXmlText(std::string& xml, std::string_view text) { AppendEscaped(xml, text, textEscapes); }

} // namespace ModPub
