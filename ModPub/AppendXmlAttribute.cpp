#include "ModPub/AppendXmlAttribute.h"

namespace ModPub {

void AppendXmlAttribute(std::string& xml, std::string_view name, std::string_view value) {
    xml.append(" ").append(name).append("=\"");
    for (const char c : value) {
        switch (c) {
        case '&':
            xml.append("&amp;");
            break;
        case '<':
            xml.append("&lt;");
            break;
        case '"':
            xml.append("&quot;");
            break;
        case '\t':
            xml.append("&#9;");
            break;
        case '\n':
            xml.append("&#10;");
            break;
        case '\r':
            xml.append("&#13;");
            break;
        default:
            xml.push_back(c);
        }
    }
    xml.append("\"");
}

} // namespace ModPub
