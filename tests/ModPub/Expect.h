#pragma once

#include "host/Error.h"

#include <optional>

#include <gtest/gtest.h>

/// The number of the error that `action` raises, or nothing when it raises none.
template <class Action> std::optional<host::ErrorNumber> ErrorOf(Action&& action) {
    try {
        static_cast<void>(action());
    } catch (const host::Error& error) {
        return error.number();
    }
    return std::nullopt;
}
