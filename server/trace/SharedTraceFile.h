#pragma once

#include "refhost/trace/Trace.h"
#include "server/com/Platform.h"
#include "server/trace/TraceSettings.h"

namespace server {

/// A trace file that every instance in every process adds to, a whole line at a time. From the limit on it is put aside
/// as FILE.1, whose place it takes, and begun anew. What cannot be written is left out: nothing here ever fails.
class SharedTraceFile final : public refhost::TraceSink {
public:
    explicit SharedTraceFile(TraceSettings settings) noexcept;
    ~SharedTraceFile() override;

    void Add(std::string_view line) noexcept override;
    void Flush() override {}

private:
    void Open() noexcept;
    void Close() noexcept;
    bool IsFull() const noexcept;
    void PutAside() noexcept;

    TraceSettings settings_;
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

/// The trace that the machine's settings ask for, or nullptr: nothing is traced, or the trace cannot be made.
std::unique_ptr<refhost::Trace> OpenTrace() noexcept;

} // namespace server
