#include "tests/support/ado/AdodbRecordset.h"

#include "refhost/ado/AdoErrors.h"
#include "refhost/ado/Recordset.h"
#include "refhost/trace/Traced.h"
#include "server/adapters/XmlDocument.h"
#include "tests/support/ado/AdodbConnection.h"
#include "tests/support/ado/AdodbFields.h"
#include "tests/support/ado/Optional.h"

namespace test {

using server::Arguments;
using server::ComPtr;
using server::VariantHolder;

AdodbRecordset::AdodbRecordset()
    : trace_(TraceFile()), recordset_(refhost::WithTrace(trace_.get(), std::make_unique<refhost::Recordset>())) {}

VariantHolder AdodbRecordset::Open(const Arguments& arguments) {
    constexpr int unspecified = -1;
    const int cursor = NumberOr(arguments, 2, unspecified);
    const int lock = NumberOr(arguments, 3, unspecified);
    if (!arguments.Has(1))
        refhost::RaiseWrongArguments();
    const ComPtr<IDispatch> connection = server::ToObject(arguments[1]);
    const ComponentMark mark;
    recordset_->Open(TextOr(arguments, 0), AdodbConnection::Behind(connection),
                     cursor == unspecified ? host::CursorType::forwardOnly : static_cast<host::CursorType>(cursor),
                     lock == unspecified ? host::LockType::readOnly : static_cast<host::LockType>(lock),
                     NumberOr(arguments, 4, host::command_option::unspecified));
    return {};
}

VariantHolder AdodbRecordset::Close(const Arguments&) {
    recordset_->Close();
    return {};
}

VariantHolder AdodbRecordset::MoveNext(const Arguments&) {
    recordset_->MoveNext();
    return {};
}

VariantHolder AdodbRecordset::Save(const Arguments& arguments) {
    constexpr int persistXml = 1;
    const ComPtr<IXMLDOMDocument> document = server::ToObject(arguments[0]).TryAs<IXMLDOMDocument>();
    if (!document || NumberOr(arguments, 1, 0) != persistXml)
        refhost::RaiseWrongArguments();
    server::XmlDocument destination(document);
    recordset_->Save(destination);
    return {};
}

VariantHolder AdodbRecordset::AtEOF(const Arguments&) { return VariantHolder(recordset_->AtEOF()); }
VariantHolder AdodbRecordset::AtBOF(const Arguments&) { return VariantHolder(recordset_->AtBOF()); }

VariantHolder AdodbRecordset::RecordCount(const Arguments&) {
    return VariantHolder(host::Value(recordset_->RecordCount()));
}

VariantHolder AdodbRecordset::State(const Arguments&) { return VariantHolder(recordset_->IsOpen() ? 1 : 0); }

VariantHolder AdodbRecordset::CursorLocation(const Arguments& arguments) {
    if (arguments.count() == 1)
        recordset_->SetCursorLocation(static_cast<host::CursorLocation>(server::ToInt(arguments[0])));
    return VariantHolder(static_cast<int>(recordset_->GetCursorLocation()));
}

VariantHolder AdodbRecordset::Fields(const Arguments& arguments) {
    const auto fields = ComPtr<AdodbFields>::Adopt(new AdodbFields(ComPtr<AdodbRecordset>(this)));
    return arguments.count() == 1 ? fields->Item(arguments) : VariantHolder(static_cast<IDispatch*>(fields.Get()));
}

} // namespace test
