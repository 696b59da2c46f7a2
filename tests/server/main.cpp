#include "server/com/ComError.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // The tests use COM as an apartment-threaded client does.
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    const int result = RUN_ALL_TESTS();
    CoUninitialize();
    return result;
}
