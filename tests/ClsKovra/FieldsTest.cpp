#include "ClsKovra/ClsKovra.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <filesystem>
#include <regex>
#include <set>

#include <gtest/gtest.h>

namespace {

/// The names of children that the class's sources read or set; numbered ones stand there in a list of their own.
std::set<std::string> NamesInSources() {
    static const std::regex read(
        R"re((?:GetNodeText\([a-z.]+, |Field\(|SetChildText\([a-z.]+, |DateField(?: d[A-Za-z]+)?\{)"([A-Za-z_0-9]+)")re");
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(test::SourceFolder() / "ClsKovra")) {
        const std::string text = test::ReadText(entry.path());
        for (auto found = std::sregex_iterator(text.begin(), text.end(), read); found != std::sregex_iterator();
             ++found) {
            names.insert((*found)[1]);
        }
    }
    return names;
}

TEST(OpeningFields, AreThoseThatTheStepsRead) {
    const std::vector<std::string> fields = kovra::ClsKovra::Fields().row;
    std::set<std::string> known(fields.begin(), fields.end());
    std::erase_if(known, [](const std::string& name) { return name.starts_with("cFree"); });
    EXPECT_EQ(known, NamesInSources());
}

} // namespace
