#include "refhost/com/ZendaTObject.h"

#include "refhost/com/ObjectArguments.h"
#include "refhost/com/RsXmlHelperObject.h"
#include "server/adapters/ComVoucherComponents.h"

namespace refhost::com {

namespace {

using server::Arguments;
using server::ToBoolean;
using server::ToInt;
using server::ToText;
using server::VariantHolder;

std::shared_ptr<host::VoucherContext> ContextOf(const VARIANT& argument) {
    return std::make_shared<server::ComVoucherContext>(server::DispatchObject(server::ToObject(argument)));
}

} // namespace

host::Connection& ZendaTObject::Connection(const VARIANT& argument) {
    latestConnection_ = ConnectionOf(argument);
    return *latestConnection_;
}

VariantHolder ZendaTObject::AllowAdd(const Arguments& arguments) {
    ChangedText message(arguments, 0);
    std::shared_ptr<host::VoucherContext> context = ContextOf(arguments[1]);
    const bool allowed = companion_.AllowAdd(message.text(), context, Connection(arguments[2]));
    message.Store();
    return VariantHolder(allowed);
}

VariantHolder ZendaTObject::OpenDBS(const Arguments& arguments) {
    server::AdoRecordset recordset = RecordsetOf(arguments[0]);
    companion_.OpenDBS(recordset, Connection(arguments[1]), ToText(arguments[2]));
    return {};
}

VariantHolder ZendaTObject::Update(const Arguments& arguments) {
    std::shared_ptr<host::VoucherContext> context = ContextOf(arguments[2]);
    companion_.Update(ToText(arguments[0]), ToText(arguments[1]), context, Connection(arguments[3]),
                      ToText(arguments[4]), ToBoolean(arguments[5]));
    return {};
}

VariantHolder ZendaTObject::GetDefaultTemplateID(const Arguments& arguments) {
    return VariantHolder(companion_.GetDefaultTemplateID(ToText(arguments[0]), Connection(arguments[1])));
}

VariantHolder ZendaTObject::GetVouchNum(const Arguments& arguments) {
    std::shared_ptr<host::VoucherContext> context = ContextOf(arguments[0]);
    const server::ComPtr<VouchDataObject> data = VouchDataObject::Of(arguments[2]);
    return VariantHolder(companion_.GetVouchNum(context, ToText(arguments[1]), data->data(), ToBoolean(arguments[3]),
                                                ToBoolean(arguments[4])));
}

VariantHolder ZendaTObject::Save(const Arguments& arguments) {
    server::XmlDocument head = DocumentOf(arguments[0]);
    server::XmlDocument rows = DocumentOf(arguments[1]);
    ChangedText message(arguments, 3);
    std::shared_ptr<host::VoucherContext> context = ContextOf(arguments[6]);
    const bool saved = companion_.save(head, rows, ToInt(arguments[2]), message.text(), Connection(arguments[4]),
                                       ToBoolean(arguments[5]), context);
    message.Store();
    return VariantHolder(saved);
}

VariantHolder ZendaTObject::GetMaxID(const Arguments& arguments) {
    return VariantHolder(companion_.GetMaxID(Connection(arguments[0]), ToBoolean(arguments[1])));
}

VariantHolder ZendaTObject::DoAccount(const Arguments& arguments) {
    server::XmlDocument head = DocumentOf(arguments[0]);
    server::XmlDocument rows = DocumentOf(arguments[1]);
    std::shared_ptr<host::VoucherContext> context = ContextOf(arguments[2]);
    ChangedText message(arguments, 5);
    const bool posted =
        companion_.DoAccount(head, rows, context, Connection(arguments[3]), ToBoolean(arguments[4]), message.text());
    message.Store();
    return VariantHolder(posted);
}

} // namespace refhost::com
