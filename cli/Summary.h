#pragma once

#include "cli/Classes.h"
#include "cli/Console.h"
#include "cli/ImportLog.h"

namespace cli {

/// What the summary is told besides the log.
struct SummaryContext {
    const ImportClass& importClass;
    /// Whether the user interrupted the program.
    bool interrupted = false;
    /// Whether refusals are listed: not where a table on the same terminal has them already.
    bool listsRefusals = true;
    /// Whether standard input was the request, and empty.
    bool emptyInput = false;
};

/// Tells people what came of an import: what happened, the first refusals, and what looks like a mistake.
void Summarize(const ImportLog& log, const SummaryContext& context, Console& console);

/// A row's key as people read it: without the blanks and commas that empty values leave at its end.
std::string_view TrimmedKey(std::string_view key) noexcept;

/// An outcome's message without the line breaks at its end.
std::string_view TrimmedMessage(std::string_view message) noexcept;

} // namespace cli
