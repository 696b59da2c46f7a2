#include "tests/support/com/RunProgram.h"

#include "server/com/Platform.h"
#include "tests/support/TestAccount.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace test {
namespace {

/// A file that another process writes its output to. The one before may have ended and not let go of it yet.
class OutputFile {
public:
    explicit OutputFile(const std::filesystem::path& path) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        handle_ = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle_ == INVALID_HANDLE_VALUE) {
            throw std::runtime_error("a command's output cannot be written: " + path.string());
        }
    }
    ~OutputFile() { CloseHandle(handle_); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    HANDLE handle() const noexcept { return handle_; }

private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

std::filesystem::path OwnFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).parent_path();
}

std::wstring Program() { return L"\"" + (OwnFolder() / "kovra.exe").wstring() + L"\" "; }

constexpr const wchar_t* outputFile = L"out.txt";
constexpr const wchar_t* errorFile = L"err.txt";

} // namespace

RunningCommand::RunningCommand(const std::filesystem::path& folder, std::wstring commandLine, void* output,
                               void* error) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (output) {
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
        startup.hStdOutput = output;
        startup.hStdError = error;
    }
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, output ? TRUE : FALSE, 0, nullptr,
                        folder.c_str(), &startup, &process)) {
        throw std::runtime_error("a command cannot be run");
    }
    CloseHandle(process.hThread);
    process_ = process.hProcess;
}

RunningCommand::~RunningCommand() {
    // One that has ended stays as it is.
    TerminateProcess(process_, 1);
    CloseHandle(process_);
}

unsigned long RunningCommand::Wait() const {
    constexpr DWORD milliseconds = 300'000;
    EXPECT_EQ(WaitForSingleObject(process_, milliseconds), WAIT_OBJECT_0) << "a command does not end";
    DWORD status = 0;
    EXPECT_TRUE(GetExitCodeProcess(process_, &status));
    return status;
}

RunningProgram::RunningProgram(const std::filesystem::path& folder, const std::wstring& arguments)
    : folder_(folder), command_(folder, Program() + L"--lang en " + arguments, OutputFile(folder / outputFile).handle(),
                                OutputFile(folder / errorFile).handle()) {}

ProgramRun RunningProgram::Wait() const {
    const unsigned long status = command_.Wait();
    return {status, ReadText(folder_ / outputFile), ReadText(folder_ / errorFile)};
}

ProgramRun RunProgram(const std::filesystem::path& folder, const std::wstring& arguments) {
    return RunningProgram(folder, arguments).Wait();
}

unsigned long RunProgramOn(void* console, const std::wstring& arguments) {
    return RunningCommand(OwnFolder(), Program() + arguments, console, console).Wait();
}

} // namespace test
