#include "refhost/xml/Writer.h"

#include "ModPub/XmlText.h"
#include "refhost/xml/Declarations.h"

#include <vector>

namespace refhost::xml {
namespace {

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
/// @param above declarations that an element needs beside its own attributes
void AppendStart(std::string& out, const Tree& tree, const Node& node, const std::vector<Declaration>& above = {}) {
    switch (node.kind) {
    case NodeKind::document:
        out.append(DeclarationText(tree.declaration));
        break;
    case NodeKind::element: {
        const Element& element = node.AsElement();
        out.append("<").append(element.name);
        for (const auto& [prefix, uri] : above) {
            ModPub::AppendXmlAttribute(out, prefix.empty() ? "xmlns" : "xmlns:" + std::string(prefix), uri);
        }
        for (const Attribute* at = element.attributes; at != nullptr; at = at->next) {
            ModPub::AppendXmlAttribute(out, at->name, at->Value());
        }
        out.append(element.first == nullptr ? "/>" : ">");
        break;
    }
    case NodeKind::text:
        ModPub::AppendXmlText(out, node.Data());
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
    AppendStart(out, tree, *at,
                node.kind == NodeKind::element ? NeededFromAbove(node.AsElement()) : std::vector<Declaration>());
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
    ModPub::AppendXmlAttribute(out, attribute.name, attribute.Value());
    return out.substr(1);
}

std::string TextOf(const Node& node) {
    if (!node.IsParent())
        return std::string(node.Data());
    if (const Node* const only = node.AsElement().first;
        only == nullptr || (only->next == nullptr && !only->IsParent())) {
        const bool isText = only != nullptr && (only->kind == NodeKind::text || only->kind == NodeKind::cdata);
        return isText ? std::string(only->Data()) : std::string();
    }
    std::string out;
    for (const Node* at = &node; at != nullptr; at = NextInOrder(*at, node)) {
        if (at->kind == NodeKind::text || at->kind == NodeKind::cdata)
            out.append(at->Data());
    }
    return out;
}

} // namespace refhost::xml
