#pragma once

#include "host/DOMDocument.h"
#include "server/adapters/Msxml.h"
#include "server/com/ComPtr.h"

namespace server {

/// An MSXML document (the version-independent `DOMDocument`).
class XmlDocument final : public host::DOMDocument {
public:
    /// A new document, which loads neither files nor external entities. Throws error 429 without MSXML.
    XmlDocument();
    /// A document that exists already.
    explicit XmlDocument(ComPtr<IXMLDOMDocument> document) noexcept : document_(std::move(document)) {}

    const ComPtr<IXMLDOMDocument>& document() const noexcept { return document_; }
    /// Puts another document behind this handle, or none.
    void Hold(ComPtr<IXMLDOMDocument> document) noexcept { document_ = std::move(document); }

    bool LoadXML(std::string_view xml) override;
    std::string LoadError() const override;
    host::DOMNodePtr DocumentElement() const override;
    std::string Xml() const override;
    host::DOMNodePtr SelectSingleNode(std::string_view path) const override;
    host::DOMNodeList SelectNodes(std::string_view path) const override;
    host::DOMNodePtr CreateElement(std::string_view name) override;
    host::DOMNodePtr CreateElementNS(std::string_view name, std::string_view uri) override;

private:
    ComPtr<IXMLDOMDocument> document_;
};

/// The COM object behind `document`. Throws error 13 for a document that is not MSXML's.
const ComPtr<IXMLDOMDocument>& ComDocument(const host::DOMDocument& document);

} // namespace server
