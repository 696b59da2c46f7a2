#include "tests/support/com/UsedBytes.h"

#include <malloc.h>

namespace test {

std::int64_t UsedBytes() {
    std::int64_t bytes = 0;
    _HEAPINFO entry{};
    while (_heapwalk(&entry) == _HEAPOK) {
        if (entry._useflag == _USEDENTRY)
            bytes += static_cast<std::int64_t>(entry._size);
    }
    return bytes;
}

} // namespace test
