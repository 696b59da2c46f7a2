#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace fuzz {

/// Ends the process, which is a finding, when something that must hold does not.
inline void Require(bool holds, std::string_view what, std::string_view detail = {}) {
    if (holds) {
        return;
    }
    std::fprintf(stderr, "FINDING: %.*s\n%.*s\n", static_cast<int>(what.size()), what.data(),
                 static_cast<int>(detail.size()), detail.data());
    std::abort();
}

} // namespace fuzz
