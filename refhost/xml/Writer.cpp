#include "refhost/xml/Writer.h"

#include <array>

namespace refhost::xml {
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

std::string_view DeclarationText(Tree::Declaration declaration) {
    switch (declaration) {
    case Tree::Declaration::none:
        return {};
    case Tree::Declaration::plain:
        return "<?xml version=\"1.0\"?>";
    case Tree::Declaration::standaloneYes:
        return "<?xml version=\"1.0\" standalone=\"yes\"?>";
    case Tree::Declaration::standaloneNo:
        return "<?xml version=\"1.0\" standalone=\"no\"?>";
    }
    return {};
}

/// Writes what stands before the node's children; all of it for a node without any.
void AppendStart(std::string& out, const Tree& tree, const Node& node) {
    switch (node.kind) {
    case NodeKind::document:
        out.append(DeclarationText(tree.declaration));
        break;
    case NodeKind::element: {
        const Element& element = node.AsElement();
        out.append("<").append(element.name);
        for (const Attribute* at = element.attributes; at != nullptr; at = at->next) {
            AppendAttribute(out, at->name, at->Value());
        }
        out.append(element.first == nullptr ? "/>" : ">");
        break;
    }
    case NodeKind::text:
        AppendEscaped(out, node.Data(), textEscapes);
        break;
    case NodeKind::cdata:
        out.append("<![CDATA[").append(node.Data()).append("]]>");
        break;
    case NodeKind::comment:
        out.append("<!--").append(node.Data()).append("-->");
        break;
    case NodeKind::instruction:
        out.append("<?").append(static_cast<const Instruction&>(node).target);
        if (node.size != 0)
            out.append(" ").append(node.Data());
        out.append("?>");
        break;
    }
}

void AppendEnd(std::string& out, const Node& node) {
    if (node.kind == NodeKind::element && node.AsElement().first != nullptr)
        out.append("</").append(node.AsElement().name).append(">");
}

} // namespace

std::string ToXml(const Tree& tree, const Node& node) {
    std::string out;
    // The arena is larger than the text by what the nodes themselves take; memory never touched costs nothing.
    if (node.kind == NodeKind::document)
        out.reserve(tree.BytesUsed());
    const Node* at = &node;
    AppendStart(out, tree, *at);
    while (true) {
        if (at->IsParent() && at->AsElement().first != nullptr) {
            at = at->AsElement().first;
        } else {
            while (at != &node && at->next == nullptr) {
                at = at->parent;
                AppendEnd(out, *at);
            }
            if (at == &node)
                return out;
            at = at->next;
        }
        AppendStart(out, tree, *at);
    }
}

std::string ToXml(const Attribute& attribute) {
    std::string out;
    AppendAttribute(out, attribute.name, attribute.Value());
    return out.substr(1);
}

void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
    out.append(" ").append(name).append("=\"");
    AppendEscaped(out, value, attributeEscapes);
    out.push_back('"');
}

std::string TextOf(const Node& node) {
    if (!node.IsParent())
        return std::string(node.Data());
    std::string out;
    for (const Node* at = &node; at != nullptr; at = NextInOrder(*at, node)) {
        if (at->kind == NodeKind::text || at->kind == NodeKind::cdata)
            out.append(at->Data());
    }
    return out;
}

} // namespace refhost::xml
