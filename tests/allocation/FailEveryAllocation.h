#pragma once

#include "tests/support/rules/PlayedCall.h"

namespace test {

/// Runs the call once for every allocation that fails, and once for every allocation from which on all fail; where the
/// database's do not count, which makes slow calls, for every tenth of the latter, and under a sanitizer for every
/// third of the former. A single failure is error 7 at a step of the call, or between two: the result and the contents
/// must be what the rules prescribe for an error there. Without memory from some step on they must be what the rules
/// prescribe for one of the steps; the result may be the empty text as well. Prints how many allocations failed.
/// @param inDatabase whether the allocations of the database count, or those of the class and the host's components
///        alone
void FailEveryAllocation(const PlayedCall& call, bool inDatabase = true);

} // namespace test
