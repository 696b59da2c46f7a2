#pragma once

#include <string>

namespace cli {

/// The program's version and, a line each, those of the libraries that it runs with.
std::string VersionText();

} // namespace cli
