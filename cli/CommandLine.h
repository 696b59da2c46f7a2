#pragma once

#include "cli/Console.h"
#include "cli/messages/Language.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

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
/// @param words the program's name first
Invocation ReadCommandLine(const std::vector<std::string>& words);

} // namespace cli
