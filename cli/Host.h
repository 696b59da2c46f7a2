#pragma once

#include "host/Environment.h"
#include "host/HostLogin.h"
#include "refhost/ado/ConnectionLost.h"
#include "refhost/trace/Trace.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// What the classes run on: where their documents, connections and components come from, and the login.
class Host {
public:
    Host() = default;
    virtual ~Host() = default;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    virtual host::Environment& environment() = 0;
    /// The login of a file. Throws as `cli::ReadLogin`; it lives until the next call or as long as the host.
    virtual host::HostLogin& ReadLogin(const std::string& path) = 0;
};

/// The names of the hosts that this platform has; the first is the reference host.
std::vector<std::string> HostNames();

/// Hears of an operation that met the loss of its connection, before its error goes on; never throws.
using OnLoss = std::function<void(const refhost::ConnectionLost&)>;

/// Whether the reference host's databases commit as their connection strings say, or each commit is on the disk when it
/// is done. ADO's are a server's, which always waits for its disk.
enum class Commits { asTheyAreSet, durably };

/// The host of a name, or the reference host for the empty one.
/// @param trace where to note what is asked of the database, or nullptr; it outlives the host
/// @param onLoss of the reference host's databases; ADO tells no loss from other errors
std::unique_ptr<Host> OpenHost(std::string_view name, refhost::Trace* trace, OnLoss onLoss = {},
                               Commits commits = Commits::asTheyAreSet);

/// The reference host: documents, account databases and components of our own.
std::unique_ptr<Host> OpenReferenceHost(refhost::Trace* trace, OnLoss onLoss, Commits commits);

} // namespace cli
