#pragma once

#include "tests/support/rules/PlayedCall.h"

namespace test {

/// Runs the call once for every operation that it asks of the host, and at that operation calls `Transact` of the same
/// instance from inside, with another request and another login. The inner call must get the error result of an open
/// connection; the outer one must give the result, ask for the steps and leave the contents that the rules prescribe
/// for it alone. Prints how often it was entered again.
void ReenterAtEveryOperation(const PlayedCall& call);

} // namespace test
