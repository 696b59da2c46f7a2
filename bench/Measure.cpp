#include "bench/Measure.h"

#include <ctime>

namespace bench {
namespace {

double Read(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

Time MeasureBy(clockid_t processorClock, const std::function<void()>& run) {
    const double processor = Read(processorClock);
    const double wall = Read(CLOCK_MONOTONIC);
    run();
    const double wallAfter = Read(CLOCK_MONOTONIC);
    return {wallAfter - wall, Read(processorClock) - processor};
}

} // namespace

Time Measure(const std::function<void()>& run) { return MeasureBy(CLOCK_PROCESS_CPUTIME_ID, run); }

Time MeasureThread(const std::function<void()>& run) { return MeasureBy(CLOCK_THREAD_CPUTIME_ID, run); }

} // namespace bench
