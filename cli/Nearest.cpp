#include "cli/Nearest.h"

#include "ModPub/Text.h"
#include "import/cells/KnownCodes.h"

namespace cli {

std::string Nearest(std::string_view name, const std::vector<std::string>& names) {
    constexpr std::size_t most = 2;
    const std::string folded = ModPub::UpperCase(name);
    std::string nearest;
    std::size_t best = most + 1;
    for (const std::string& candidate : names) {
        const std::string upper = ModPub::UpperCase(candidate);
        // Short names are near to too many others.
        const std::size_t distance = importing::EditDistance(folded, upper, most);
        if (distance < best && distance * 3 < upper.size()) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace cli
