#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace bench {

/// The middle one of what `value` gives of the rounds.
template <class Round, class Value> double Middle(const std::vector<Round>& rounds, const Value& value) {
    std::vector<double> values;
    for (const Round& round : rounds) {
        values.push_back(value(round));
    }
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

} // namespace bench
