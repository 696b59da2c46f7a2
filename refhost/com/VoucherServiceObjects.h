#pragma once

#include "refhost/ia/IaVoucherService.h"
#include "refhost/ia/ProvisionPreCheck.h"
#include "server/adapters/ComEnvironment.h"
#include "server/adapters/ComLogin.h"
#include "server/inproc/Automation.h"

#include <limits>
#include <optional>

namespace refhost::com {

/// What the voucher components hand around: the caller's login, as the member `Login`.
class VoucherContextObject final : public server::Automation<VoucherContextObject> {
public:
    explicit VoucherContextObject(server::ComPtr<IDispatch> login) noexcept : login_(std::move(login)) {}

    server::VariantHolder Login(const server::Arguments&);

    static constexpr server::Method<VoucherContextObject> methods[] = {
        {L"Login", 0, 0, &VoucherContextObject::Login, DISPATCH_PROPERTYGET}};

private:
    server::ComPtr<IDispatch> login_;
};

/// `KovraHost.IaVoucherService`.
class IaVoucherServiceObject final : public server::Automation<IaVoucherServiceObject> {
public:
    server::VariantHolder Context(const server::Arguments& arguments);
    /// Login and message.
    server::VariantHolder VoucherInit(const server::Arguments& arguments);
    /// Type, recordset, message, further text, and two arguments that are not looked at.
    server::VariantHolder GetDefaultTemplate(const server::Arguments& arguments);
    /// Type, head, body, message, connection, result, and any flags, which are not looked at.
    server::VariantHolder SaveVoucher(const server::Arguments& arguments);

    static constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();
    static constexpr server::Method<IaVoucherServiceObject> methods[] = {
        {L"Context", 1, 1, &IaVoucherServiceObject::Context},
        {L"VoucherInit", 2, 2, &IaVoucherServiceObject::VoucherInit},
        {L"GetDefaultTemplate", 6, 6, &IaVoucherServiceObject::GetDefaultTemplate},
        {L"SaveVoucher", 6, anyNumber, &IaVoucherServiceObject::SaveVoucher},
    };

private:
    server::ComEnvironment environment_;
    ComponentConnection connection_{environment_};
    /// The login that the service keeps, always in the same place.
    std::optional<server::ComLogin> login_;
    IaVoucherService service_{environment_, connection_};
};

/// `KovraHost.ProvisionPreCheck`.
class ProvisionPreCheckObject final : public server::Automation<ProvisionPreCheckObject> {
public:
    /// Login and message.
    server::VariantHolder Check(const server::Arguments& arguments);

    static constexpr server::Method<ProvisionPreCheckObject> methods[] = {
        {L"Check", 2, 2, &ProvisionPreCheckObject::Check}};

private:
    server::ComEnvironment environment_;
    ComponentConnection connection_{environment_};
    ProvisionPreCheck check_{environment_, connection_};
};

} // namespace refhost::com
