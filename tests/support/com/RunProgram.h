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

/// A process at work, which is ended when it takes minutes.
class RunningCommand {
public:
    /// Runs a command line in `folder`, with its output and its error going to handles that it inherits; where there
    /// are none, to this process's own. Throws when it cannot be started.
    RunningCommand(const std::filesystem::path& folder, std::wstring commandLine, void* output = nullptr,
                   void* error = nullptr);
    ~RunningCommand();
    RunningCommand(const RunningCommand&) = delete;
    RunningCommand& operator=(const RunningCommand&) = delete;

    /// Waits for its end. @return its exit status
    unsigned long Wait() const;
    void* process() const noexcept { return process_; }

private:
    void* process_ = nullptr;
};

/// The kovra.exe beside this program, at work in `folder`.
class RunningProgram {
public:
    /// @param arguments as a command line has them
    RunningProgram(const std::filesystem::path& folder, const std::wstring& arguments);

    ProgramRun Wait() const;
    void* process() const noexcept { return command_.process(); }

private:
    std::filesystem::path folder_;
    RunningCommand command_;
};

/// Runs it to its end.
ProgramRun RunProgram(const std::filesystem::path& folder, const std::wstring& arguments);

/// Runs it with its output on a console that it inherits. @return its exit status
unsigned long RunProgramOn(void* console, const std::wstring& arguments);

} // namespace test
