// Every link between the documents leads somewhere: to a file that is there, and to a heading that it has.

#include "tests/docs/Pages.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// The documents, absolute.
std::vector<fs::path> Documents() {
    std::vector<fs::path> documents;
    for (const auto& entry : fs::directory_iterator(test::SourceFolder())) {
        documents.push_back(entry.path());
    }
    for (const auto& entry : fs::recursive_directory_iterator(test::SourceFolder() / "docs")) {
        documents.push_back(entry.path());
    }
    std::erase_if(documents, [](const fs::path& path) { return path.extension() != ".md"; });
    std::ranges::sort(documents);
    return documents;
}

/// The name by which a heading is linked to: small letters, blanks as hyphens, without punctuation.
std::string Anchor(std::string_view heading) {
    std::string anchor;
    for (const char c : heading) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == ' ') {
            anchor.push_back('-');
        } else if (byte >= 0x80 || c == '-' || c == '_' || std::isalnum(byte) != 0) {
            anchor.push_back(static_cast<char>(std::tolower(byte)));
        }
    }
    return anchor;
}

std::set<std::string> Anchors(const fs::path& document) {
    std::set<std::string> anchors;
    for (const std::string& line : test::Lines(test::ReadText(document))) {
        if (const std::size_t text = line.find_first_not_of('#'); line.starts_with("#") && line[text] == ' ') {
            anchors.insert(Anchor(line.substr(text + 1)));
        }
    }
    return anchors;
}

/// What is wrong with a link from `document`; empty when it leads somewhere.
std::string WrongWith(const fs::path& document, const std::string& link) {
    if (link.starts_with("http:") || link.starts_with("https:")) {
        return {};
    }
    const std::size_t mark = link.find('#');
    const std::string file = link.substr(0, mark);
    const fs::path target = file.empty() ? document : document.parent_path() / file;
    if (!fs::exists(target)) {
        return "there is no " + file;
    }
    if (mark != link.npos && !Anchors(target).contains(link.substr(mark + 1))) {
        return file + " has no heading " + link.substr(mark);
    }
    return {};
}

TEST(Links, LeadSomewhere) {
    static const std::regex link("\\]\\(([^)\\s]+)\\)");
    int links = 0;
    for (const fs::path& document : Documents()) {
        const std::string text = test::ReadText(document);
        for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at) {
            EXPECT_EQ(WrongWith(document, (*at)[1]), "") << document.string();
            ++links;
        }
    }
    EXPECT_GT(links, 0);
}

TEST(Links, AreFoundBroken) {
    const fs::path readme = test::SourceFolder() / "README.md";
    EXPECT_EQ(WrongWith(readme, "docs/building.md"), "");
    EXPECT_EQ(WrongWith(readme, "docs/building.md#presets"), "");
    EXPECT_NE(WrongWith(readme, "docs/not-there.md"), "");
    EXPECT_NE(WrongWith(readme, "docs/building.md#not-there"), "");
}

} // namespace
