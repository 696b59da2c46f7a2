#include "refhost/com/RsXmlHelperObject.h"

#include "refhost/com/ObjectArguments.h"

namespace refhost::com {

namespace {

using server::Arguments;
using server::ComPtr;
using server::VariantHolder;

/// Asked of an object to learn whether it is a VouchDataObject.
constexpr IID ownId = {0x52C9D3F7, 0x8A14, 0x4E60, {0xB3, 0x1C, 0x6F, 0x27, 0x90, 0xDA, 0x4B, 0x85}};

} // namespace

ComPtr<VouchDataObject> VouchDataObject::Of(const VARIANT& argument) {
    const ComPtr<IDispatch> object = server::ToObject(argument);
    if (!object)
        server::RaiseObjectNotSet();
    ComPtr<VouchDataObject> own;
    if (FAILED(object->QueryInterface(ownId, own.PutVoid())))
        server::RaiseTypeMismatch();
    return own;
}

HRESULT STDMETHODCALLTYPE VouchDataObject::QueryInterface(REFIID id, void** object) {
    if (!object || id != ownId)
        return Automation::QueryInterface(id, object);
    *object = this;
    AddRef();
    return S_OK;
}

VariantHolder VouchDataObject::Text(const Arguments& arguments) {
    return VariantHolder(dynamic_cast<const VouchData&>(*data_).Text(server::ToText(arguments[0])));
}

VariantHolder RsXmlHelperObject::RecordsetToXml(const Arguments& arguments) {
    server::AdoRecordset recordset = RecordsetOf(arguments[0]);
    const std::unique_ptr<host::DOMDocument> document = helper_.RecordsetToXml(recordset);
    return VariantHolder(static_cast<IDispatch*>(server::ComDocument(*document).Get()));
}

VariantHolder RsXmlHelperObject::XmlToVouchData(const Arguments& arguments) {
    server::XmlDocument document = DocumentOf(arguments[0]);
    const auto data = ComPtr<IDispatch>::Adopt(new VouchDataObject(helper_.XmlToVouchData(document)));
    return VariantHolder(data.Get());
}

} // namespace refhost::com
