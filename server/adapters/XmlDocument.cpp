#include "server/adapters/XmlDocument.h"

#include "server/adapters/ProgIds.h"
#include "server/adapters/XmlNode.h"
#include "server/com/BString.h"
#include "server/com/Changes.h"
#include "server/com/DispatchObject.h"
#include "server/com/Utf16.h"

namespace server {

XmlDocument::XmlDocument() : document_(DispatchObject::Create(progid::domDocument).object().As<IXMLDOMDocument>()) {
    ThrowIfFailed(document_->put_async(VARIANT_FALSE));
    ThrowIfFailed(document_->put_validateOnParse(VARIANT_FALSE));
    ThrowIfFailed(document_->put_resolveExternals(VARIANT_FALSE));
}

bool XmlDocument::LoadXML(std::string_view xml) {
    const BString text(ToUtf16(xml));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    NoteChange();
    ThrowIfFailed(document_->loadXML(text.Get(), &loaded));
    return loaded != VARIANT_FALSE;
}

std::string XmlDocument::LoadError() const {
    ComPtr<IXMLDOMParseError> error;
    ThrowIfFailed(document_->get_parseError(error.Put()));
    LONG code = 0;
    ThrowIfFailed(error->get_errorCode(&code));
    if (code == 0)
        return {};
    LONG line = 0;
    ThrowIfFailed(error->get_line(&line));
    BString reason;
    ThrowIfFailed(error->get_reason(reason.Put()));
    std::wstring_view words = reason.View();
    while (words.ends_with(L'\n') || words.ends_with(L'\r'))
        words.remove_suffix(1);
    return "line " + std::to_string(line) + ": " + ToUtf8(words);
}

host::DOMNodePtr XmlDocument::DocumentElement() const {
    ComPtr<IXMLDOMElement> root;
    ThrowIfFailed(document_->get_documentElement(root.Put()));
    return root ? WrapNode(root.As<IXMLDOMNode>()) : nullptr;
}

std::string XmlDocument::Xml() const {
    BString xml;
    ThrowIfFailed(document_->get_xml(xml.Put()));
    return ToUtf8(xml.View());
}

host::DOMNodePtr XmlDocument::SelectSingleNode(std::string_view path) const {
    return XmlNode(document_.As<IXMLDOMNode>()).SelectSingleNode(path);
}

host::DOMNodeList XmlDocument::SelectNodes(std::string_view path) const {
    return XmlNode(document_.As<IXMLDOMNode>()).SelectNodes(path);
}

host::DOMNodePtr XmlDocument::CreateElement(std::string_view name) {
    const BString wide(ToUtf16(name));
    ComPtr<IXMLDOMElement> element;
    ThrowIfFailed(document_->createElement(wide.Get(), element.Put()));
    return WrapNode(element.As<IXMLDOMNode>());
}

host::DOMNodePtr XmlDocument::CreateElementNS(std::string_view name, std::string_view uri) {
    VARIANT type{};
    type.vt = VT_I4;
    type.lVal = NODE_ELEMENT;
    const BString wideName(ToUtf16(name));
    const BString wideUri(ToUtf16(uri));
    ComPtr<IXMLDOMNode> element;
    ThrowIfFailed(document_->createNode(type, wideName.Get(), wideUri.Get(), element.Put()));
    return WrapNode(std::move(element));
}

const ComPtr<IXMLDOMDocument>& ComDocument(const host::DOMDocument& document) {
    const auto* own = dynamic_cast<const XmlDocument*>(&document);
    if (!own)
        RaiseTypeMismatch();
    return own->document();
}

} // namespace server
