// kovra.exe on a console of code page 936, as Chinese systems have it.
#include "tests/support/com/OwnConsole.h"
#include "tests/support/com/RunProgram.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(ConsoleOfCodePage936, ShowsChinese) {
    const test::OwnConsole console(936);
    if (!console.IsThere()) {
        GTEST_SKIP() << "this system gives no console";
    }
    EXPECT_EQ(test::RunProgramOn(console.screen(), L"--lang zh login check --login 没有.xml"), 2U);
    EXPECT_NE(console.Text().find(L"没有这个文件或文件夹"), std::wstring::npos)
        << testing::PrintToString(console.Text());
}

} // namespace
