#pragma once

#include <malloc.h>

/// Bytes that are in use, whether from the heap or mapped.
inline double AllocatedBytes() {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}
