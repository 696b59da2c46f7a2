#include "os/Variable.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>
#ifdef _WIN32
#include "text/Utf16.h"

#include <windows.h>
#else
#include <cstdlib>
#endif

namespace {

constexpr const char* name = "KOVRA_TEST_VARIABLE";

/// Sets the variable `name`, or takes it away.
void Set(const std::optional<std::string>& value) {
#ifdef _WIN32
    SetEnvironmentVariableW(text::ToUtf16<wchar_t>(name).c_str(),
                            value ? text::ToUtf16<wchar_t>(*value).c_str() : nullptr);
#else
    value ? setenv(name, value->c_str(), 1) : unsetenv(name);
#endif
}

TEST(Variable, HasItsValue) {
    Set("C:\\账套\\é.xml");
    EXPECT_EQ(os::Variable(name), "C:\\账套\\é.xml");
    Set(std::string(5'000, 'x'));
    EXPECT_EQ(os::Variable(name), std::string(5'000, 'x'));
    Set(std::nullopt);
}

TEST(Variable, ThatIsNotSetIsNothing) {
    Set(std::nullopt);
    EXPECT_EQ(os::Variable(name), std::nullopt);
}

TEST(Variable, MayBeEmpty) {
    Set("");
    EXPECT_EQ(os::Variable(name), "");
    Set(std::nullopt);
}

} // namespace
