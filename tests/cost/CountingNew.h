#pragma once

#include <cstdint>

namespace test_cost {

/// Allocations of C++ code since the program began. Linking this file's source has them counted.
std::int64_t Allocations();

} // namespace test_cost
