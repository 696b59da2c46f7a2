#include "refhost/account/Batches.h"

namespace refhost {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

bool IsSeparator(std::string_view line) {
    const std::size_t first = line.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos) {
        return false;
    }
    const std::string_view word = line.substr(first, line.find_last_not_of(whiteSpace) - first + 1);
    return word == "GO" || word == "go" || word == "Go" || word == "gO";
}

} // namespace

std::vector<std::string> SplitBatches(std::string_view script) {
    std::vector<std::string> batches;
    const auto add = [&](std::size_t begin, std::size_t end) {
        const std::string_view batch = script.substr(begin, end - begin);
        if (batch.find_first_not_of(whiteSpace) != std::string_view::npos) {
            batches.emplace_back(batch);
        }
    };

    std::size_t batchBegin = 0;
    for (std::size_t lineBegin = 0; lineBegin < script.size();) {
        const std::size_t newline = script.find('\n', lineBegin);
        const std::size_t lineEnd = newline == std::string_view::npos ? script.size() : newline + 1;
        if (IsSeparator(script.substr(lineBegin, lineEnd - lineBegin))) {
            add(batchBegin, lineBegin);
            batchBegin = lineEnd;
        }
        lineBegin = lineEnd;
    }
    add(batchBegin, script.size());
    return batches;
}

} // namespace refhost
