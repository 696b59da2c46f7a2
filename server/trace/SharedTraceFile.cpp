#include "server/trace/SharedTraceFile.h"

#include <exception>
#include <utility>

namespace server {

SharedTraceFile::SharedTraceFile(TraceSettings settings) noexcept : settings_(std::move(settings)) { Open(); }

SharedTraceFile::~SharedTraceFile() { Close(); }

void SharedTraceFile::Add(std::string_view line) noexcept {
    if (IsFull()) {
        PutAside();
    }
    // Opened for appending, the system puts each write behind the others, whoever makes them.
    DWORD written = 0;
    WriteFile(file_, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

void SharedTraceFile::Open() noexcept {
    file_ = CreateFileW(settings_.file.c_str(), FILE_APPEND_DATA | FILE_READ_ATTRIBUTES,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr);
}

void SharedTraceFile::Close() noexcept {
    if (file_ != INVALID_HANDLE_VALUE) {
        CloseHandle(file_);
    }
}

bool SharedTraceFile::IsFull() const noexcept {
    LARGE_INTEGER size{};
    return GetFileSizeEx(file_, &size) && static_cast<std::uint64_t>(size.QuadPart) >= settings_.limit;
}

void SharedTraceFile::PutAside() noexcept {
    Close();
    Open();
    // Another process may have put it aside since.
    if (!IsFull()) {
        return;
    }
    Close();
    try {
        MoveFileExW(settings_.file.c_str(), (settings_.file + L".1").c_str(), MOVEFILE_REPLACE_EXISTING);
    } catch (const std::exception&) {
        // Without memory for the name it goes on growing.
    }
    Open();
}

std::unique_ptr<refhost::Trace> OpenTrace() noexcept {
    try {
        std::optional<TraceSettings> settings = ReadTraceSettings();
        if (!settings) {
            return nullptr;
        }
        const auto times = settings->times ? refhost::Trace::Times::told : refhost::Trace::Times::untold;
        return std::make_unique<refhost::Trace>(std::make_unique<SharedTraceFile>(*std::move(settings)), times);
    } catch (const std::exception&) {
        return nullptr;
    }
}

} // namespace server
