#pragma once

#include "host/Error.h"
#include "server/com/BString.h"
#include "server/com/ComPtr.h"
#include "server/com/Utf16.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace test {

/// The run-time's descriptions of errors 91 and 13.
inline constexpr std::string_view objectNotSet = "对象变量或 With 块变量未设置";
inline constexpr std::string_view typeMismatch = "类型不匹配";

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
