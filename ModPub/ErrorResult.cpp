#include "ModPub/ErrorResult.h"

#include "ModPub/Trap.h"

#include <string_view>

namespace ModPub {
namespace {

void AppendAttribute(std::string& xml, std::string_view name, std::string_view value) {
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
        default:
            xml.push_back(c);
        }
    }
    xml.append("\"");
}

std::string WrittenHere(const host::Error& error) {
    std::string xml = "<error";
    AppendAttribute(xml, "code", std::to_string(error.number()));
    AppendAttribute(xml, "dsc", error.description());
    return xml.append("/>");
}

} // namespace

std::string ErrorResult(host::Environment& environment) noexcept {
    try {
        const host::Error error = PendingError();
        try {
            return environment.GetEaiHelper().MakeErrorResult(std::to_string(error.number()), error.description(), {});
        } catch (...) {
            return WrittenHere(error);
        }
    } catch (...) {
        return {};
    }
}

} // namespace ModPub
