#include "refhost/Environment.h"

#include "os/Files.h"
#include "os/Variable.h"
#include "refhost/ado/Connection.h"
#include "refhost/ado/Recordset.h"
#include "refhost/eai/EaiHelper.h"
#include "refhost/eai/EaiXmlConverter.h"
#include "refhost/ia/IaVoucherService.h"
#include "refhost/ia/ProvisionPreCheck.h"
#include "refhost/ia/RsXmlHelper.h"
#include "refhost/ia/ZendaT.h"
#include "refhost/xml/Document.h"
#include "refhost/xml/FileText.h"

#include <cstdio>
#include <filesystem>
#include <utility>

namespace refhost {
namespace {

/// A mapping file of the user's own, from the folder that KOVRA_MAPPINGS names.
std::optional<std::string> OwnMapping(const std::string& name) {
    const std::optional<std::string> folder = os::Variable("KOVRA_MAPPINGS");
    if (!folder) {
        return std::nullopt;
    }
    const std::filesystem::path path = os::PathOf(*folder) / os::PathOf(name);
    return std::filesystem::exists(path) ? std::optional(xml::ReadXmlFile(os::NameOf(path))) : std::nullopt;
}

} // namespace

Environment::Environment(DatabaseOpener opener)
    : opener_(std::move(opener)), mappings_(*this, OwnMapping), componentConnection_(*this) {}

Environment::~Environment() = default;

std::unique_ptr<host::DOMDocument> Environment::CreateDOMDocument() { return xml::CreateDocument(repeatedTexts_); }

std::unique_ptr<host::Connection> Environment::CreateConnection() { return std::make_unique<Connection>(opener_); }

std::unique_ptr<host::Recordset> Environment::CreateRecordset() { return std::make_unique<Recordset>(); }

host::EaiHelper& Environment::GetEaiHelper() {
    if (!eaiHelper_) {
        eaiHelper_ = std::make_unique<EaiHelper>();
    }
    return *eaiHelper_;
}

host::RsXmlHelper& Environment::GetRsXmlHelper() {
    if (!rsXmlHelper_) {
        rsXmlHelper_ = std::make_unique<RsXmlHelper>(*this);
    }
    return *rsXmlHelper_;
}

std::unique_ptr<host::EaiXmlConverter> Environment::CreateEaiXmlConverter() {
    return std::make_unique<EaiXmlConverter>(*this, mappings_);
}

std::unique_ptr<host::IaVoucherService> Environment::CreateIaVoucherService() {
    return std::make_unique<IaVoucherService>(*this, componentConnection_);
}

std::unique_ptr<host::ProvisionPreCheck> Environment::CreateProvisionPreCheck() {
    return std::make_unique<ProvisionPreCheck>(*this, componentConnection_);
}

std::unique_ptr<host::ZendaT> Environment::CreateZendaT() { return std::make_unique<ZendaT>(*this); }

void Environment::ShowMessage(std::string_view text) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
}

} // namespace refhost
