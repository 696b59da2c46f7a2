#include "ModPub/GetNodeText.h"

namespace ModPub {

std::string GetNodeText(const host::DOMNode& node, std::string_view path) {
    const host::DOMNodePtr found = node.SelectSingleNode(path);
    return found ? found->Text() : std::string();
}

} // namespace ModPub
