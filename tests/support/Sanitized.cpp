#include "tests/support/Sanitized.h"

namespace test {

#ifdef KOVRA_SANITIZED
const bool sanitized = true;
#else
const bool sanitized = false;
#endif

} // namespace test
