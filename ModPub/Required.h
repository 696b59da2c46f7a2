#pragma once

#include "ModPub/RuntimeErrors.h"
#include "host/Error.h"

#include <memory>

namespace ModPub {

/// The object behind `object`. Throws the run-time's error 91 when there is none.
template <class Object> Object& Required(const std::unique_ptr<Object>& object) {
    if (!object) {
        RaiseRuntimeError(host::error_number::objectNotSet);
    }
    return *object;
}

} // namespace ModPub
