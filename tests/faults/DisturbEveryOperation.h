#pragma once

#include "tests/faults/FailEveryOperation.h"
#include "tests/faults/ReenterAtEveryOperation.h"

namespace test {

/// Holds a call to the rules whatever happens at an operation that it asks of the host: that it fails, that what it
/// works on is lost, that the instance is called again from inside of it.
inline void DisturbEveryOperation(const PlayedCall& call) {
    FailEveryOperation(call);
    ReenterAtEveryOperation(call);
}

} // namespace test
