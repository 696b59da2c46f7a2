#include "bench/Measure.h"

#include <ctime>

namespace bench {
namespace {

double Read(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace

Time Measure(const std::function<void()>& run) {
    const double wall = Read(CLOCK_MONOTONIC);
    const double processor = Read(CLOCK_PROCESS_CPUTIME_ID);
    run();
    return {Read(CLOCK_MONOTONIC) - wall, Read(CLOCK_PROCESS_CPUTIME_ID) - processor};
}

} // namespace bench
