#pragma once

#include "host/VoucherComponents.h"
#include "server/adapters/AdoRecordset.h"
#include "server/adapters/ComLogin.h"
#include "server/com/DispatchObject.h"

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

/// The host's inventory-accounting voucher component. Every constructor below throws error 429 when the component
/// cannot be created.
class ComIaVoucherService final : public host::IaVoucherService {
public:
    /// @param classes outlives it
    explicit ComIaVoucherService(RecordClasses& classes);

    std::shared_ptr<host::VoucherContext> Context(host::HostLogin& login) override;
    bool VoucherInit(host::HostLogin& login, std::string& message) override;
    bool GetDefaultTemplate(std::string_view voucherType, std::unique_ptr<host::Recordset>& recordset,
                            std::string& message, std::string& further) override;
    void SaveVoucher(std::string_view voucherType, host::DOMDocument& head, host::DOMDocument& body,
                     std::string& message, host::Connection& connection, host::DOMDocument& result) override;

private:
    const AdoRecordsetClass& recordsets_;
    DispatchObject service_;
};

/// The host's check before provisions are made.
class ComProvisionPreCheck final : public host::ProvisionPreCheck {
public:
    explicit ComProvisionPreCheck(RecordClasses& classes);

    bool Check(host::HostLogin& login, std::string& message) override;

private:
    DispatchObject check_;
};

/// The host's converter between request elements and records.
class ComEaiXmlConverter final : public host::EaiXmlConverter {
public:
    explicit ComEaiXmlConverter(RecordClasses& classes);

    void FillHead(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& head, host::Recordset& columns,
                  std::string_view mapping) override;
    void FillBody(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& body, host::Recordset& columns,
                  std::string_view mapping) override;
    void HeadToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& head) override;
    void BodyToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& body) override;

private:
    void Fill(const wchar_t* operation, std::string_view rowXml, std::string_view rowTag, host::DOMDocument& records,
              host::Recordset& columns, std::string_view mapping);
    void ToXml(const wchar_t* operation, host::DOMNode& element, std::string_view mapping, host::Recordset& records);

    DispatchObject converter_;
};

/// The host's translator of recordsets.
class ComRsXmlHelper final : public host::RsXmlHelper {
public:
    ComRsXmlHelper();

    std::unique_ptr<host::DOMDocument> RecordsetToXml(host::Recordset& recordset) override;
    std::unique_ptr<VouchData> XmlToVouchData(host::DOMDocument& document) override;

private:
    DispatchObject helper_;
};

/// The host's cost-adjustment component.
class ComZendaT final : public host::ZendaT {
public:
    ComZendaT();

    bool AllowAdd(std::string& message, std::shared_ptr<host::VoucherContext>& context,
                  host::Connection& connection) override;
    void OpenDBS(host::Recordset& recordset, host::Connection& connection, std::string_view sql) override;
    void Update(std::string_view workTable, std::string_view resultTable,
                std::shared_ptr<host::VoucherContext>& context, host::Connection& connection,
                std::string_view voucherId, bool flag) override;
    host::Value GetDefaultTemplateID(std::string_view cardNumber, host::Connection& connection) override;
    host::Value GetVouchNum(std::shared_ptr<host::VoucherContext>& context, std::string_view voucherType,
                            host::RsXmlHelper::VouchData& data, bool flag1, bool flag2) override;
    bool save(host::DOMDocument& head, host::DOMDocument& rows, int mode, std::string& message,
              host::Connection& connection, bool flag, std::shared_ptr<host::VoucherContext>& context) override;
    host::Value GetMaxID(host::Connection& connection, bool flag) override;
    bool DoAccount(host::DOMDocument& head, host::DOMDocument& rows, std::shared_ptr<host::VoucherContext>& context,
                   host::Connection& connection, bool flag, std::string& message) override;

private:
    DispatchObject companion_;
};

} // namespace server
