#include "refhost/ia/IaVoucherService.h"

#include "host/Error.h"
#include "refhost/ia/VoucherContext.h"

namespace refhost {
namespace {

[[noreturn]] void RaiseNoSuchMember() {
    throw host::Error(host::error_number::noSuchMember, "对象不支持该属性或方法");
}

} // namespace

std::shared_ptr<host::VoucherContext> IaVoucherService::Context(host::HostLogin& login) {
    return std::make_shared<VoucherContext>(login);
}

bool IaVoucherService::VoucherInit(host::HostLogin&, std::string&) { RaiseNoSuchMember(); }

bool IaVoucherService::GetDefaultTemplate(std::string_view, std::unique_ptr<host::Recordset>&, std::string&,
                                          std::string&) {
    RaiseNoSuchMember();
}

void IaVoucherService::SaveVoucher(std::string_view, host::DOMDocument&, host::DOMDocument&, std::string&,
                                   host::Connection&, host::DOMDocument&) {
    RaiseNoSuchMember();
}

} // namespace refhost
