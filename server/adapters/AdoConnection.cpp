#include "server/adapters/AdoConnection.h"

#include "host/Forwarding.h"
#include "server/adapters/ProgIds.h"

namespace server {

AdoConnection::AdoConnection() : connection_(DispatchObject::Create(progid::connection)) {}

void AdoConnection::Open(const std::string& connectionString, const std::string& userId, const std::string& password,
                         int options) {
    connection_.Call(L"Open", VariantHolder(connectionString), VariantHolder(userId), VariantHolder(password),
                     VariantHolder(options));
}

void AdoConnection::Execute(std::string_view commandText, int options) {
    connection_.Call(L"Execute", VariantHolder(commandText), VariantHolder::Missing(), VariantHolder(options));
}

void AdoConnection::BeginTrans() { connection_.Call(L"BeginTrans"); }
void AdoConnection::CommitTrans() { connection_.Call(L"CommitTrans"); }
void AdoConnection::RollbackTrans() { connection_.Call(L"RollbackTrans"); }

const DispatchObject& ComConnection(host::Connection& connection) {
    const auto* own = dynamic_cast<const AdoConnection*>(&host::Undecorated(connection));
    if (!own)
        RaiseTypeMismatch();
    return own->connection();
}

} // namespace server
