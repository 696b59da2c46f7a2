#pragma once

#include "host/Environment.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A world whose databases know nothing but one accounting period, and which notes what it is asked.
class CalendarEnvironment : public host::Environment {
public:
    /// The period's dates; nothing for a calendar without it.
    std::optional<host::HostLogin::PeriodRange> period;
    std::vector<std::string> asked;

    std::unique_ptr<host::DOMDocument> CreateDOMDocument() override;
    std::unique_ptr<host::Connection> CreateConnection() override;
    std::unique_ptr<host::Recordset> CreateRecordset() override;
    host::EaiHelper& GetEaiHelper() override;
    host::RsXmlHelper& GetRsXmlHelper() override;
    std::unique_ptr<host::EaiXmlConverter> CreateEaiXmlConverter() override;
    std::unique_ptr<host::IaVoucherService> CreateIaVoucherService() override;
    std::unique_ptr<host::ProvisionPreCheck> CreateProvisionPreCheck() override;
    std::unique_ptr<host::ZendaT> CreateZendaT() override;
    void ShowMessage(std::string_view text) override;
};
