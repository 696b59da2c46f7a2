#pragma once

#include "host/Environment.h"
#include "refhost/xml/Document.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

[[noreturn]] inline void NotPartOfThis() { throw std::logic_error("a login asks for no such thing"); }

/// A world whose databases know nothing but one accounting period, and which notes what it is asked.
class CalendarEnvironment : public host::Environment {
public:
    /// The period's dates; nothing for a calendar without it.
    std::optional<host::HostLogin::PeriodRange> period;
    std::vector<std::string> asked;

    std::unique_ptr<host::DOMDocument> CreateDOMDocument() override { return refhost::xml::CreateDocument(); }
    std::unique_ptr<host::Connection> CreateConnection() override;
    std::unique_ptr<host::Recordset> CreateRecordset() override;
    host::EaiHelper& GetEaiHelper() override { NotPartOfThis(); }
    host::RsXmlHelper& GetRsXmlHelper() override { NotPartOfThis(); }
    std::unique_ptr<host::EaiXmlConverter> CreateEaiXmlConverter() override { NotPartOfThis(); }
    std::unique_ptr<host::IaVoucherService> CreateIaVoucherService() override { NotPartOfThis(); }
    std::unique_ptr<host::ProvisionPreCheck> CreateProvisionPreCheck() override { NotPartOfThis(); }
    std::unique_ptr<host::ZendaT> CreateZendaT() override { NotPartOfThis(); }
    void ShowMessage(std::string_view) override { NotPartOfThis(); }
};
