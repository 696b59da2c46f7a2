#pragma once

#include "import/cells/Reading.h"
#include "import/reading/Cell.h"

namespace importing {

/// A number as people type it, as plain digits with a point: full-width digits, a currency sign (¥, ￥, 元), blanks,
/// commas that group thousands, and (50) and 50- for a negative number are corrected. Refused are a comma that does not
/// group, a percentage, an exponent in a text, and everything else that is no number.
Reading ReadNumber(const Cell& cell);

} // namespace importing
