#pragma once

#include <string>

#include <gtest/gtest.h>

namespace test {

/// Names the tests of a table after the member `name` of its rows, for INSTANTIATE_TEST_SUITE_P.
inline constexpr auto nameOfCase = [](const auto& info) { return std::string(info.param.name); };

} // namespace test
