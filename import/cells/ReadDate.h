#pragma once

#include "import/cells/Reading.h"
#include "import/reading/Cell.h"

namespace importing {

/// A date as people type it, as "YYYY-MM-DD": date cells, and texts and numbers of the forms 2024-01-05, 2024/1/5,
/// 2024.1.5, 2024年1月5日 and 20240105; a date with the day first is taken when only one reading gives a day. Refused
/// are dates with two readings (5/12/2024), years of two digits, days that are none, and numbers without a date's
/// format. A time of day is cut off.
Reading ReadDate(const Cell& cell);

} // namespace importing
