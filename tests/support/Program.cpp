#include "tests/support/Program.h"

#include "tests/support/Paths.h"

#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test {
namespace {

/// Longer than anything here takes under the slowest of the sanitizers.
constexpr unsigned patienceSeconds = 240;
constexpr int notStarted = 127;

void Redirect(int descriptor, const std::filesystem::path& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (file == -1 || dup2(file, descriptor) == -1) {
        _exit(notStarted);
    }
    close(file);
}

int RunProgram(const std::filesystem::path& folder, std::vector<std::string>& arguments,
               const std::function<void()>& before) {
    if (chdir(folder.c_str()) != 0) {
        return notStarted;
    }
    Redirect(STDOUT_FILENO, "out.txt");
    Redirect(STDERR_FILENO, "err.txt");
    std::vector<char*> words;
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    if (before) {
        before();
    }
    setenv("LC_ALL", "C", 1);
    execv(test::ProgramPath().c_str(), words.data());
    return notStarted;
}

} // namespace

Process::Process(const std::function<int()>& work) : id_(fork()) {
    if (id_ == -1) {
        throw std::runtime_error("no new process");
    }
    if (id_ == 0) {
        alarm(patienceSeconds);
        int status = notStarted;
        try {
            status = work();
        } catch (...) {
            // The copy must not go on with the tests.
        }
        _exit(status);
    }
}

Process::Process(Process&& other) noexcept : id_(std::exchange(other.id_, -1)) {}

Process::~Process() {
    if (id_ != -1) {
        Kill();
        waitpid(id_, nullptr, 0);
    }
}

void Process::Kill() const { Signal(SIGKILL); }

void Process::Signal(int number) const { kill(id_, number); }

Ended Process::Wait() {
    int status = 0;
    rusage usage{};
    if (wait4(std::exchange(id_, -1), &status, 0, &usage) == -1) {
        throw std::runtime_error("no such process");
    }
    Ended ended;
    ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    ended.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    ended.peakMemory = usage.ru_maxrss * 1024;
    return ended;
}

Program::Program(std::filesystem::path folder, std::vector<std::string> arguments, std::function<void()> before)
    : folder_(std::move(folder)), process_([&] {
          arguments.insert(arguments.begin(), "kovra");
          return RunProgram(folder_, arguments, before);
      }) {}

Ended Program::Wait() {
    Ended ended = process_.Wait();
    ended.output = ReadBytes(folder_ / "out.txt");
    ended.error = ReadBytes(folder_ / "err.txt");
    return ended;
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

void WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

} // namespace test
