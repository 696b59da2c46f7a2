#include "tests/support/com/RegisteredLibrary.h"

#include "server/com/Utf16.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace test {

RegisteredLibrary::RegisteredLibrary(const wchar_t* file) : library_(LoadLibraryW(file)) {
    if (!library_)
        throw std::runtime_error(server::ToUtf8(file) + " cannot be loaded");
    EXPECT_EQ(Install(true, L"replace"), S_OK) << server::ToUtf8(file);
}

RegisteredLibrary::~RegisteredLibrary() {
    EXPECT_EQ(Install(false, nullptr), S_OK);
    FreeLibrary(library_);
}

HRESULT RegisteredLibrary::Install(bool install, const wchar_t* words) const {
    return Entry<HRESULT(STDAPICALLTYPE*)(BOOL, const wchar_t*)>("DllInstall")(install ? TRUE : FALSE, words);
}

HRESULT RegisteredLibrary::CanUnload() const { return Entry<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")(); }

} // namespace test
