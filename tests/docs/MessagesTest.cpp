// The class pages tell every message that a class can give, and no other.

#include "tests/docs/Pages.h"
#include "tests/docs/SourceTexts.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using Texts = std::set<std::string>;

/// Sources beyond a class's own folder whose messages it gives, or that its components give through it.
const std::map<std::string, std::vector<std::string>> sharedSources = {
    {"ClsInvSubject", {"ModPub/TransactFrame.h", "ModPub/YearEndCheck.cpp", "ModPub/SaveSetting.cpp"}},
    {"ClsOppSubject", {"ModPub/TransactFrame.h", "ModPub/YearEndCheck.cpp", "ModPub/SaveSetting.cpp"}},
    {"ClsOppSubjectST", {"ModPub/TransactFrame.h", "ModPub/YearEndCheck.cpp", "ModPub/SaveSetting.cpp"}},
    {"ClsKovra", {"ModPub/TransactFrame.h"}},
    {"ClsKovraProof",
     {"ModPub/TransactFrame.h", "refhost/ia/IaVoucherService.cpp", "refhost/ia/ProvisionPreCheck.cpp",
      "refhost/ia/ProvisionVoucher.cpp", "refhost/ia/SavedRecords.cpp", "refhost/eai/EaiXmlConverter.cpp",
      "refhost/eai/Mapping.cpp", "refhost/eai/MappingStore.cpp", "refhost/eai/ResolvedPart.cpp"}},
    {"ClsPriceJustVou", {"refhost/ia/ZendaT.cpp", "refhost/ia/ZendaTSave.cpp"}},
};

/// The page that tells the run-time's errors, which every class gives.
constexpr const char* errorPage = "requests";
const std::vector<std::string> errorSources = {"ModPub/RuntimeErrors.cpp"};

/// Sources whose Chinese texts are no messages: labels of row keys, names of valuation methods, words of dates and
/// numbers, refusals to post, which the class does not pass on, and what is wrong with the file of a login.
const Texts sourcesWithoutMessages = {
    "ClsInvSubject/InventorySetting.cpp",
    "ClsOppSubject/OppositeSetting.cpp",
    "ClsOppSubjectST/StandardCostSetting.cpp",
    "ClsKovra/OpeningRow.cpp",
    "ClsKovra/Valuation.cpp",
    "ClsKovra/Valuation.h",
    "refhost/eai/Login.cpp",
    "ModPub/DateFields.cpp",
    "ModPub/Numbers.cpp",
    "ModPub/RowKey.cpp",
    "refhost/ia/ZendaTPost.cpp",
    "refhost/ia/ZendaTUpdate.cpp",
};

/// Texts of the other sources that are no messages: labels of row keys, values of options, kinds of documents.
const Texts noMessages = {
    "项目大类编码：", "项目编码：", "按存货核算", "按仓库核算", "商业", "出库单", "入库单",
};

/// The messages, or their constant pieces, of one source. Texts with a quote in them are SQL.
Texts SourceMessages(const std::string& source) {
    Texts messages;
    for (const std::string& text : test::ChineseLiterals(test::ReadText(test::SourceFolder() / source))) {
        if (!noMessages.contains(text) && text.find('\'') == text.npos) {
            messages.insert(text);
        }
    }
    return messages;
}

Texts MessagesOf(const std::vector<std::string>& sources) {
    Texts messages;
    for (const std::string& source : sources) {
        messages.merge(SourceMessages(source));
    }
    return messages;
}

std::vector<std::string> RelativeSources(const std::string& folder) {
    std::vector<std::string> sources;
    for (const fs::path& path : test::Sources(test::SourceFolder() / folder)) {
        if (std::string name = folder + "/" + path.filename().string(); !sourcesWithoutMessages.contains(name)) {
            sources.push_back(std::move(name));
        }
    }
    return sources;
}

std::vector<std::string> SourcesOf(const std::string& page) {
    if (page == errorPage) {
        return errorSources;
    }
    std::vector<std::string> sources = RelativeSources(page);
    std::ranges::copy(sharedSources.at(page), std::back_inserter(sources));
    return sources;
}

/// Takes `text` apart into as few of `pieces` as may be; empty when that cannot be done.
std::vector<std::string> TakenApart(const std::string& text, const Texts& pieces) {
    std::vector<std::vector<std::string>> best(text.size() + 1);
    for (std::size_t end = 1; end <= text.size(); ++end) {
        for (const std::string& piece : pieces) {
            if (piece.size() > end || text.compare(end - piece.size(), piece.size(), piece) != 0) {
                continue;
            }
            const std::size_t begin = end - piece.size();
            if (begin > 0 && best[begin].empty()) {
                continue;
            }
            std::vector<std::string> way = best[begin];
            way.push_back(piece);
            if (best[end].empty() || way.size() < best[end].size()) {
                best[end] = std::move(way);
            }
        }
    }
    return best[text.size()];
}

/// What is wrong with a page beside its sources: a line for each message that one has and the other lacks.
std::vector<std::string> Differences(const std::vector<std::string>& pageMessages, const Texts& sourceMessages) {
    std::vector<std::string> wrong;
    Texts missing = sourceMessages;
    for (const std::string& message : pageMessages) {
        for (const std::string& text : test::ConstantTexts(message)) {
            const std::vector<std::string> pieces = TakenApart(text, sourceMessages);
            if (pieces.empty()) {
                wrong.push_back("no source has \"" + text + "\" of the message \"" + message + "\"");
            }
            for (const std::string& piece : pieces) {
                missing.erase(piece);
            }
        }
    }
    for (const std::string& text : missing) {
        wrong.push_back("no message of the page has the source's \"" + text + "\"");
    }
    return wrong;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text.append(line).append("\n");
    }
    return text;
}

