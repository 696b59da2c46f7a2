#include "os/PosixEncoding.h"

#include <gtest/gtest.h>

namespace {

TEST(PosixEncoding, WritesWhatTheEncodingHolds) {
    EXPECT_EQ(os::Encode("期初 1001", "GBK"), "\xC6\xDA\xB3\xF5 1001");
    EXPECT_EQ(os::Encode("仓é한!", "ISO-8859-1"), "?\xE9?!");
    EXPECT_EQ(os::Encode("a\xFFz 期\xC6", "GBK"), "a\xFFz \xC6\xDA\xC6") << "bytes that are no UTF-8";
    EXPECT_EQ(os::Encode("期初", "no-such-encoding"), "期初");
}

} // namespace
