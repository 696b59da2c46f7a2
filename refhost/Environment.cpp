#include "refhost/Environment.h"

#include "ModPub/RuntimeErrors.h"
#include "refhost/Connection.h"
#include "refhost/Recordset.h"
#include "refhost/eai/EaiHelper.h"
#include "refhost/ia/IaVoucherService.h"
#include "refhost/xml/Document.h"

#include <cstdio>
#include <utility>

namespace refhost {

Environment::Environment(Trace* trace, DatabaseOpener opener) : trace_(trace), opener_(std::move(opener)) {}

Environment::~Environment() = default;

std::unique_ptr<host::DOMDocument> Environment::CreateDOMDocument() { return xml::CreateDocument(); }

std::unique_ptr<host::Connection> Environment::CreateConnection() {
    return std::make_unique<Connection>(trace_, opener_);
}

std::unique_ptr<host::Recordset> Environment::CreateRecordset() { return std::make_unique<Recordset>(trace_); }

host::EaiHelper& Environment::GetEaiHelper() {
    if (!eaiHelper_) {
        eaiHelper_ = std::make_unique<EaiHelper>();
    }
    return *eaiHelper_;
}

host::RsXmlHelper& Environment::GetRsXmlHelper() { ModPub::RaiseRuntimeError(host::error_number::cannotCreateObject); }

std::unique_ptr<host::EaiXmlConverter> Environment::CreateEaiXmlConverter() {
    ModPub::RaiseRuntimeError(host::error_number::cannotCreateObject);
}

std::unique_ptr<host::IaVoucherService> Environment::CreateIaVoucherService() {
    return std::make_unique<IaVoucherService>();
}

std::unique_ptr<host::ProvisionPreCheck> Environment::CreateProvisionPreCheck() {
    ModPub::RaiseRuntimeError(host::error_number::cannotCreateObject);
}

std::unique_ptr<host::ZendaT> Environment::CreateZendaT() {
    ModPub::RaiseRuntimeError(host::error_number::cannotCreateObject);
}

void Environment::ShowMessage(std::string_view text) {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
}

} // namespace refhost
