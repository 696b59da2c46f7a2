#pragma once

#include "ModPub/RuntimeErrors.h"

#include <string>

namespace ModPub {

/// Ends a request that is written in one transaction, because its observer asked to stop: the run-time's error 18.
class Interruption : public host::Error {
public:
    Interruption()
        : Error(host::error_number::userInterrupt,
                std::string(RuntimeErrorDescription(host::error_number::userInterrupt))) {}
};

} // namespace ModPub
