#pragma once

#include "cli/Console.h"

#include <chrono>
#include <cstddef>
#include <string_view>

namespace cli {

/// The line of progress of a long import: from its second second on, five times a second at the most.
class Progress {
public:
    using Clock = std::chrono::steady_clock;

    explicit Progress(Console& console);

    /// Number `begun` of `of` has begun. `more` stands behind.
    void Show(std::size_t begun, std::size_t of, const Noun& noun, std::string_view more = {});

private:
    Console& console_;
    Clock::time_point start_;
    Clock::time_point next_;
};

/// The line itself: how many of how many are done, and how long the others take at that pace.
std::string ProgressLine(const Messages& messages, const Noun& noun, std::size_t done, std::size_t of,
                         std::chrono::milliseconds elapsed);

} // namespace cli
