#pragma once

#include <cstddef>

namespace test {

/// The allocations (`operator new` of every form) of this thread, counted while it is watched, one or more of which
/// fail. This program replaces the operators for that.
class FailingNew {
public:
    enum class Mode {
        /// One allocation fails.
        once,
        /// Every allocation fails from one on.
        forever,
    };

    /// Counts from here on.
    /// @param at the first allocation that fails, counted from 1; 0 for none
    static void Watch(std::size_t at, Mode mode);
    /// Whether an allocation has failed since `Watch`.
    static bool Failed();
    /// Stops counting and failing.
    /// @return the number of allocations asked for
    static std::size_t Stop();

    /// As long as it lives, nothing is counted and nothing fails.
    class Pause {
    public:
        Pause() noexcept;
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        bool wasWatching_;
    };
};

} // namespace test
