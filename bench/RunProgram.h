#pragma once

#include "bench/Measure.h"
#include "bench/imports/Import.h"

#include <string>
#include <vector>

namespace bench {

/// What a program took.
struct ProgramRun {
    /// Its peak of memory in bytes.
    double peak = 0;
    Time time;
};

/// Runs a program to its end, its standard output into the file `output`. Throws std::runtime_error when it fails.
ProgramRun RunProgram(std::vector<std::string> words, const std::string& output);

/// Makes an account, a login and a request of `rows` rows in `folder`.
/// @return the words of `program` (kovra) that import it
std::vector<std::string> PrepareImport(const Import& import, std::size_t rows, const std::string& folder,
                                       const std::string& program);

} // namespace bench
