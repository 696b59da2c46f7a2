#pragma once

#include <functional>

namespace bench {

/// Time of one run, in seconds.
struct Time {
    /// On the clock.
    double wall = 0;
    /// Of the processor, the kernel's part included: what other programs do at the same time changes it little.
    double processor = 0;
};

Time Measure(const std::function<void()>& run);
/// The same with the processor's time of this thread alone.
Time MeasureThread(const std::function<void()>& run);

} // namespace bench
