#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace test {

/// How a process ended and what it left.
struct Ended {
    /// The exit status, or -1 when a signal ended it.
    int status = -1;
    /// The signal that ended it, or 0.
    int signal = 0;
    /// The most memory that it held at a time, in bytes.
    long peakMemory = 0;
    std::string output;
    std::string error;
};

/// A process of its own. One that hangs is ended after some minutes and counts as failed.
class Process {
public:
    /// Runs `work` in a copy of this process; what it returns is the exit status.
    explicit Process(const std::function<int()>& work);
    /// Kills what still runs.
    ~Process();
    Process(Process&& other) noexcept;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void Kill() const;
    void Signal(int number) const;
    /// Waits for its end; output and error are not known.
    Ended Wait();

private:
    pid_t id_;
};

/// `kovra` at work in a folder, where its output goes to files as well.
class Program {
public:
    /// @param before runs in the new process before the program starts, for limits and the like
    Program(std::filesystem::path folder, std::vector<std::string> arguments, std::function<void()> before = {});

    void Kill() const { process_.Kill(); }
    void Signal(int number) const { process_.Signal(number); }
    Ended Wait();

private:
    std::filesystem::path folder_;
    Process process_;
};

/// The bytes of a file; nothing when there is none.
std::string ReadBytes(const std::filesystem::path& path);
void WriteBytes(const std::filesystem::path& path, std::string_view bytes);

} // namespace test
