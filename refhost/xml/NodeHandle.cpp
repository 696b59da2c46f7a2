#include "refhost/xml/NodeHandle.h"

#include "host/Error.h"
#include "refhost/xml/Writer.h"

namespace refhost::xml {
namespace {

std::string LocalName(std::string_view name) {
    const std::size_t colon = name.find(':');
    return std::string(colon == std::string_view::npos ? name : name.substr(colon + 1));
}

[[noreturn]] void Refuse(const char* message) { throw host::Error(host::error_number::unspecified, message); }

/// How many there are from `first` on.
template <class Linked> std::size_t Length(const Linked* first) {
    std::size_t count = 0;
    for (; first != nullptr; first = first->next)
        ++count;
    return count;
}

/// A node other than an attribute.
class NodeHandle final : public host::DOMNode {
public:
    NodeHandle(Selector& selector, Node& node) : selector_(selector), node_(node) {}

    std::string BaseName() const override {
        switch (node_.kind) {
        case NodeKind::element:
            return LocalName(node_.AsElement().name);
        case NodeKind::instruction:
            return LocalName(static_cast<const Instruction&>(node_).target);
        default:
            return {};
        }
    }

    std::string NodeName() const override {
        switch (node_.kind) {
        case NodeKind::document:
            return "#document";
        case NodeKind::element:
            return node_.AsElement().name;
        case NodeKind::text:
            return "#text";
        case NodeKind::cdata:
            return "#cdata-section";
        case NodeKind::comment:
            return "#comment";
        case NodeKind::instruction:
            return static_cast<const Instruction&>(node_).target;
        }
        return {};
    }

    bool IsElement() const override { return node_.kind == NodeKind::element; }
    std::string Text() const override { return TextOf(node_); }

    void SetText(std::string_view text) override {
        if (node_.kind == NodeKind::document)
            Refuse("The text of a document cannot be set.");
        selector_.tree().SetText(node_, text);
    }

    std::string Xml() const override { return ToXml(selector_.tree(), node_); }

    host::DOMNodePtr SelectSingleNode(std::string_view path) const override {
        return MakeHandle(selector_, selector_.First(node_, path));
    }

    std::optional<std::string> TextAt(std::string_view path) const override {
        // The name of a child, as nearly every path is.
        const char* const name = selector_.tree().PlainName(path);
        if (name == nullptr)
            return DOMNode::TextAt(path);
        for (const Node* child = node_.IsParent() ? node_.AsElement().first : nullptr; child != nullptr;
             child = child->next) {
            if (child->kind == NodeKind::element && child->AsElement().name == name)
                return TextOf(*child);
        }
        return std::nullopt;
    }

    host::DOMNodeList SelectNodes(std::string_view path) const override {
        return MakeHandles(selector_, selector_.All(node_, path));
    }

    host::DOMNodeList ChildNodes() const override {
        host::DOMNodeList children;
        children.reserve(Length(node_.IsParent() ? node_.AsElement().first : nullptr));
        for (Node* child = node_.IsParent() ? node_.AsElement().first : nullptr; child != nullptr; child = child->next)
            children.push_back(std::make_unique<NodeHandle>(selector_, *child));
        return children;
    }

    void VisitChildren(const std::function<void(const host::DOMNode& child)>& visit) const override {
        for (Node* child = node_.IsParent() ? node_.AsElement().first : nullptr; child != nullptr; child = child->next)
            visit(NodeHandle(selector_, *child));
    }

    std::optional<std::string> GetAttribute(std::string_view name) const override {
        const Attribute* found = IsElement() ? Tree::FindAttribute(node_.AsElement(), name) : nullptr;
        return found == nullptr ? std::nullopt : std::optional<std::string>(found->Value());
    }

    std::optional<std::string> AttributeAt(std::size_t index) const override {
        const Attribute* at = IsElement() ? node_.AsElement().attributes : nullptr;
        for (; at != nullptr && index != 0; --index)
            at = at->next;
        return at == nullptr ? std::nullopt : std::optional<std::string>(at->Value());
    }

    std::vector<host::DOMAttribute> Attributes() const override {
        std::vector<host::DOMAttribute> attributes;
        attributes.reserve(Length(IsElement() ? node_.AsElement().attributes : nullptr));
        for (const Attribute* at = IsElement() ? node_.AsElement().attributes : nullptr; at != nullptr; at = at->next)
            attributes.push_back({at->name, std::string(at->Value())});
        return attributes;
    }

    void SetAttribute(std::string_view name, std::string_view value) override {
        if (!IsElement())
            Refuse("Only elements have attributes.");
        selector_.tree().SetAttribute(node_.AsElement(), name, value);
    }

    void AppendChild(host::DOMNode& child) override {
        auto* const handle = dynamic_cast<NodeHandle*>(&child);
        if (handle == nullptr || &handle->selector_ != &selector_)
            Refuse("Only a node of the same document can be appended.");
        if (!node_.IsParent() || handle->node_.kind == NodeKind::document)
            Refuse("This node cannot have such a child.");
        selector_.tree().Append(node_.AsElement(), handle->node_);
    }

private:
    Selector& selector_;
    Node& node_;
};

class AttributeHandle final : public host::DOMNode {
public:
    AttributeHandle(Tree& tree, Element& element, const char* name) : tree_(tree), element_(element), name_(name) {}

    std::string BaseName() const override { return LocalName(name_); }
    std::string NodeName() const override { return name_; }
    bool IsElement() const override { return false; }
    std::string Text() const override { return std::string(Found().Value()); }
    void SetText(std::string_view text) override { tree_.SetAttribute(element_, name_, text); }
    std::string Xml() const override { return ToXml(Found()); }
    host::DOMNodePtr SelectSingleNode(std::string_view) const override { return nullptr; }
    host::DOMNodeList SelectNodes(std::string_view) const override { return {}; }
    host::DOMNodeList ChildNodes() const override { return {}; }
    std::optional<std::string> GetAttribute(std::string_view) const override { return std::nullopt; }
    std::optional<std::string> AttributeAt(std::size_t) const override { return std::nullopt; }
    std::vector<host::DOMAttribute> Attributes() const override { return {}; }
    void SetAttribute(std::string_view, std::string_view) override { Refuse("Only elements have attributes."); }
    void AppendChild(host::DOMNode&) override { Refuse("An attribute cannot have such a child."); }

private:
    /// Looked for each time: what a copy shares with its origin moves when it is written.
    const Attribute& Found() const { return *Tree::FindAttribute(element_, name_); }

    Tree& tree_;
    Element& element_;
    const char* name_;
};

} // namespace

host::DOMNodePtr MakeHandle(Selector& selector, const Selected& selected) {
    if (selected.node == nullptr)
        return nullptr;
    // A handle sees what stands below its node.
    if (selector.tree().Folds(*selected.node))
        selector.tree().Unfold();
    // The tree is ours to change; only paths look at it as constant.
    auto& node = const_cast<Node&>(*selected.node);
    if (selected.attribute != nullptr)
        return std::make_unique<AttributeHandle>(selector.tree(), node.AsElement(), selected.attribute->name);
    return std::make_unique<NodeHandle>(selector, node);
}

host::DOMNodeList MakeHandles(Selector& selector, const std::vector<Selected>& selected) {
    host::DOMNodeList handles;
    handles.reserve(selected.size());
    for (const Selected& one : selected)
        handles.push_back(MakeHandle(selector, one));
    return handles;
}

} // namespace refhost::xml
