#include "server/com/ComError.h"
#include "tests/support/com/ImportService.h"

#include <string_view>

#include <gtest/gtest.h>
#include <shellapi.h>

int main(int argc, char** argv) {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    if (words && count == 3 && std::wstring_view(words[1]) == test::serviceWord)
        return test::RunImportService(words[2]);
    LocalFree(words);
    testing::InitGoogleTest(&argc, argv);
    // The tests use COM as an apartment-threaded client does.
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    const int result = RUN_ALL_TESTS();
    CoUninitialize();
    return result;
}
