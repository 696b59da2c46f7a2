#include "tests/support/ado/TraceFile.h"

#include "server/com/Platform.h"
#include "server/com/Utf16.h"

#include <mutex>
#include <string>

namespace test {

namespace {

std::string TracePath() {
    wchar_t path[MAX_PATH];
    const DWORD length = GetEnvironmentVariableW(L"KOVRA_ADO_TRACE", path, MAX_PATH);
    return server::ToUtf8({path, length});
}

bool ComponentAtWork() {
    const HMODULE components = GetModuleHandleW(L"KovraHost.dll");
    const FARPROC active = components ? GetProcAddress(components, "KovraHostCallActive") : nullptr;
    return active && reinterpret_cast<int (*)()>(reinterpret_cast<void*>(active))() != 0;
}

} // namespace

std::shared_ptr<refhost::Trace> TraceFile() {
    static std::mutex mutex;
    static std::string openPath;
    static std::weak_ptr<refhost::Trace> open;

    const std::string path = TracePath();
    if (path.empty())
        return nullptr;
    const std::lock_guard lock(mutex);
    std::shared_ptr<refhost::Trace> trace = open.lock();
    if (!trace || openPath != path) {
        trace = std::make_shared<refhost::Trace>(path, refhost::Trace::Begin::append);
        open = trace;
        openPath = path;
    }
    return trace;
}

ComponentMark::ComponentMark() {
    if (ComponentAtWork())
        mark_.emplace();
}

} // namespace test
