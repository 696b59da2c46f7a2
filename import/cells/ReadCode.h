#pragma once

#include "import/cells/KnownCodes.h"
#include "import/cells/Reading.h"
#include "import/reading/Cell.h"

#include <cstddef>

namespace importing {

/// What a code column takes.
struct CodeRules {
    /// Characters, in UTF-16 units.
    std::size_t length = 0;
    /// The codes that the account has; nullptr where it has no list.
    const KnownCodes* known = nullptr;
    /// Whether a code that lost its leading zeros is mended.
    bool fixLeadingZeros = false;
};

/// A code in ASCII width without white space at its ends. Refused, with the code that was probably meant, are quotes,
/// exponents, codes that are too long, the letter O for a zero, missing leading zeros (unless they are to be mended),
/// and codes that the account does not have.
Reading ReadCode(const Cell& cell, const CodeRules& rules);

} // namespace importing
