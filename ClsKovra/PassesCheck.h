#pragma once

#include "ModPub/ImportState.h"

#include <string>

namespace kovra {

/// Whether `check` finds nothing to refuse a row for. The message that it returns otherwise is recorded as the row's
/// outcome. An error refuses the row with the message found so far, usually the empty one; its own text is not
/// reported. Throws only what recording throws.
template <class Check> bool PassesCheck(ModPub::ImportState& state, const std::string& key, const Check& check) {
    std::string message;
    try {
        message = check();
        if (message.empty()) {
            return true;
        }
        state.AddRefused(key, message);
    } catch (...) {
        state.AddRefused(key, message);
    }
    return false;
}

} // namespace kovra
