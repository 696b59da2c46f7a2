#pragma once

#include "cli/Console.h"
#include "import/outcome/Outcome.h"

#include <string>

namespace cli {

/// Tells people what came of an import: what is in or would be, with sums, what was corrected, what is refused by
/// reason with the first cells, and what to do next. Where nothing of the file may be imported, why.
/// @param login the login file, for the command that takes the import back
void TellImport(const importing::Outcome& outcome, const std::string& login, Console& console);

/// What is wrong when nothing of the file may be imported; for those who want errors alone.
void TellFaults(const importing::Outcome& outcome, Console& console);

/// The outcome as one JSON object, each refused row with its reasons.
std::string ImportJson(const importing::Outcome& outcome, Language language);

} // namespace cli
