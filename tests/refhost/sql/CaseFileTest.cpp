#include "tests/refhost/sql/CaseFile.h"

#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

namespace test_sql {
namespace {

std::vector<Section> SectionsOf(const std::string& text) {
    std::istringstream file(text);
    return ReadSections(file);
}

/// Why a text is no file of cases.
std::string FaultOf(const std::string& text) {
    try {
        SectionsOf(text);
    } catch (const std::runtime_error& fault) {
        return fault.what();
    }
    return "";
}

TEST(CaseFile, HoldsSectionsWithWhatBeginsThemAll) {
    const std::vector<Section> sections = SectionsOf("-- remark\n"
                                                     "create\n"
                                                     "\n"
                                                     "== One\n"
                                                     "select 1\n"
                                                     "> 1\n"
                                                     "-- remark\n"
                                                     "print 1\n"
                                                     ">> says 1\n"
                                                     "== Two, not behind a driver\n"
                                                     "delete\n");
    ASSERT_EQ(sections.size(), 2U);
    const Section& one = sections[0];
    EXPECT_EQ(one.name, "One");
    EXPECT_EQ(one.line, 4);
    EXPECT_EQ(one.without, std::set<Place>());
    ASSERT_EQ(one.asked.size(), 3U);
    EXPECT_EQ(one.beginning, 1U);
    EXPECT_EQ(one.asked[0].sql, "create");
    EXPECT_EQ(one.asked[0].answer, "");
    EXPECT_EQ(one.asked[1].line, 5);
    EXPECT_EQ(one.asked[1].sql, "select 1");
    EXPECT_EQ(one.asked[1].answer, "1");
    EXPECT_FALSE(one.asked[1].batch);
    EXPECT_EQ(one.asked[2].line, 8);
    EXPECT_EQ(one.asked[2].answer, "says 1");
    EXPECT_TRUE(one.asked[2].batch);
    const Section& two = sections[1];
    EXPECT_EQ(two.name, "Two");
    EXPECT_EQ(two.without, std::set<Place>{Place::embeddedThroughOdbc});
    ASSERT_EQ(two.asked.size(), 2U);
    EXPECT_EQ(two.asked[0].sql, "create");
    EXPECT_EQ(two.asked[1].sql, "delete");
}

TEST(CaseFile, TellsSectionsOfBatchesAlone) {
    const std::vector<Section> sections = SectionsOf("create\n"
                                                     "== Batches\n"
                                                     "print 1\n"
                                                     ">> says 1\n"
                                                     "rollback\n"
                                                     ">>\n"
                                                     "== Both\n"
                                                     "print 1\n"
                                                     ">> says 1\n"
                                                     "select 1\n"
                                                     "> 1\n");
    EXPECT_TRUE(sections.at(0).BatchesAlone());
    EXPECT_EQ(sections.at(0).asked.at(2).answer, "");
    EXPECT_FALSE(sections.at(1).BatchesAlone());
}

TEST(CaseFile, HasEscapes) {
    const std::vector<Section> sections = SectionsOf(R"(== A
a\nb\r\tc\\d
> x\s
)");
    EXPECT_EQ(sections.at(0).asked.at(0).sql, "a\nb\r\tc\\d");
    EXPECT_EQ(sections.at(0).asked.at(0).answer, "x ");
}

TEST(CaseFile, IsRefusedWithTheLine) {
    EXPECT_EQ(FaultOf(""), "line 0: The file has no section.");
    EXPECT_EQ(FaultOf("select 1\n> 1\n"), "line 2: The file has no section.");
    EXPECT_EQ(FaultOf("create\n== A\n== B\nselect 1\n"), "line 3: A section without statements ends here.");
    EXPECT_EQ(FaultOf("== A\nselect 1\n== B\n-- remark\n"), "line 4: A section without statements ends here.");
    EXPECT_EQ(FaultOf("> 1\n== A\nselect 1\n"), "line 1: An answer without a statement of its own.");
    EXPECT_EQ(FaultOf("create\n== A\n> 1\n"), "line 3: An answer without a statement of its own.");
    EXPECT_EQ(FaultOf("== A\nselect 1\n> 1\n> 2\n"), "line 4: An answer without a statement of its own.");
    EXPECT_EQ(FaultOf("== A\nselect 1\n>1\n"), "line 3: An answer stands behind a blank.");
    EXPECT_EQ(FaultOf("== A\nselect 1\n>\n"), "line 3: An answer stands behind a blank.");
    EXPECT_EQ(FaultOf("== A\nselect 1\n>> \n"), "line 3: An answer stands behind a blank.");
    EXPECT_EQ(FaultOf("== A, on the moon\nselect 1\n"), "line 1: No such place.");
    EXPECT_EQ(FaultOf("== A\nselect 1\n== A\nselect 2\n"), "line 3: Another section has this name.");
    EXPECT_EQ(FaultOf("== A\nselect '\\d'\n"), "line 2: No such escape.");
    EXPECT_EQ(FaultOf("== A\nselect 1 \\\n"), "line 2: No such escape.");
}

} // namespace
} // namespace test_sql
