#include "tests/support/ado/AdodbConnection.h"

#include "refhost/OpenDatabase.h"
#include "refhost/ado/AdoErrors.h"
#include "refhost/ado/Connection.h"
#include "refhost/trace/Traced.h"
#include "tests/support/ado/AdodbRecordset.h"
#include "tests/support/ado/Optional.h"

namespace test {

namespace {

using server::Arguments;
using server::VariantHolder;

/// Asked of an object to learn whether it is an AdodbConnection.
constexpr IID ownId = {0x0C2F3C61, 0x6E0B, 0x4C8B, {0x8F, 0x37, 0x9D, 0x4E, 0x52, 0xB1, 0x70, 0xA9}};

std::unique_ptr<host::Connection> ClosedConnection(refhost::Trace* trace) {
    return refhost::WithTrace(trace, std::make_unique<refhost::Connection>(
                                         [](const std::string& text) { return refhost::OpenEmbeddedDatabase(text); }));
}

} // namespace

AdodbConnection::AdodbConnection() : trace_(TraceFile()), connection_(ClosedConnection(trace_.get())) {}

host::Connection& AdodbConnection::Behind(const server::ComPtr<IDispatch>& object) {
    server::ComPtr<AdodbConnection> own;
    if (!object || FAILED(object->QueryInterface(ownId, own.PutVoid())))
        refhost::RaiseWrongArguments();
    return *own->connection_;
}

HRESULT STDMETHODCALLTYPE AdodbConnection::QueryInterface(REFIID id, void** object) {
    if (!object || id != ownId)
        return Automation::QueryInterface(id, object);
    *object = this;
    AddRef();
    return S_OK;
}

VariantHolder AdodbConnection::Open(const Arguments& arguments) {
    const ComponentMark mark;
    connection_->Open(TextOr(arguments, 0), TextOr(arguments, 1), TextOr(arguments, 2),
                      NumberOr(arguments, 3, host::command_option::unspecified));
    open_ = true;
    return {};
}

VariantHolder AdodbConnection::Execute(const Arguments& arguments) {
    const ComponentMark mark;
    connection_->Execute(TextOr(arguments, 0), NumberOr(arguments, 2, host::command_option::unspecified));
    return VariantHolder(server::ComPtr<IDispatch>::Adopt(new AdodbRecordset).Get());
}

VariantHolder AdodbConnection::BeginTrans(const Arguments&) {
    constexpr int outermostLevel = 1;
    const ComponentMark mark;
    connection_->BeginTrans();
    return VariantHolder(outermostLevel);
}

VariantHolder AdodbConnection::CommitTrans(const Arguments&) {
    const ComponentMark mark;
    connection_->CommitTrans();
    return {};
}

VariantHolder AdodbConnection::RollbackTrans(const Arguments&) {
    const ComponentMark mark;
    connection_->RollbackTrans();
    return {};
}

VariantHolder AdodbConnection::Close(const Arguments&) {
    if (!open_)
        refhost::RaiseObjectClosed();
    connection_ = ClosedConnection(trace_.get());
    open_ = false;
    return {};
}

VariantHolder AdodbConnection::State(const Arguments&) { return VariantHolder(open_ ? 1 : 0); }

} // namespace test
