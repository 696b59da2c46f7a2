#pragma once

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace fuzz {

/// Ends the process, which is a finding, when something that must hold does not.
inline void Require(bool holds, std::string_view what, std::string_view detail = {}) {
    if (holds) {
        return;
    }
    std::cerr << "FINDING: " << what << '\n' << detail << std::endl;
    std::abort();
}

} // namespace fuzz
