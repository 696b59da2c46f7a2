#include "ModPub/GetNodeText.h"

namespace ModPub {

std::string GetNodeText(const host::DOMNode& node, std::string_view path) {
    return node.TextAt(path).value_or(std::string());
}

} // namespace ModPub
