#pragma once

#include "host/Error.h"

namespace refhost {

/// The error with which a connection to the database is gone: whatever is asked of it after this fails too. A trap sees
/// an error like every other.
class ConnectionLost : public host::Error {
public:
    explicit ConnectionLost(const host::Error& error) : Error(error) {}
};

} // namespace refhost