std::vector<std::string> MessagesOfPage(const std::string& language, const std::string& name) {
    return test::PageMessages(test::ReadText(test::SourceFolder() / "docs" / language / (name + ".md")));
}

class PageOfMessages : public testing::TestWithParam<std::string> {};

TEST_P(PageOfMessages, HasTheMessagesOfItsSourcesAndNoOther) {
    const Texts messages = MessagesOf(SourcesOf(GetParam()));
    ASSERT_FALSE(messages.empty());
    for (const char* language : {"zh", "en"}) {
        const std::vector<std::string> wrong = Differences(MessagesOfPage(language, GetParam()), messages);
        EXPECT_TRUE(wrong.empty()) << "docs/" << language << "/" << GetParam() << ".md\n" << Joined(wrong);
    }
}

TEST_P(PageOfMessages, TellsTheSameMessagesInBothLanguages) {
    std::vector<std::string> chinese;
    std::vector<std::string> english;
    std::ranges::transform(MessagesOfPage("zh", GetParam()), std::back_inserter(chinese), test::WithoutNames);
    std::ranges::transform(MessagesOfPage("en", GetParam()), std::back_inserter(english), test::WithoutNames);
    EXPECT_EQ(chinese, english);
}

// The comparison itself must notice what it is there for.
TEST_P(PageOfMessages, IsFoundWantingWithoutAnyOneOfItsMessages) {
    const Texts messages = MessagesOf(SourcesOf(GetParam()));
    const std::vector<std::string> page = MessagesOfPage("zh", GetParam());
    for (const std::string& message : messages) {
        Texts fewer = messages;
        fewer.erase(message);
        EXPECT_FALSE(Differences(page, fewer).empty()) << "a source without \"" << message << "\"";
        Texts more = messages;
        more.insert(message + "不");
        EXPECT_FALSE(Differences(page, more).empty()) << "a source with \"" << message << "不\"";
    }
}

std::vector<std::string> Pages() {
    std::vector<std::string> pages = test::ClassPages();
    pages.emplace_back(errorPage);
    return pages;
}

INSTANTIATE_TEST_SUITE_P(Docs, PageOfMessages, testing::ValuesIn(Pages()), [](const auto& page) { return page.param; });

TEST(Pages, AreThereForEveryClass) {
    std::vector<std::string> classes;
    for (const auto& [name, sources] : sharedSources) {
        EXPECT_TRUE(fs::is_directory(test::SourceFolder() / name)) << name;
        classes.push_back(name);
    }
    EXPECT_EQ(test::ClassPages(), classes);
    for (const auto& entry : fs::directory_iterator(test::SourceFolder())) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(!name.starts_with("Cls") || sharedSources.contains(name)) << name << " has no page";
    }
}

/// Every source with Chinese texts belongs to a page or is named as one without messages.
TEST(Sources, AllBelongToAPage) {
    Texts known = sourcesWithoutMessages;
    known.insert(errorSources.begin(), errorSources.end());
    for (const auto& [name, sources] : sharedSources) {
        known.insert(sources.begin(), sources.end());
    }
    for (const char* folder : {"ModPub", "refhost/ia", "refhost/eai"}) {
        for (const fs::path& path : test::Sources(test::SourceFolder() / folder)) {
            const std::string name = std::string(folder) + "/" + path.filename().string();
            EXPECT_TRUE(known.contains(name) || SourceMessages(name).empty()) << name;
        }
    }
}

TEST(Sources, SaidToHaveNoMessagesStillHaveTexts) {
    for (const std::string& source : sourcesWithoutMessages) {
        EXPECT_FALSE(test::ChineseLiterals(test::ReadText(test::SourceFolder() / source)).empty()) << source;
    }
}

/// docs/messages.md leads from each message to the pages that tell it.
TEST(Index, LeadsFromEveryMessageToItsPages) {
    std::map<std::string, Texts> wanted;
    for (const std::string& page : Pages()) {
        for (const std::string& message : MessagesOfPage("zh", page)) {
            wanted[message].insert(page);
        }
    }
    std::map<std::string, Texts> index;
    for (const std::string& line : test::Lines(test::ReadText(test::SourceFolder() / "docs/messages.md"))) {
        const std::vector<std::string> cells = test::TableCells(line);
        if (cells.size() < 2 || !cells[0].starts_with("`")) {
            continue;
        }
        Texts& pages = index[cells[0].substr(1, cells[0].size() - 2)];
        EXPECT_TRUE(pages.empty()) << "twice in the index: " << cells[0];
        for (const std::string& page : Pages()) {
            const bool chinese = cells[1].find("(zh/" + page + ".md") != std::string::npos;
            const bool english = cells[1].find("(en/" + page + ".md") != std::string::npos;
            EXPECT_EQ(chinese, english) << line;
            if (chinese) {
                pages.insert(page);
            }
        }
    }
    EXPECT_EQ(index, wanted);
}

} // namespace
