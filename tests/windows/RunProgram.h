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

/// Runs it with its output on a console that it inherits. @return its exit status
unsigned long RunProgramOn(void* console, const std::wstring& arguments);

} // namespace test
