#pragma once

#include <cstdint>

namespace test {

/// The bytes in use of the heap that this program and the libraries share: that of the C run-time.
std::int64_t UsedBytes();

} // namespace test
