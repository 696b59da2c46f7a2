#pragma once

#include <cstdint>

namespace test_cost {

// Linking this file's source has the memory of C++ code counted.

/// Allocations since the program began.
std::int64_t Allocations();

/// Bytes that are allocated at present, and the most that were since `BeginPeak`.
std::int64_t LiveBytes();
std::int64_t PeakBytes();
void BeginPeak();

} // namespace test_cost
