// What the libraries say of themselves in their version resources.
#include "server/com/Platform.h"
#include "server/com/Utf16.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// The version resource of a file in this program's folder.
class Version {
public:
    explicit Version(const wchar_t* file) {
        DWORD unused = 0;
        data_.resize(GetFileVersionInfoSizeW(file, &unused));
        EXPECT_TRUE(!data_.empty() && GetFileVersionInfoW(file, 0, static_cast<DWORD>(data_.size()), data_.data()));
    }

    std::wstring Text(const std::wstring& name) const {
        const auto [text, size] = Find(L"\\StringFileInfo\\080404B0\\" + name);
        return size == 0 ? std::wstring() : std::wstring(static_cast<const wchar_t*>(text), size - 1);
    }
    const VS_FIXEDFILEINFO& Fixed() const { return *static_cast<const VS_FIXEDFILEINFO*>(Find(L"\\").first); }

private:
    std::pair<const void*, UINT> Find(const std::wstring& path) const {
        void* found = nullptr;
        UINT size = 0;
        EXPECT_TRUE(VerQueryValueW(data_.data(), path.c_str(), &found, &size)) << server::ToUtf8(path);
        return {found, size};
    }

    std::vector<BYTE> data_;
};

std::wstring Dotted(DWORD high, DWORD low) {
    return std::to_wstring(HIWORD(high)) + L"." + std::to_wstring(LOWORD(high)) + L"." + std::to_wstring(HIWORD(low));
}

} // namespace

TEST(VersionResource, IsCompleteInBothLibraries) {
    for (const auto& [file, name] :
         {std::pair(L"Kovra.dll", std::wstring(L"Kovra")), std::pair(L"KovraHost.dll", std::wstring(L"KovraHost"))}) {
        const Version version(file);
        EXPECT_EQ(version.Text(L"OriginalFilename"), file);
        EXPECT_EQ(version.Text(L"InternalName"), name);
        EXPECT_EQ(version.Text(L"ProductName"), L"Kovra");
        for (const wchar_t* const text : {L"CompanyName", L"FileDescription", L"LegalCopyright"})
            EXPECT_NE(version.Text(text), L"") << server::ToUtf8(text);
        const VS_FIXEDFILEINFO& fixed = version.Fixed();
        EXPECT_EQ(version.Text(L"FileVersion"), Dotted(fixed.dwFileVersionMS, fixed.dwFileVersionLS));
        EXPECT_EQ(version.Text(L"ProductVersion"), Dotted(fixed.dwProductVersionMS, fixed.dwProductVersionLS));
        EXPECT_NE(fixed.dwFileVersionMS | fixed.dwFileVersionLS, 0U);
        EXPECT_EQ(fixed.dwFileType, static_cast<DWORD>(VFT_DLL));
        EXPECT_EQ(fixed.dwFileOS, static_cast<DWORD>(VOS_NT_WINDOWS32));
    }
}
