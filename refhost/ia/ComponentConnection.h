#pragma once

#include "host/Environment.h"
#include "refhost/trace/HostCall.h"

#include <memory>
#include <string>

namespace refhost {

/// The voucher components' own connection to the login's account. It stays open from one component to the next, since
/// they are made anew for every document.
class ComponentConnection {
public:
    /// @param environment where the connection comes from; it outlives this object
    explicit ComponentConnection(host::Environment& environment) : environment_(environment) {}

    /// Runs `work` with the connection to the account of `login`; what it asks is marked as the host's own. An error
    /// goes on its way and drops the connection, so that the next use tries a new one.
    template <class Work> auto Use(const host::HostLogin& login, const Work& work) {
        const HostCall call;
        try {
            return work(Open(login.ConnectionString()));
        } catch (...) {
            connection_.reset();
            throw;
        }
    }

private:
    host::Connection& Open(const std::string& connectionString);

    host::Environment& environment_;
    std::unique_ptr<host::Connection> connection_;
    std::string connectionString_;
};

} // namespace refhost
