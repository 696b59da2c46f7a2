#include "bench/imports/SystemCalls.h"

#include <atomic>
#include <cstdarg>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic<std::int64_t> locks;
std::atomic<std::int64_t> writes;
std::atomic<std::int64_t> reads;
std::atomic<std::int64_t> syncs;
std::atomic<std::int64_t> bytesWritten;

int CountLock(int file, int command, void* argument) {
    ++locks;
    return static_cast<int>(syscall(SYS_fcntl, file, command, argument));
}

int CountSync(long number, int file) {
    ++syncs;
    return static_cast<int>(syscall(number, file));
}

} // namespace

// A program's own functions go before those of the C library, for its libraries too.
extern "C" {

int fcntl(int file, int command, ...) {
    va_list list;
    va_start(list, command);
    void* argument = va_arg(list, void*);
    va_end(list);
    return CountLock(file, command, argument);
}

int fcntl64(int file, int command, ...) {
    va_list list;
    va_start(list, command);
    void* argument = va_arg(list, void*);
    va_end(list);
    return CountLock(file, command, argument);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset) {
    ++writes;
    bytesWritten += static_cast<std::int64_t>(count);
    return syscall(SYS_pwrite64, file, bytes, count, offset);
}

ssize_t pread64(int file, void* bytes, size_t count, off64_t offset) {
    ++reads;
    return syscall(SYS_pread64, file, bytes, count, offset);
}

int fsync(int file) { return CountSync(SYS_fsync, file); }

int fdatasync(int file) { return CountSync(SYS_fdatasync, file); }
}

namespace bench {

SystemCalls CountedSystemCalls() { return {locks, writes, reads, syncs, bytesWritten}; }

SystemCalls operator-(const SystemCalls& left, const SystemCalls& right) {
    return {left.locks - right.locks, left.writes - right.writes, left.reads - right.reads, left.syncs - right.syncs,
            left.bytesWritten - right.bytesWritten};
}

} // namespace bench
