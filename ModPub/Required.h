#pragma once

#include "ModPub/RuntimeErrors.h"
#include "host/Error.h"

namespace ModPub {

/// The object behind `object`, a `unique_ptr` or `shared_ptr`. Throws the run-time's error 91 when there is none.
template <class Pointer> typename Pointer::element_type& Required(const Pointer& object) {
    if (!object) {
        RaiseRuntimeError(host::error_number::objectNotSet);
    }
    return *object;
}

} // namespace ModPub
