#pragma once

#include "host/Database.h"
#include "server/com/DispatchObject.h"

namespace server {

/// An ADO connection.
class AdoConnection final : public host::Connection {
public:
    /// A new connection. Throws error 429 without ADO.
    AdoConnection();
    /// A connection that exists already.
    explicit AdoConnection(DispatchObject connection) noexcept : connection_(std::move(connection)) {}

    const DispatchObject& connection() const noexcept { return connection_; }
    /// Puts another connection behind this handle, or none.
    void Hold(DispatchObject connection) noexcept { connection_ = std::move(connection); }

    void Open(const std::string& connectionString, const std::string& userId, const std::string& password,
              int options) override;
    void Execute(std::string_view commandText, int options) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

private:
    DispatchObject connection_;
};

/// The COM object behind `connection`. Throws error 13 for a connection that is not ADO's.
const DispatchObject& ComConnection(host::Connection& connection);

} // namespace server
