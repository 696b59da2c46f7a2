#include "refhost/com/EaiXmlConverterObject.h"

#include "refhost/com/ObjectArguments.h"

namespace refhost::com {

namespace {

using server::Arguments;
using server::ToText;
using server::VariantHolder;

/// The document that an element belongs to.
server::XmlDocument OwnerOf(const VARIANT& argument) {
    const auto element = server::ToObject(argument).As<IXMLDOMElement>();
    server::ComPtr<IXMLDOMDocument> owner;
    server::ThrowIfFailed(element->get_ownerDocument(owner.Put()));
    return server::XmlDocument(std::move(owner));
}

/// Kept as long as the library is loaded, since callers make a converter for every document.
MappingStore& Mappings() {
    static server::ComEnvironment environment;
    static MappingStore mappings(environment, [](const std::string&) { return std::nullopt; });
    return mappings;
}

} // namespace

EaiXmlConverterObject::EaiXmlConverterObject() : converter_(environment_, Mappings()) {}

template <auto fill> VariantHolder EaiXmlConverterObject::Fill(const Arguments& arguments) {
    server::XmlDocument records = DocumentOf(arguments[2]);
    server::AdoRecordset columns = RecordsetOf(arguments[3]);
    (converter_.*fill)(ToText(arguments[0]), ToText(arguments[1]), records, columns, ToText(arguments[4]));
    return {};
}

template <auto write> VariantHolder EaiXmlConverterObject::ToXml(const Arguments& arguments) {
    server::XmlDocument document = OwnerOf(arguments[0]);
    server::AdoRecordset records = RecordsetOf(arguments[2]);
    (converter_.*write)(document, *NodeOf(arguments[0]), ToText(arguments[1]), records);
    return {};
}

} // namespace refhost::com
