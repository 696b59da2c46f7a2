#include "refhost/ia/ComponentConnection.h"

namespace refhost {

host::Connection& ComponentConnection::Open(const std::string& connectionString) {
    if (!connection_ || connectionString != connectionString_) {
        connection_ = environment_.CreateConnection();
        connectionString_ = connectionString;
        connection_->Open(connectionString, "", "", host::command_option::unspecified);
    }
    return *connection_;
}

} // namespace refhost
