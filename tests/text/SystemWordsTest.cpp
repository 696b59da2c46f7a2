#include "text/SystemWords.h"

#include <gtest/gtest.h>

namespace {

text::Words Of(std::errc error) { return text::SystemWords(std::make_error_code(error)); }

TEST(SystemWords, AreTheSystemsOwnInEnglishAndOursInChinese) {
    const text::Words words = Of(std::errc::no_space_on_device);
    EXPECT_EQ(words.english, "No space left on device");
    EXPECT_EQ(words.chinese, "磁盘已满");
}

TEST(SystemWords, OfWhatIsNotListedAreTheSystemsOwnInBoth) {
    const text::Words words = Of(std::errc::owner_dead);
    EXPECT_EQ(words.english, "Owner died");
    EXPECT_EQ(words.chinese, "Owner died");
}

} // namespace
