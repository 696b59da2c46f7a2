#include "tests/support/com/RegisteredClasses.h"

#include "server/com/Utf16.h"
#include "tests/support/com/ServerFixture.h"

#include <gtest/gtest.h>

namespace test {

void ExpectRegistered(HKEY root, std::span<const RegisteredClass> classes, const std::wstring& file,
                      const std::wstring& typeLibrary) {
    for (const auto& [progId, classId] : classes) {
        const std::wstring path = std::wstring(L"CLSID\\") + classId;
        EXPECT_EQ(ClassesValue(root, progId), progId);
        EXPECT_EQ(ClassesValue(root, std::wstring(progId) + L"\\CLSID"), classId);
        EXPECT_EQ(ClassesValue(root, path), progId);
        EXPECT_EQ(ClassesValue(root, path + L"\\ProgID"), progId);
        EXPECT_EQ(ClassesValue(root, path + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
        EXPECT_TRUE(ClassesValue(root, path + L"\\InprocServer32").ends_with(L"\\" + file)) << server::ToUtf8(progId);
        EXPECT_EQ(ClassesValue(root, path + L"\\TypeLib"), typeLibrary);
    }
}

void ExpectNotRegistered(HKEY root, std::span<const RegisteredClass> classes) {
    for (const auto& [progId, classId] : classes) {
        EXPECT_EQ(ClassesValue(root, progId), L"");
        EXPECT_EQ(ClassesValue(root, std::wstring(progId) + L"\\CLSID"), L"");
        EXPECT_EQ(ClassesValue(root, std::wstring(L"CLSID\\") + classId), L"");
        EXPECT_EQ(ClassesValue(root, std::wstring(L"CLSID\\") + classId + L"\\InprocServer32"), L"");
    }
}

} // namespace test
