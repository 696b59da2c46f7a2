#pragma once

#include "tests/support/rules/PlayedCall.h"

namespace test {

/// Runs the call undisturbed, then once for every operation that fails by itself, and once more for every operation at
/// which a connection or the integration helper is lost. Each run must give the result, ask for the steps and leave the
/// contents that the rules prescribe, with no transaction open. Prints how many operations failed.
void FailEveryOperation(const PlayedCall& call);

} // namespace test
