#pragma once

#include <cstdint>

namespace bench {

/// What this process asked of the system for its files. A program that links `CountedSystemCalls` has its libraries'
/// calls pass through here.
struct SystemCalls {
    std::int64_t locks = 0;  ///< fcntl, every kind
    std::int64_t writes = 0; ///< pwrite
    std::int64_t reads = 0;  ///< pread
    std::int64_t syncs = 0;  ///< fsync, fdatasync
    std::int64_t bytesWritten = 0;
};

/// The calls since the process began.
SystemCalls CountedSystemCalls();
SystemCalls operator-(const SystemCalls& left, const SystemCalls& right);

} // namespace bench
