#pragma once

#include "import/outcome/Outcome.h"

#include <cstddef>
#include <string>
#include <vector>

namespace importing {

/// One reason why rows are refused, or are worth a look.
struct Reason {
    /// The words, with "…" where they differ from row to row.
    std::string words;
    /// Said by the class itself; the words are then its own in every language.
    bool byClass = false;
    /// How often: cells of the checks, rows of the class.
    std::size_t count = 0;
    /// The first places in the file's order: cells ("C17"), or lines ("17") for a row as a whole.
    std::vector<std::string> places;
};

/// The refusals grouped by reason, the most frequent first; among equals in the file's order.
/// @param most how many places each reason lists
std::vector<Reason> ReasonsOfRefusals(const Outcome& outcome, Language language, std::size_t most);

/// The warnings likewise.
std::vector<Reason> ReasonsOfWarnings(const Outcome& outcome, Language language, std::size_t most);

/// Where a finding is: "C17", or "17" for a row as a whole.
std::string PlaceOf(const Row& row, const Finding& finding);

} // namespace importing
