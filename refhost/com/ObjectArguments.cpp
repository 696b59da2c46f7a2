#include "refhost/com/ObjectArguments.h"

namespace refhost::com {

using server::ComPtr;
using server::DispatchObject;

server::XmlDocument DocumentOf(const VARIANT& argument) {
    return server::XmlDocument(server::ToObject(argument).As<IXMLDOMDocument>());
}

host::DOMNodePtr NodeOf(const VARIANT& argument) {
    const ComPtr<IDispatch> node = server::ToObject(argument);
    return node ? server::WrapNode(node.As<IXMLDOMNode>()) : nullptr;
}

server::AdoConnection ConnectionOf(const VARIANT& argument) {
    return server::AdoConnection(DispatchObject(server::ToObject(argument)));
}

server::AdoRecordset RecordsetOf(const VARIANT& argument) {
    return server::AdoRecordset(DispatchObject(server::ToObject(argument)));
}

server::ComLogin LoginOf(const VARIANT& argument) {
    return server::ComLogin(DispatchObject(server::ToObject(argument)));
}

} // namespace refhost::com
