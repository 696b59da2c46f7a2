#pragma once

#include "host/Environment.h"
#include "refhost/OpenDatabase.h"
#include "refhost/eai/MappingStore.h"
#include "refhost/ia/ComponentConnection.h"
#include "refhost/xml/RepeatedTexts.h"

#include <memory>

namespace refhost {

/// The world without the ERP: documents on libxml2, account databases, and stand-ins of the host's components.
/// An environment and what it creates belong to one thread.
class Environment : public host::Environment {
public:
    /// @param opener how its connections open their databases
    explicit Environment(DatabaseOpener opener = OpenExisting());
    ~Environment() override;

    std::unique_ptr<host::DOMDocument> CreateDOMDocument() override;
    std::unique_ptr<host::Connection> CreateConnection() override;
    std::unique_ptr<host::Recordset> CreateRecordset() override;
    host::EaiHelper& GetEaiHelper() override;
    host::RsXmlHelper& GetRsXmlHelper() override;
    std::unique_ptr<host::EaiXmlConverter> CreateEaiXmlConverter() override;
    std::unique_ptr<host::IaVoucherService> CreateIaVoucherService() override;
    std::unique_ptr<host::ProvisionPreCheck> CreateProvisionPreCheck() override;
    std::unique_ptr<host::ZendaT> CreateZendaT() override;
    /// Writes the message to standard error, with a line feed.
    void ShowMessage(std::string_view text) override;

private:
    DatabaseOpener opener_;
    std::unique_ptr<host::EaiHelper> eaiHelper_;
    std::unique_ptr<host::RsXmlHelper> rsXmlHelper_;
    /// What the components created here share.
    MappingStore mappings_;
    std::shared_ptr<xml::RepeatedTexts> repeatedTexts_ = std::make_shared<xml::RepeatedTexts>();
    ComponentConnection componentConnection_;
};

} // namespace refhost
