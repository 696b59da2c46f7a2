#pragma once

#include <filesystem>
#include <string>

// Where the build put things; in one source alone, so that no other depends on the folder that it is built in.
namespace test {

/// The folder that holds the sources, absolute.
std::filesystem::path SourceFolder();

/// The program `kovra`: the one that was built, or the one that the environment variable KOVRA_TEST_PROGRAM names.
/// Empty in the tests for Windows, which call the libraries.
std::string ProgramPath();

/// Whether that program is the one for Windows, run by Wine.
bool ProgramIsForWindows();

/// The tests' ODBC driver over the embedded account database. Empty in the tests for Windows.
std::string OdbcDriverPath();

} // namespace test
