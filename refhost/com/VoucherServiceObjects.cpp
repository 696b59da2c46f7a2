#include "refhost/com/VoucherServiceObjects.h"

#include "refhost/com/ObjectArguments.h"

namespace refhost::com {

using server::Arguments;
using server::ComPtr;
using server::ToText;
using server::VariantHolder;

VariantHolder VoucherContextObject::Login(const Arguments&) { return VariantHolder(login_.Get()); }

VariantHolder IaVoucherServiceObject::Context(const Arguments& arguments) {
    const auto context = ComPtr<IDispatch>::Adopt(new VoucherContextObject(server::ToObject(arguments[0])));
    return VariantHolder(context.Get());
}

VariantHolder IaVoucherServiceObject::VoucherInit(const Arguments& arguments) {
    ChangedText message(arguments, 1);
    login_ = LoginOf(arguments[0]);
    const bool ready = service_.VoucherInit(*login_, message.text());
    message.Store();
    return VariantHolder(ready);
}

VariantHolder IaVoucherServiceObject::GetDefaultTemplate(const Arguments& arguments) {
    std::unique_ptr<host::Recordset> recordset;
    ChangedText message(arguments, 2);
    ChangedText further(arguments, 3);
    const bool found = service_.GetDefaultTemplate(ToText(arguments[0]), recordset, message.text(), further.text());
    arguments.Return(1, VariantHolder(server::ComRecordset(*recordset).object().Get()));
    message.Store();
    further.Store();
    return VariantHolder(found);
}

VariantHolder IaVoucherServiceObject::SaveVoucher(const Arguments& arguments) {
    server::XmlDocument head = DocumentOf(arguments[1]);
    server::XmlDocument body = DocumentOf(arguments[2]);
    ChangedText message(arguments, 3);
    server::AdoConnection connection = ConnectionOf(arguments[4]);
    server::XmlDocument result = DocumentOf(arguments[5]);
    service_.SaveVoucher(ToText(arguments[0]), head, body, message.text(), connection, result);
    message.Store();
    return {};
}

VariantHolder ProvisionPreCheckObject::Check(const Arguments& arguments) {
    server::ComLogin login = LoginOf(arguments[0]);
    ChangedText message(arguments, 1);
    const bool allowed = check_.Check(login, message.text());
    message.Store();
    return VariantHolder(allowed);
}

} // namespace refhost::com
