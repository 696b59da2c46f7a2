#include "server/adapters/XmlNode.h"

#include "server/com/BString.h"
#include "server/com/Utf16.h"
#include "server/com/VariantHolder.h"

namespace server {

namespace {

/// The text that `getter` hands out.
std::string TextOf(const ComPtr<IXMLDOMNode>& node, HRESULT (STDMETHODCALLTYPE IXMLDOMNode::*getter)(BSTR*)) {
    if (!node)
        RaiseObjectNotSet();
    BString text;
    ThrowIfFailed((node.Get()->*getter)(text.Put()));
    return ToUtf8(text.View());
}

} // namespace

std::string XmlNode::BaseName() const { return TextOf(node_, &IXMLDOMNode::get_baseName); }
std::string XmlNode::NodeName() const { return TextOf(node_, &IXMLDOMNode::get_nodeName); }

bool XmlNode::IsElement() const {
    DOMNodeType type = NODE_INVALID;
    ThrowIfFailed(node_->get_nodeType(&type));
    return type == NODE_ELEMENT;
}

std::string XmlNode::Text() const { return TextOf(node_, &IXMLDOMNode::get_text); }

void XmlNode::SetText(std::string_view text) {
    const BString wide(ToUtf16(text));
    ThrowIfFailed(node_->put_text(wide.Get()));
}

std::string XmlNode::Xml() const { return TextOf(node_, &IXMLDOMNode::get_xml); }

host::DOMNodePtr XmlNode::SelectSingleNode(std::string_view path) const {
    const BString query(ToUtf16(path));
    ComPtr<IXMLDOMNode> found;
    ThrowIfFailed(node_->selectSingleNode(query.Get(), found.Put()));
    return WrapNode(std::move(found));
}

host::DOMNodeList XmlNode::SelectNodes(std::string_view path) const {
    const BString query(ToUtf16(path));
    ComPtr<IXMLDOMNodeList> found;
    ThrowIfFailed(node_->selectNodes(query.Get(), found.Put()));
    return WrapNodes(*found.Get());
}

host::DOMNodeList XmlNode::ChildNodes() const {
    ComPtr<IXMLDOMNodeList> children;
    ThrowIfFailed(node_->get_childNodes(children.Put()));
    return WrapNodes(*children.Get());
}

std::optional<std::string> XmlNode::GetAttribute(std::string_view name) const {
    const BString wide(ToUtf16(name));
    VariantHolder value;
    ThrowIfFailed(node_.As<IXMLDOMElement>()->getAttribute(wide.Get(), value.Put()));
    if (V_VT(&value.Get()) == VT_NULL)
        return std::nullopt;
    return ToText(value.Get());
}

std::optional<std::string> XmlNode::AttributeAt(std::size_t index) const {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    ThrowIfFailed(node_->get_attributes(attributes.Put()));
    ComPtr<IXMLDOMNode> attribute;
    if (attributes)
        ThrowIfFailed(attributes->get_item(static_cast<long>(index), attribute.Put()));
    if (!attribute)
        return std::nullopt;
    return TextOf(attribute, &IXMLDOMNode::get_text);
}

void XmlNode::SetAttribute(std::string_view name, std::string_view value) {
    const BString wide(ToUtf16(name));
    const VariantHolder text(value);
    ThrowIfFailed(node_.As<IXMLDOMElement>()->setAttribute(wide.Get(), text.Get()));
}

void XmlNode::AppendChild(host::DOMNode& child) {
    ComPtr<IXMLDOMNode> appended;
    ThrowIfFailed(node_->appendChild(ComNode(&child).Get(), appended.Put()));
}

ComPtr<IXMLDOMNode> ComNode(const host::DOMNode* node) {
    if (!node)
        return {};
    const auto* own = dynamic_cast<const XmlNode*>(node);
    if (!own)
        RaiseTypeMismatch();
    return own->node();
}

host::DOMNodePtr WrapNode(ComPtr<IXMLDOMNode> node) {
    return node ? std::make_unique<XmlNode>(std::move(node)) : nullptr;
}

host::DOMNodeList WrapNodes(IXMLDOMNodeList& list) {
    host::DOMNodeList nodes;
    for (;;) {
        ComPtr<IXMLDOMNode> next;
        ThrowIfFailed(list.nextNode(next.Put()));
        if (!next)
            return nodes;
        nodes.push_back(WrapNode(std::move(next)));
    }
}

} // namespace server
