#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace server {

/// What the machine's administrator or the user asks to be traced.
struct TraceSettings {
    std::wstring file;
    /// Whether each line tells how long its operation took.
    bool times = false;
    /// From how many bytes on the file is put aside.
    std::uint64_t limit = 16 * 1024 * 1024;
};

/// The settings of the first place that names a file: the environment variables KOVRA_TRACE, KOVRA_TRACE_TIMES (any
/// value) and KOVRA_TRACE_LIMIT; then the values `Trace` (text), `TraceTimes` (number, not 0) and `TraceLimit` (number)
/// of HKCU\Software\Kovra, then those of HKLM\Software\Kovra, both of the 64-bit registry. Nothing where no place does:
/// nothing is traced then.
std::optional<TraceSettings> ReadTraceSettings();

} // namespace server
