#include "tests/support/com/HostFixture.h"

#include "server/adapters/XmlNode.h"

namespace test {

using server::DispatchObject;
using server::VariantHolder;
using server::XmlDocument;

VariantHolder HostTest::Holder(const DispatchObject& object) { return VariantHolder(object.object().Get()); }

VariantHolder HostTest::Holder(const XmlDocument& document) {
    return VariantHolder(static_cast<IDispatch*>(document.document().Get()));
}

VariantHolder HostTest::Holder(const host::DOMNode& node) {
    return VariantHolder(static_cast<IDispatch*>(server::ComNode(&node).Get()));
}

XmlDocument HostTest::Document(std::string_view xml) {
    XmlDocument document;
    EXPECT_TRUE(document.LoadXML(xml)) << xml;
    return document;
}

XmlDocument HostTest::DocumentIn(const VariantHolder& result) {
    return XmlDocument(server::ToObject(result.Get()).As<IXMLDOMDocument>());
}

DispatchObject HostTest::Connection() const {
    DispatchObject connection = Make(L"ADODB.Connection");
    connection.Call(L"Open", Text(account_.connectionString()));
    return connection;
}

DispatchObject HostTest::Recordset(const DispatchObject& connection, std::string_view sql) {
    constexpr int client = 3;
    constexpr int openStatic = 3;
    constexpr int readOnly = 1;
    DispatchObject recordset = Recordset();
    recordset.Put(L"CursorLocation", VariantHolder(client));
    recordset.Call(L"Open", Text(sql), Holder(connection), VariantHolder(openStatic), VariantHolder(readOnly));
    return recordset;
}

host::Value HostTest::Field(const DispatchObject& recordset, std::string_view name) {
    const DispatchObject field(server::ToObject(recordset.Call(L"Fields", Text(name)).Get()));
    return server::ToValue(field.Get(L"Value").Get());
}

} // namespace test
