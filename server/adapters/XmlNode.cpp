#include "server/adapters/XmlNode.h"

#include "server/com/BString.h"
#include "server/com/Changes.h"
#include "server/com/Utf16.h"
#include "server/com/VariantHolder.h"

#include <algorithm>

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

/// Whether a path is a name and no more, without a prefix.
bool IsPlainName(std::string_view path) noexcept {
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";
    const auto starts = [&](char c) {
        return static_cast<unsigned char>(c) >= 0x80 || letters.find(c) != std::string_view::npos;
    };
    const auto continues = [&](char c) { return starts(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; };
    return !path.empty() && starts(path.front()) && std::ranges::all_of(path, continues);
}

std::wstring NameOf(const ComPtr<IXMLDOMNode>& node) {
    BString name;
    ThrowIfFailed(node->get_nodeName(name.Put()));
    return std::wstring(name.View());
}

/// Whether a node is an element whose name is in no namespace.
bool IsPlainElement(const ComPtr<IXMLDOMNode>& node) {
    DOMNodeType type = NODE_INVALID;
    ThrowIfFailed(node->get_nodeType(&type));
    if (type != NODE_ELEMENT)
        return false;
    BString space;
    ThrowIfFailed(node->get_namespaceURI(space.Put()));
    return space.View().empty();
}

ComPtr<IXMLDOMNode> FirstChild(IXMLDOMNode& parent) {
    ComPtr<IXMLDOMNode> child;
    ThrowIfFailed(parent.get_firstChild(child.Put()));
    return child;
}

ComPtr<IXMLDOMNode> NextSibling(const ComPtr<IXMLDOMNode>& node) {
    ComPtr<IXMLDOMNode> next;
    ThrowIfFailed(node->get_nextSibling(next.Put()));
    return next;
}

/// Nothing where the node is of a kind without attributes.
ComPtr<IXMLDOMNamedNodeMap> AttributesOf(const ComPtr<IXMLDOMNode>& node) {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    ThrowIfFailed(node->get_attributes(attributes.Put()));
    return attributes;
}

} // namespace

void ChildElements::Begin(IXMLDOMNode& parent) {
    if (begun_ && changes_ == Changes())
        return;
    *this = {};
    next_ = FirstChild(parent);
    changes_ = Changes();
    begun_ = true;
}

ComPtr<IXMLDOMNode> ChildElements::Find(IXMLDOMNode& parent, std::wstring_view name) {
    Begin(parent);
    if (const auto known = first_.find(name); known != first_.end())
        return known->second;
    while (next_) {
        const ComPtr<IXMLDOMNode> child = next_;
        std::wstring own = NameOf(child);
        // Texts and comments are named "#text" and "#comment".
        const bool first = !own.starts_with(L'#') && !first_.contains(own) && IsPlainElement(child);
        next_ = NextSibling(child);
        if (!first)
            continue;
        const bool wanted = own == name;
        first_.emplace(std::move(own), child);
        if (wanted)
            return child;
    }
    return {};
}

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
    NoteChange();
    // Wine's documents free the children that the text replaces, whoever still holds them.
    children_ = {};
    ThrowIfFailed(node_->put_text(wide.Get()));
}

std::string XmlNode::Xml() const { return TextOf(node_, &IXMLDOMNode::get_xml); }

host::DOMNodePtr XmlNode::SelectSingleNode(std::string_view path) const {
    if (IsPlainName(path))
        return WrapNode(children_.Find(*node_.operator->(), ToUtf16(path)));
    ComPtr<IXMLDOMNode> found;
    const BString query(ToUtf16(path));
    ThrowIfFailed(node_->selectSingleNode(query.Get(), found.Put()));
    return WrapNode(std::move(found));
}

host::DOMNodeList XmlNode::SelectNodes(std::string_view path) const {
    if (IsPlainName(path)) {
        const std::wstring wanted = ToUtf16(path);
        host::DOMNodeList children;
        for (ComPtr<IXMLDOMNode> child = FirstChild(*node_.operator->()); child; child = NextSibling(child)) {
            if (NameOf(child) == wanted && IsPlainElement(child))
                children.push_back(WrapNode(child));
        }
        return children;
    }
    const BString query(ToUtf16(path));
    ComPtr<IXMLDOMNodeList> found;
    ThrowIfFailed(node_->selectNodes(query.Get(), found.Put()));
    return WrapNodes(*found.Get());
}

std::optional<std::string> XmlNode::TextAt(std::string_view path) const {
    if (!IsPlainName(path))
        return DOMNode::TextAt(path);
    const ComPtr<IXMLDOMNode> child = children_.Find(*node_.operator->(), ToUtf16(path));
    return child ? std::optional(TextOf(child, &IXMLDOMNode::get_text)) : std::nullopt;
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
    const ComPtr<IXMLDOMNamedNodeMap> attributes = AttributesOf(node_);
    ComPtr<IXMLDOMNode> attribute;
    if (attributes)
        ThrowIfFailed(attributes->get_item(static_cast<long>(index), attribute.Put()));
    if (!attribute)
        return std::nullopt;
    return TextOf(attribute, &IXMLDOMNode::get_text);
}

std::vector<host::DOMAttribute> XmlNode::Attributes() const {
    const ComPtr<IXMLDOMNamedNodeMap> found = AttributesOf(node_);
    LONG count = 0;
    if (found)
        ThrowIfFailed(found->get_length(&count));
    std::vector<host::DOMAttribute> attributes;
    for (LONG index = 0; index < count; ++index) {
        ComPtr<IXMLDOMNode> attribute;
        ThrowIfFailed(found->get_item(index, attribute.Put()));
        attributes.push_back(
            {TextOf(attribute, &IXMLDOMNode::get_nodeName), TextOf(attribute, &IXMLDOMNode::get_text)});
    }
    return attributes;
}

void XmlNode::SetAttribute(std::string_view name, std::string_view value) {
    const BString wide(ToUtf16(name));
    const VariantHolder text(value);
    ThrowIfFailed(node_.As<IXMLDOMElement>()->setAttribute(wide.Get(), text.Get()));
}

void XmlNode::AppendChild(host::DOMNode& child) {
    NoteChange();
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
