#pragma once

#include "host/DOMDocument.h"
#include "refhost/xml/RepeatedTexts.h"
#include "refhost/xml/Selector.h"
#include "refhost/xml/Tree.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::xml {

/// A document as MSXML 3 offers it, read by libxml2's parser and held in nodes of our own.
///
/// Differences from MSXML: no text is trimmed, a document type is not kept (its internal entities are expanded and its
/// defaults added), and a reference to what lies outside the text makes the load fail.
class Document final : public host::DOMDocument {
public:
    /// @param repeated texts that are loaded again and again, of which documents share what was read; may be nullptr
    explicit Document(std::shared_ptr<RepeatedTexts> repeated = nullptr);

    bool LoadXML(std::string_view xml) override;
    std::string LoadError() const override { return loadError_; }
    host::DOMNodePtr DocumentElement() const override;
    std::string Xml() const override;
    host::DOMNodePtr SelectSingleNode(std::string_view path) const override;
    host::DOMNodeList SelectNodes(std::string_view path) const override;
    std::vector<std::string> AttributesAt(std::string_view path, std::string_view name) const override;
    host::DOMNodePtr CreateElement(std::string_view name) override;
    /// The namespace is the declared one: prefixes keep their meaning within a document.
    host::DOMNodePtr CreateElementNS(std::string_view name, std::string_view) override { return CreateElement(name); }

private:
    void Reset(std::unique_ptr<Tree> tree, std::shared_ptr<CompiledPaths> paths);

    std::shared_ptr<RepeatedTexts> repeated_;
    std::unique_ptr<Tree> tree_;
    /// Follows paths in `tree_`.
    std::unique_ptr<Selector> selector_;
    std::string loadError_;
};

/// An empty document; see `Document::Document`.
std::unique_ptr<host::DOMDocument> CreateDocument(std::shared_ptr<RepeatedTexts> repeated = nullptr);

} // namespace refhost::xml
