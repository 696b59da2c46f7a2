#include "server/adapters/ObjectArguments.h"

#include "host/Forwarding.h"
#include "server/adapters/AdoConnection.h"
#include "server/adapters/AdoRecordset.h"
#include "server/adapters/ComLogin.h"
#include "server/adapters/ComVoucherComponents.h"
#include "server/adapters/XmlDocument.h"
#include "server/adapters/XmlNode.h"

#include <utility>

namespace server {

namespace {

/// The handle as the adapter that it must be.
template <class Adapter, class Handle> Adapter& Own(Handle& handle) {
    auto* own = dynamic_cast<Adapter*>(&handle);
    if (!own)
        RaiseTypeMismatch();
    return *own;
}

/// The interface `U` of an object that may be Nothing.
template <class U> ComPtr<U> AsOrNothing(const ComPtr<IDispatch>& object) {
    return object ? object.As<U>() : ComPtr<U>();
}

/// An object that ADO's clients take for what has the member `mark`. ADO's own interfaces have changed their
/// identifiers with its versions.
DispatchObject Marked(ComPtr<IDispatch> object, const wchar_t* mark) {
    DispatchObject marked(std::move(object));
    if (marked.object() && !marked.Offers(mark))
        RaiseTypeMismatch();
    return marked;
}

constexpr const wchar_t* connectionMark = L"CommitTrans";
constexpr const wchar_t* recordsetMark = L"MoveNext";

} // namespace

VariantHolder ByValue(const host::DOMDocument& document) { return VariantHolder(Standing(document)); }
VariantHolder ByValue(const host::DOMNode* node) { return VariantHolder(Standing(node)); }
VariantHolder ByValue(host::Connection& connection) { return VariantHolder(Standing(connection)); }
VariantHolder ByValue(host::Recordset& recordset) { return VariantHolder(Standing(recordset)); }
VariantHolder ByValue(const host::HostLogin& login) { return VariantHolder(ComObject(login).object().Get()); }

IDispatch* Standing(const host::DOMDocument& document) { return ComDocument(document).Get(); }
void Replace(host::DOMDocument& document, ComPtr<IDispatch> now) {
    if (now.Get() != Standing(document))
        Own<XmlDocument>(document).Hold(AsOrNothing<IXMLDOMDocument>(now));
}

IDispatch* Standing(const host::DOMNode* node) { return ComNode(node).Get(); }
void Replace(host::DOMNode* node, ComPtr<IDispatch> now) {
    // The interface of elements is one of nodes; a document would be a node too.
    if (node && now.Get() != Standing(node))
        Own<XmlNode>(*node).Hold(ComPtr<IXMLDOMNode>(AsOrNothing<IXMLDOMElement>(now).Get()));
}

IDispatch* Standing(host::Connection& connection) { return ComConnection(connection).object().Get(); }
void Replace(host::Connection& connection, ComPtr<IDispatch> now) {
    if (now.Get() != Standing(connection))
        Own<AdoConnection>(host::Undecorated(connection)).Hold(Marked(std::move(now), connectionMark));
}

IDispatch* Standing(host::Recordset& recordset) { return ComRecordset(recordset).object().Get(); }
void Replace(host::Recordset& recordset, ComPtr<IDispatch> now) {
    auto& own = Own<AdoRecordset>(host::Undecorated(recordset));
    // The same recordset may have been opened anew.
    own.Hold(now.Get() == Standing(recordset) ? own.recordset() : Marked(std::move(now), recordsetMark));
}

IDispatch* Standing(const std::unique_ptr<host::Recordset>& recordset) {
    return recordset ? Standing(*recordset) : nullptr;
}
void Replace(std::unique_ptr<host::Recordset>& recordset, ComPtr<IDispatch> now) {
    if (!now)
        recordset.reset();
    else if (recordset)
        Replace(*recordset, std::move(now));
    else
        recordset = std::make_unique<AdoRecordset>(Marked(std::move(now), recordsetMark));
}

IDispatch* Standing(const std::shared_ptr<host::VoucherContext>& context) {
    return context ? Own<const ComVoucherContext>(*context).context().object().Get() : nullptr;
}
void Replace(std::shared_ptr<host::VoucherContext>& context, ComPtr<IDispatch> now) {
    if (now.Get() != Standing(context))
        context = now ? std::make_shared<ComVoucherContext>(DispatchObject(std::move(now))) : nullptr;
}

IDispatch* Standing(const host::RsXmlHelper::VouchData& data) {
    return Own<const ComVouchData>(data).data().object().Get();
}
void Replace(host::RsXmlHelper::VouchData& data, ComPtr<IDispatch> now) {
    Own<ComVouchData>(data).Hold(DispatchObject(std::move(now)));
}

} // namespace server
