#include "import/file/Sha256.h"

#include "import/file/ReadFileFacts.h"
#include "import/reading/UnreadableFile.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

using importing::Sha256Of;

// The examples of FIPS 180-2, appendix B, and NIST's of the empty text.
TEST(Sha256, HashesTheExamplesOfItsStandard) {
    EXPECT_EQ(Sha256Of(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256Of("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Sha256Of("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(Sha256Of(std::string(1000000, 'a')), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, DoesNotDependOnThePieces) {
    importing::Sha256 hash;
    for (std::size_t length = 1; length <= 13; ++length) {
        hash.Add(std::string(length, 'x'));
    }
    EXPECT_EQ(hash.Finish(), Sha256Of(std::string(91, 'x')));
}

TEST(FileFacts, AreSizeAndHashOfTheBytes) {
    const std::filesystem::path path = std::filesystem::path(::testing::TempDir()) / "期初-facts.csv";
    std::ofstream(path, std::ios::binary) << "abc";
    const importing::FileFacts facts = importing::ReadFileFacts(path.string());
    EXPECT_EQ(facts.size, 3U);
    EXPECT_EQ(facts.hash, Sha256Of("abc"));
    std::filesystem::remove(path);
    EXPECT_THROW(importing::ReadFileFacts(path.string()), importing::UnreadableFile);
}

} // namespace
