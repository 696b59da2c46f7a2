// Hostile texts as requests of every class.

#include "tests/reliability/HostileTexts.h"
#include "tests/reliability/Soundness.h"
#include "tests/support/Program.h"

#include <cstdio>

#include <gtest/gtest.h>

namespace test {
namespace {

/// A few times the largest of the texts (100 MB of one entity's content that is refused, 40 MB as they stand).
constexpr long memory = 400'000'000;

/// Expects that the work succeeds in bounded memory.
void ExpectBounded(const std::function<void()>& work) {
    Process process([&] {
        work();
        return testing::Test::HasFailure() ? 1 : 0;
    });
    const Ended ended = process.Wait();
    EXPECT_EQ(ended.signal, 0);
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(sanitized || ended.peakMemory < memory) << ended.peakMemory;
}

/// The texts for a class: all, or the large ones for the first class alone, as one parser reads them.
std::vector<const HostileText*> TextsFor(const NumberedImport& import, const std::vector<HostileText>& all,
                                         bool largeForAll) {
    largeForAll = largeForAll || import.className == std::string_view(NumberedImports().front().className);
    std::vector<const HostileText*> texts;
    for (const HostileText& each : all) {
        if (largeForAll || each.text.size() <= 200'000) {
            texts.push_back(&each);
        }
    }
    return texts;
}

class HostileRequest : public testing::TestWithParam<NumberedImport> {};

TEST_P(HostileRequest, ThatIsUnreadableGivesTheErrorResult) {
    const NumberedAccount account(1);
    const NumberedImport& import = GetParam();
    const std::string refused = std::string(import.className) == "ClsPriceJustVou"
                                    ? "<error code=\"100\" dsc=\"解析XML时发生错误，请检查XML参数格式\"/>"
                                    : "<error code=\"100\" dsc=\"解析XML时发生错误,请你检查XML参数格式\"/>";
    const std::vector<const HostileText*> texts = TextsFor(import, UnreadableTexts(), false);
    ExpectBounded([&] {
        for (const HostileText* const hostile : texts) {
            EXPECT_EQ(Transact(import, account, hostile->text), refused) << hostile->name;
        }
    });
    EXPECT_EQ(WholeNumbers(import, account), 0);
    std::printf("reliability: %s: %zu unreadable texts refused\n", import.className, texts.size());
}

TEST_P(HostileRequest, ThatIsReadableGivesAResultDocument) {
    const NumberedAccount account(1);
    const NumberedImport& import = GetParam();
    const std::vector<const HostileText*> texts = TextsFor(import, ReadableTexts(), !sanitized);
    ExpectBounded([&] {
        for (const HostileText* const hostile : texts) {
            const std::string result = Transact(import, account, hostile->text);
            EXPECT_TRUE(result.starts_with("<qxinterface docid=\"D\" proc=\"ADD\"><item ")) << hostile->name << result;
        }
    });
    std::printf("reliability: %s: %zu odd texts read\n", import.className, texts.size());
}

INSTANTIATE_TEST_SUITE_P(Imports, HostileRequest, testing::ValuesIn(NumberedImports()), NameOfImport);

TEST(HostileSetting, IsReadForWhatItSays) {
    const TestAccount original(AccountContent::demo);
    for (const HostileText& hostile : ReadableTexts()) {
        const TestAccount account(original);
        EXPECT_EQ(Transact(NumberedImports().front(), account, hostile.text),
                  "<qxinterface docid=\"D\" proc=\"ADD\"><item key=\"仓库编码：01， ， \" code=\"0\" dsc=\"ok\"/>"
                  "</qxinterface>")
            << hostile.name;
        EXPECT_EQ(account.Rows("select cWhCode, cInvHead from IA_HeadSet"),
                  std::vector<std::string>{R"({"cWhCode":"01","cInvHead":"140301"})"})
            << hostile.name;
    }
}

} // namespace
} // namespace test
