#include "tests/windows/RunProgram.h"

#include "server/com/Platform.h"
#include "tests/support/TestAccount.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace test {
namespace {

/// A file that another process writes its output to.
class OutputFile {
public:
    explicit OutputFile(const std::filesystem::path& path) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        handle_ = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
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

std::wstring Program() { return L"\"" + (OwnFolder() / "kovra.exe").wstring() + L"\""; }

/// Runs a command line in a folder. @return its exit status
unsigned long RunIn(const std::filesystem::path& folder, std::wstring commandLine, HANDLE output, HANDLE error) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = output;
    startup.hStdError = error;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &startup,
                        &process)) {
        throw std::runtime_error("kovra.exe cannot be run");
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &status));
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
}

} // namespace

unsigned long RunProgramOn(void* console, const std::wstring& arguments) {
    return RunIn(OwnFolder(), Program() + L" " + arguments, console, console);
}

ProgramRun RunProgram(const std::filesystem::path& folder, const std::wstring& arguments) {
    ProgramRun run;
    {
        const OutputFile output(folder / "out.txt");
        const OutputFile error(folder / "err.txt");
        run.status = RunIn(folder, Program() + L" --lang en " + arguments, output.handle(), error.handle());
    }
    run.output = ReadText(folder / "out.txt");
    run.error = ReadText(folder / "err.txt");
    return run;
}

} // namespace test
