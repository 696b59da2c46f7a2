#include "tests/support/com/WinesSurrogate.h"

#include "server/com/Platform.h"

#include <string_view>

#include <tlhelp32.h>

namespace test {
namespace {

constexpr const wchar_t* name = L"dllhost.exe";

} // namespace

WinesSurrogate::WinesSurrogate() {
    wchar_t system[MAX_PATH]{};
    wchar_t folder[MAX_PATH]{};
    if (GetSystemDirectoryW(system, MAX_PATH) == 0 || GetSystemWow64DirectoryW(folder, MAX_PATH) == 0)
        return;
    CreateDirectoryW(folder, nullptr);
    file_ = std::wstring(folder) + L"\\" + name;
    CopyFileW((std::wstring(system) + L"\\" + name).c_str(), file_.c_str(), TRUE);
}

WinesSurrogate::~WinesSurrogate() {
    const HANDLE processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(processes, &entry); more; more = Process32NextW(processes, &entry)) {
        if (std::wstring_view(entry.szExeFile) == name) {
            const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, entry.th32ProcessID);
            TerminateProcess(process, 0);
            CloseHandle(process);
        }
    }
    CloseHandle(processes);
}

bool WinesSurrogate::IsOfThisSize() const {
    DWORD type = 0;
    return file_.empty() ||
           (GetBinaryTypeW(file_.c_str(), &type) && type == (sizeof(void*) == 8 ? SCS_64BIT_BINARY : SCS_32BIT_BINARY));
}

} // namespace test
