#include "import/messages/Figures.h"

#include <algorithm>

#include <fmt/format.h>

namespace importing {
namespace {

/// Sets a comma before each three digits of the whole part.
std::string WithCommas(std::string digits) {
    const std::size_t first = digits.starts_with('-') ? 1 : 0;
    for (std::size_t at = std::min(digits.find('.'), digits.size()); at > first + 3;) {
        at -= 3;
        digits.insert(at, 1, ',');
    }
    return digits;
}

} // namespace

std::string Grouped(std::uint64_t number) { return WithCommas(std::to_string(number)); }

std::string Amount(double amount) {
    const std::string digits = fmt::format("{:.2f}", amount);
    return WithCommas(digits == "-0.00" ? "0.00" : digits);
}

std::string Quantity(double quantity) {
    std::string digits = fmt::format("{:.6f}", quantity);
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.ends_with('.')) {
        digits.pop_back();
    }
    return WithCommas(digits == "-0" ? "0" : digits);
}

} // namespace importing
