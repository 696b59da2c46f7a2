#pragma once

#include "refhost/xml/Path.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <libxml/xpath.h>

namespace refhost::xml {

/// An XPath expression, compiled.
class XPath {
public:
    /// Throws `host::Error` when `text` is no XPath expression.
    explicit XPath(std::string_view text);

    xmlXPathCompExpr* get() const noexcept { return expression_.get(); }
    const std::string& text() const noexcept { return text_; }

private:
    struct Deleter {
        void operator()(xmlXPathCompExpr* expression) const noexcept;
    };
    std::string text_;
    std::unique_ptr<xmlXPathCompExpr, Deleter> expression_;
};

/// A copy of a tree in libxml2's own nodes, for the paths that need its XPath engine.
///
/// Names are compared as they stand, prefix included, as patterns of MSXML 3 do: a prefix stands for itself, and a name
/// without prefix also finds elements of a default namespace.
class Mirror {
public:
    /// Copies everything below `top`, a node without parent.
    Mirror(const Tree& tree, const Node& top);

    /// What `path` selects under `context`, in document order. Throws `host::Error` for a prefix that nobody declares
    /// and for an expression that selects no nodes (a number, say).
    std::vector<Selected> Select(const XPath& path, const Node& context) const;

    /// Whether this is the copy of the tree below `top` as it is now.
    bool IsCurrent(const Tree& tree, const Node& top) const noexcept {
        return &top == top_ && tree.Revision() == revision_;
    }

private:
    struct Deleter {
        void operator()(xmlDoc* document) const noexcept;
    };
    struct NamespaceDeleter {
        void operator()(xmlNs* space) const noexcept;
    };

    xmlNode* CopyElement(const Element& element);
    xmlNode* CopyNode(const Node& node);
    xmlNs* Namespace(std::string_view prefix);

    const Node* top_;
    std::uint64_t revision_;
    const Tree::PrefixMap& prefixes_;
    /// Declared before the document, whose nodes point to them.
    std::unordered_map<std::string, std::unique_ptr<xmlNs, NamespaceDeleter>> namespaces_;
    std::unique_ptr<xmlDoc, Deleter> document_;
    std::unordered_map<const Node*, xmlNode*> copies_;
};

} // namespace refhost::xml
