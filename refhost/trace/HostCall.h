#pragma once

namespace refhost {

/// Marks, as long as it lives, what this thread asks of the database as asked by a host component for itself.
class HostCall {
public:
    HostCall() noexcept { ++living_; }
    ~HostCall() { --living_; }
    HostCall(const HostCall&) = delete;
    HostCall& operator=(const HostCall&) = delete;

    /// Whether one lives on this thread.
    static bool Active() noexcept { return living_ > 0; }

private:
    static inline thread_local int living_ = 0;
};

} // namespace refhost
