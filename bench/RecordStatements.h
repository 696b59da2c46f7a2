#pragma once

#include "bench/imports/Import.h"

#include <string>
#include <vector>

namespace bench {

/// Every statement that the import sends for a request, in order, those that begin and commit transactions included.
/// Throws as `RunImport`.
std::vector<std::string> RecordStatements(const Import& import, std::size_t rows, const std::string& request);

} // namespace bench
