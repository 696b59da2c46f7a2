#pragma once

#include "host/Error.h"

#include <utility>

namespace test {

/// The error that `action` raises; number 0 and no description when it raises none.
template <class Action> host::Error ErrorOf(Action&& action) {
    try {
        static_cast<void>(std::forward<Action>(action)());
    } catch (const host::Error& error) {
        return error;
    }
    return {0, ""};
}

/// Its number, 0 when there is none.
template <class Action> host::ErrorNumber ErrorNumberOf(Action&& action) {
    return ErrorOf(std::forward<Action>(action)).number();
}

} // namespace test
