#pragma once

#include "host/VoucherComponents.h"

#include <memory>
#include <string>
#include <string_view>

namespace refhost {

/// The voucher component of inventory accounting.
class IaVoucherService : public host::IaVoucherService {
public:
    std::shared_ptr<host::VoucherContext> Context(host::HostLogin& login) override;
    bool VoucherInit(host::HostLogin& login, std::string& message) override;
    bool GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                            std::string& message, std::string& further) override;
    void SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                     std::string& message, host::Connection& connection, host::DOMDocument& result) override;
};

} // namespace refhost
