#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

class DOMNode;
using DOMNodePtr = std::unique_ptr<DOMNode>;
using DOMNodeList = std::vector<DOMNodePtr>;

/// An attribute of an element: its name with its prefix, and its value.
struct DOMAttribute {
    std::string name;
    std::string value;
};

/// A handle on a node of a document, as MSXML 3 offers it. It is valid as long as its document object lives and is
/// not loaded again. Every member may throw `Error` with MSXML's number and message.
class DOMNode {
public:
    virtual ~DOMNode() = default;

    /// The name without its prefix (MSXML's `baseName`); empty for a text node.
    virtual std::string BaseName() const = 0;
    /// The name with its prefix (MSXML's `nodeName`), "#text" for a text node.
    virtual std::string NodeName() const = 0;
    /// Whether the node is an element.
    virtual bool IsElement() const = 0;

    /// The text of the node and of all its descendants.
    virtual std::string Text() const = 0;
    /// Replaces the node's content by one text; the empty text leaves no content.
    virtual void SetText(std::string_view text) = 0;
    /// The node as XML text, in MSXML 3's form.
    virtual std::string Xml() const = 0;

    /// The first node that `path` (XPath) selects under this node, or nullptr. Throws for an invalid path.
    virtual DOMNodePtr SelectSingleNode(std::string_view path) const = 0;
    /// All nodes that `path` (XPath) selects under this node, in document order. Throws for an invalid path.
    virtual DOMNodeList SelectNodes(std::string_view path) const = 0;
    /// The text of the first node that `path` selects under this node; nothing where there is none. Throws likewise.
    virtual std::optional<std::string> TextAt(std::string_view path) const {
        const DOMNodePtr found = SelectSingleNode(path);
        return found ? std::optional(found->Text()) : std::nullopt;
    }
    /// All child nodes, text nodes included, in document order.
    virtual DOMNodeList ChildNodes() const = 0;
    /// Hands the child nodes to `visit` in the same order; each handle is valid within its call alone.
    virtual void VisitChildren(const std::function<void(const DOMNode& child)>& visit) const {
        for (const DOMNodePtr& child : ChildNodes()) {
            visit(*child);
        }
    }

    /// The value of the attribute `name`, or nothing when the element has none (a Null Variant in MSXML).
    virtual std::optional<std::string> GetAttribute(std::string_view name) const = 0;
    /// The value of the attribute at position `index`, counted from 0, or nothing when there is none.
    virtual std::optional<std::string> AttributeAt(std::size_t index) const = 0;
    /// All attributes, in the document's order; none where the node is no element.
    virtual std::vector<DOMAttribute> Attributes() const = 0;
    /// Sets or adds the attribute `name`. Throws for a text that is no name.
    virtual void SetAttribute(std::string_view name, std::string_view value) = 0;

    /// Moves `child`, a node of the same document, behind this node's last child.
    virtual void AppendChild(DOMNode& child) = 0;
};

/// An XML document (MSXML's version-independent `DOMDocument`). Loading never reaches out to files or the network.
class DOMDocument {
public:
    virtual ~DOMDocument() = default;

    /// Replaces the content by the document in `xml` (UTF-8; an encoding named in the declaration is ignored).
    /// Returns false, with the document empty, when the text is not well-formed.
    virtual bool LoadXML(std::string_view xml) = 0;
    /// Why the latest `LoadXML` failed: "line N: " and the parser's words. Empty after one that succeeded.
    virtual std::string LoadError() const = 0;
    /// The root element, or nullptr of an empty document.
    virtual DOMNodePtr DocumentElement() const = 0;
    /// The whole document as XML text, in MSXML 3's form.
    virtual std::string Xml() const = 0;

    /// As the members of `DOMNode`, from the document itself.
    virtual DOMNodePtr SelectSingleNode(std::string_view path) const = 0;
    virtual DOMNodeList SelectNodes(std::string_view path) const = 0;
    /// The values of the attribute `name` of all elements that `path` selects, in document order; the empty text of one
    /// that has no such attribute. Throws likewise.
    virtual std::vector<std::string> AttributesAt(std::string_view path, std::string_view name) const {
        std::vector<std::string> values;
        for (const DOMNodePtr& node : SelectNodes(path)) {
            values.push_back(node->GetAttribute(name).value_or(""));
        }
        return values;
    }

    /// Creates an element of this document that stands nowhere yet. Throws for a text that is no name and for a prefix
    /// that the document does not declare.
    virtual DOMNodePtr CreateElement(std::string_view name) = 0;
    /// The same for a name whose prefix, declared in the document, stands for the namespace `uri`.
    virtual DOMNodePtr CreateElementNS(std::string_view name, std::string_view uri) = 0;
};

} // namespace host
