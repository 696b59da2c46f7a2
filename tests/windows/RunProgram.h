#pragma once

#include <filesystem>
#include <string>

namespace test {

/// What came of a run of kovra.exe.
struct ProgramRun {
    unsigned long status = 0;
    std::string output;
    std::string error;
};

/// Runs the kovra.exe beside this program in `folder`.
/// @param arguments as a command line has them
ProgramRun RunProgram(const std::filesystem::path& folder, const std::wstring& arguments);

} // namespace test
