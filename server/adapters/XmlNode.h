#pragma once

#include "host/DOMDocument.h"
#include "server/adapters/Msxml.h"
#include "server/com/ComPtr.h"

#include <cstdint>
#include <map>
#include <string>

namespace server {

/// The child elements of a node by their names, the first one of each, as far as they have been looked for. The
/// documents' own path engine takes longer, and Wine's finds no names beyond ASCII.
class ChildElements {
public:
    /// The first child element of `parent` with this name that is in no namespace, what a path means by a name; or
    /// null.
    ComPtr<IXMLDOMNode> Find(IXMLDOMNode& parent, std::wstring_view name);

private:
    void Begin(IXMLDOMNode& parent);

    /// `Changes()` when the search began: what was found holds as long as there are no more.
    std::uint64_t changes_ = 0;
    bool begun_ = false;
    /// Where the search goes on.
    ComPtr<IXMLDOMNode> next_;
    std::map<std::wstring, ComPtr<IXMLDOMNode>, std::less<>> first_;
};

/// A node of an MSXML document.
class XmlNode final : public host::DOMNode {
public:
    explicit XmlNode(ComPtr<IXMLDOMNode> node) noexcept : node_(std::move(node)) {}

    const ComPtr<IXMLDOMNode>& node() const noexcept { return node_; }
    /// Puts another node behind this handle, or none.
    void Hold(ComPtr<IXMLDOMNode> node) noexcept {
        node_ = std::move(node);
        children_ = {};
    }

    std::string BaseName() const override;
    std::string NodeName() const override;
    bool IsElement() const override;
    std::string Text() const override;
    void SetText(std::string_view text) override;
    std::string Xml() const override;
    host::DOMNodePtr SelectSingleNode(std::string_view path) const override;
    host::DOMNodeList SelectNodes(std::string_view path) const override;
    std::optional<std::string> TextAt(std::string_view path) const override;
    host::DOMNodeList ChildNodes() const override;
    std::optional<std::string> GetAttribute(std::string_view name) const override;
    std::optional<std::string> AttributeAt(std::size_t index) const override;
    std::vector<host::DOMAttribute> Attributes() const override;
    void SetAttribute(std::string_view name, std::string_view value) override;
    void AppendChild(host::DOMNode& child) override;

private:
    ComPtr<IXMLDOMNode> node_;
    mutable ChildElements children_;
};

/// The COM object behind `node`; null for no node. Throws error 13 for a node that is not MSXML's.
ComPtr<IXMLDOMNode> ComNode(const host::DOMNode* node);

/// The node as `host::DOMNode`; nullptr for null.
host::DOMNodePtr WrapNode(ComPtr<IXMLDOMNode> node);

/// Every node of `list`, in order.
host::DOMNodeList WrapNodes(IXMLDOMNodeList& list);

} // namespace server
