#pragma once

// Every conversion of the run-time.
#include "ModPub/Dates.h"            // IWYU pragma: export
#include "ModPub/Numbers.h"          // IWYU pragma: export
#include "ModPub/RuntimeErrors.h"    // IWYU pragma: export
#include "ModPub/Text.h"             // IWYU pragma: export
#include "ModPub/ValueConversions.h" // IWYU pragma: export
