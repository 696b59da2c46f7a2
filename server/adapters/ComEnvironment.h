#pragma once

#include "host/Environment.h"
#include "server/adapters/AdoRecordset.h"

#include <memory>

namespace server {

/// The world as COM offers it. It remembers ADO's class of recordsets; the helpers of each thread live until the thread
/// leaves COM.
class ComEnvironment : public host::Environment {
public:
    std::unique_ptr<host::DOMDocument> CreateDOMDocument() override;
    std::unique_ptr<host::Connection> CreateConnection() override;
    std::unique_ptr<host::Recordset> CreateRecordset() override;
    host::EaiHelper& GetEaiHelper() override;
    host::RsXmlHelper& GetRsXmlHelper() override;
    std::unique_ptr<host::EaiXmlConverter> CreateEaiXmlConverter() override;
    std::unique_ptr<host::IaVoucherService> CreateIaVoucherService() override;
    std::unique_ptr<host::ProvisionPreCheck> CreateProvisionPreCheck() override;
    std::unique_ptr<host::ZendaT> CreateZendaT() override;
    /// Shows a message box where the process has a desktop, else writes to standard error.
    void ShowMessage(std::string_view text) override;

private:
    /// From the first recordset on.
    std::unique_ptr<AdoRecordsetClass> recordsets_;
};

} // namespace server
