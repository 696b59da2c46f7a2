#pragma once

#include "refhost/ia/ComponentConnection.h"

#include <memory>
#include <string>
#include <string_view>

namespace refhost {

/// The voucher component of inventory accounting.
class IaVoucherService : public host::IaVoucherService {
public:
    /// @param environment and `connection` outlive the component
    IaVoucherService(host::Environment& environment, ComponentConnection& connection)
        : environment_(environment), connection_(connection) {}

    std::shared_ptr<host::VoucherContext> Context(host::HostLogin& login) override;
    /// Keeps the login; refuses with the database's message when the login's account cannot be opened.
    bool VoucherInit(host::HostLogin& login, std::string& message) override;
    /// The template of `VoucherTemplates` that is the default (`bDefault`) of the voucher type. Leaves `message` as it
    /// is. Throws 91 before `VoucherInit`.
    bool GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                            std::string& message, std::string& further) override;
    /// Saves a provision (type "48") as `ProvisionVoucher` tells. Reports through `message` and `result` alone, an
    /// error of the database included; both empty means saved.
    void SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                     std::string& message, host::Connection& connection, host::DOMDocument& result) override;

private:
    host::Environment& environment_;
    ComponentConnection& connection_;
    /// The caller's login since `VoucherInit`; it outlives the component.
    host::HostLogin* login_ = nullptr;
};

} // namespace refhost
