#pragma once

#include <filesystem>
#include <string>

// Where the build put things; in one source alone, so that no other depends on the folder that it is built in.
namespace test {

/// The folder that holds the sources, absolute.
std::filesystem::path SourceFolder();

/// The program `kovra`. Empty in the tests for Windows, which call the libraries.
std::string ProgramPath();

/// The tests' ODBC driver over the embedded account database. Empty in the tests for Windows.
std::string OdbcDriverPath();

} // namespace test
