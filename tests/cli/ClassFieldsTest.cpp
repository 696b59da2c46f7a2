// The fields that the program believes each class to read, against the sources of the classes.

#include "cli/ClassFields.h"

#include "cli/Classes.h"
#include "tests/support/Paths.h"
#include "tests/support/TestAccount.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>

#include <gtest/gtest.h>

namespace {

/// The names of children that the sources of a class read by `GetNodeText` and `Field`, or set by `SetChildText`.
std::set<std::string> NamesInSources(const std::string& className) {
    static const std::regex read(
        R"re((?:GetNodeText\([a-z.]+, |Field\(|SetChildText\([a-z.]+, |DateField(?: d[A-Za-z]+)?\{)"([A-Za-z_0-9]+)"(?! \+))re");
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(test::SourceFolder() / className)) {
        const std::string text = test::ReadText(entry.path());
        for (auto found = std::sregex_iterator(text.begin(), text.end(), read); found != std::sregex_iterator();
             ++found) {
            names.insert((*found)[1]);
        }
    }
    return names;
}

class FieldsOfClass : public testing::TestWithParam<const char*> {};

TEST_P(FieldsOfClass, AreThoseThatItsSourcesRead) {
    const cli::ClassFields fields = *cli::FieldsOf(GetParam());
    std::set<std::string> known(fields.row.begin(), fields.row.end());
    known.insert(fields.header.begin(), fields.header.end());
    known.insert(fields.entry.begin(), fields.entry.end());
    // Numbered ones stand in the sources as their beginning.
    std::erase_if(known,
                  [](const std::string& name) { return name.starts_with("cFree") || name.starts_with("cfree"); });
    EXPECT_EQ(known, NamesInSources(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Named, FieldsOfClass,
                         testing::Values("ClsInvSubject", "ClsOppSubject", "ClsKovra", "ClsPriceJustVou"));

TEST(FieldsOf, KnowsEveryClass) {
    for (const cli::ImportClass& importClass : cli::ImportClasses()) {
        EXPECT_TRUE(cli::FieldsOf(importClass.name)) << importClass.name;
    }
    EXPECT_EQ(cli::FieldsOf("ClsOppSubjectST")->row.size(), 24U);
    EXPECT_EQ(cli::FieldsOf("ClsKovraProof")->header.front(), "Deccode");
    EXPECT_EQ(cli::FieldsOf("ClsKovraProof")->entry.front(), "cWhCode");
}

TEST(Nearest, FindsTheNameThatWasMeant) {
    const std::vector<std::string> names = {"cInvCode", "cDifHead", "iQuantity", "ID"};
    EXPECT_EQ(cli::Nearest("cDiffHead", names), "cDifHead");
    EXPECT_EQ(cli::Nearest("iquantity", names), "iQuantity");
    EXPECT_EQ(cli::Nearest("cInvoiceCode", names), "");
    EXPECT_EQ(cli::Nearest("cMemo", names), "");
    EXPECT_EQ(cli::Nearest("IX", names), "");
}

} // namespace
