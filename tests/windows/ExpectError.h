#pragma once

#include "host/Error.h"

#include <string_view>

#include <gtest/gtest.h>

namespace test {

/// Fails the running test unless `action` raises this error.
template <class Action> void ExpectError(host::ErrorNumber number, std::string_view description, Action&& action) {
    try {
        action();
        ADD_FAILURE() << "no error " << number;
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), number);
        EXPECT_EQ(error.description(), description);
    }
}

} // namespace test
