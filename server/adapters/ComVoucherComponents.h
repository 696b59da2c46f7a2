#pragma once

#include "host/VoucherComponents.h"
#include "server/adapters/AdoRecordset.h"
#include "server/adapters/ComLogin.h"
#include "server/com/DispatchObject.h"

#include <memory>

namespace server {

/// A voucher context; `Login` is its one member that anyone here reads.
class ComVoucherContext final : public host::VoucherContext {
public:
    explicit ComVoucherContext(DispatchObject context) noexcept : context_(std::move(context)) {}

    const DispatchObject& context() const noexcept { return context_; }
    host::HostLogin& Login() override;

private:
    DispatchObject context_;
    std::unique_ptr<ComLogin> login_;
};

/// Voucher data on its way from one component to the other.
class ComVouchData final : public host::RsXmlHelper::VouchData {
public:
    explicit ComVouchData(DispatchObject data) noexcept : data_(std::move(data)) {}

    const DispatchObject& data() const noexcept { return data_; }
    /// Puts other data behind this handle, or none.
    void Hold(DispatchObject data) noexcept { data_ = std::move(data); }

private:
    DispatchObject data_;
};

/// The classes of which a request makes an object for every row or document.
struct RecordClasses {
    AdoRecordsetClass recordsets;
    AutomationClass services{progid::iaVoucherService};
    AutomationClass preChecks{progid::provisionPreCheck};
    AutomationClass converters{progid::eaiXmlConverter};
};

// Each of these throws error 429 when its component cannot be created; `classes` outlive what is made of them.

/// The host's inventory-accounting voucher component.
std::unique_ptr<host::IaVoucherService> MakeIaVoucherService(RecordClasses& classes);
/// The host's check before provisions are made.
std::unique_ptr<host::ProvisionPreCheck> MakeProvisionPreCheck(RecordClasses& classes);
/// The host's converter between request elements and records.
std::unique_ptr<host::EaiXmlConverter> MakeEaiXmlConverter(RecordClasses& classes);
/// The host's translator of recordsets.
std::unique_ptr<host::RsXmlHelper> MakeRsXmlHelper();
/// The host's cost-adjustment component.
std::unique_ptr<host::ZendaT> MakeZendaT();

} // namespace server
