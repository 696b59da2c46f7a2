#include "ModPub/GetNodeText.h"

#include <optional>
#include <utility>

namespace ModPub {

std::string GetNodeText(const host::DOMNode& node, std::string_view path) {
    std::optional<std::string> text = node.TextAt(path);
    return text ? *std::move(text) : std::string();
}

} // namespace ModPub
