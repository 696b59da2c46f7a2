#pragma once

#include "cli/Classes.h"
#include "cli/ImportLog.h"
#include "cli/messages/Messages.h"

#include <cstddef>
#include <string>

namespace cli {

/// How the result of an import is written.
enum class ResultFormat {
    xml,   ///< the result value, exactly as `Transact` returned it
    table, ///< for people
    json,
};

/// The result as a table of outcomes; empty when there are none.
/// @param width columns of the terminal, or 0 for as wide as it comes
std::string ResultTable(const ImportLog& log, const Messages& messages, std::size_t width);

/// The result as one JSON object: `class`, `docid`, `proc`; of an error result `error` with `code` and `dsc`; else
/// `rows`, `accepted`, `refused`, `undone` (whether everything was rolled back) and `outcomes`, each with `row` (0 for
/// one of the request), `key`, `code` and `dsc`.
std::string ResultJson(const ImportLog& log, const ImportClass& importClass);

} // namespace cli
