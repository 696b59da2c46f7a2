#include "cli/Progress.h"

#include <algorithm>

namespace cli {

Progress::Progress(Console& console)
    : console_(console), start_(Clock::now()), next_(start_ + std::chrono::seconds(1)) {}

void Progress::Show(std::size_t begun, std::size_t of, const Noun& noun, std::string_view more) {
    const Clock::time_point now = Clock::now();
    if (now < next_) {
        return;
    }
    next_ = now + std::chrono::milliseconds(200);
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(now - start_);
    console_.ShowProgress(ProgressLine(console_.messages(), noun, begun - 1, of, elapsed).append(more));
}

std::string ProgressLine(const Messages& messages, const Noun& noun, std::size_t done, std::size_t of,
                         std::chrono::milliseconds elapsed) {
    const SummaryTexts& texts = messages.summary;
    std::string line = Fill(texts.progress, Grouped(done), Count(of, noun));
    if (done > 0) {
        const auto left = static_cast<std::size_t>(elapsed.count()) * (of - done) / done / 1000;
        const std::string time =
            left < 120 ? Fill(texts.seconds, std::max<std::size_t>(left, 1)) : Fill(texts.minutes, (left + 59) / 60);
        line += Fill(texts.timeLeft, time);
    }
    return line;
}

} // namespace cli
