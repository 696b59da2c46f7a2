#pragma once

#include "host/Error.h"
#include "server/com/BString.h"
#include "server/com/ComPtr.h"
#include "server/com/Utf16.h"

#include <string>
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

/// The description of the thread's error information object, which is taken away.
inline std::string ErrorDescription() {
    server::ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, information.Put()) != S_OK)
        return "no error information object";
    server::BString description;
    information->GetDescription(description.Put());
    return server::ToUtf8(description.View());
}

} // namespace test
