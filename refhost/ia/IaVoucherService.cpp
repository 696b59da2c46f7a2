#include "refhost/ia/IaVoucherService.h"

#include "ModPub/Lookup.h"
#include "ModPub/RuntimeErrors.h"
#include "refhost/ia/ProvisionVoucher.h"
#include "refhost/ia/VoucherContext.h"
#include "text/SqlText.h"

namespace refhost {

std::shared_ptr<host::VoucherContext> IaVoucherService::Context(host::HostLogin& login) {
    return std::make_shared<VoucherContext>(login);
}

bool IaVoucherService::VoucherInit(host::HostLogin& login, std::string& message) {
    login_ = &login;
    try {
        connection_.Use(login, [](host::Connection&) {});
    } catch (const host::Error& error) {
        message = error.description();
        return false;
    }
    return true;
}

bool IaVoucherService::GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                                          std::string&, std::string&) {
    if (login_ == nullptr) {
        ModPub::RaiseRuntimeError(host::error_number::objectNotSet);
    }
    recordset = connection_.Use(*login_, [&](host::Connection& connection) {
        return ModPub::OpenLookup(environment_, connection,
                                  "Select VT_ID From VoucherTemplates Where cVouchType=" + SqlText(voucherType) +
                                      " And bDefault=1");
    });
    return !recordset->AtEOF();
}

void IaVoucherService::SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                                   std::string& message, host::Connection& connection, host::DOMDocument& result) {
    const HostCall call;
    if (voucherType != "48") {
        message = "单据类型" + std::string(voucherType) + "不能保存。";
        return;
    }
    try {
        message = ProvisionVoucher(environment_, connection, head, body).Save(result);
    } catch (const host::Error& error) {
        message = error.description().empty() ? "保存失败。" : error.description();
    }
}

} // namespace refhost
