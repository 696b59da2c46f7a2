#pragma once

#include "host/Environment.h"
#include "server/adapters/ComVoucherComponents.h"

#include <memory>

namespace server {

/// The world as COM offers it. It remembers the classes of which many objects are made; the helpers of each thread live
/// until the thread leaves COM.
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
    RecordClasses& Classes();

    /// From the first object of one of them on.
    std::unique_ptr<RecordClasses> classes_;
};

} // namespace server
