#pragma once

#include "import/cells/Reading.h"
#include "import/reading/Cell.h"

#include <cstddef>

namespace importing {

/// What a text column takes.
struct TextRules {
    /// Characters, in UTF-16 units.
    std::size_t length = 0;
    /// The class compares the value with a name of the account, so a quote cannot be doubled.
    bool compared = false;
};

/// A text without white space at its ends. Refused are one that is longer than its column, one with a character that
/// the account's code page lacks, and a quote where the class compares the value.
Reading ReadText(const Cell& cell, const TextRules& rules);

} // namespace importing
