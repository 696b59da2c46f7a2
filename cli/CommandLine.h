#pragma once

#include "cli/Console.h"
#include "cli/messages/Language.h"

#include <functional>
#include <optional>

namespace cli {

/// What a command line asks for.
struct Invocation {
    Language language = Language::english;
    /// Runs the command and gives the exit status; empty when there is nothing to run.
    std::function<int(Console& console)> command;
    /// The exit status where there is nothing to run: help and version end well, everything else is a usage error.
    int status = 0;
};

/// Reads the command line. Help and version are written to standard output, what is wrong to standard error.
Invocation ReadCommandLine(int argc, const char* const* argv);

} // namespace cli
