#include "refhost/Environment.h"
#include "refhost/eai/MappingStore.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/NameOfCase.h"

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using refhost::Mapping;

Mapping Parse(std::string_view text) {
    refhost::Environment environment;
    return Mapping::Parse("M.Xml", text, environment);
}

TEST(Mapping, ReadsFieldsInOrder) {
    const Mapping mapping = Parse("<?xml version='1.0'?><!-- c --><mapping><head element='h'>"
                                  "<!-- c --><field element='a' column='b'/><field element='c'/></head>"
                                  "<body element='rows' row='r'><field element='a'/></body></mapping>");
    EXPECT_EQ(mapping.name, "M.Xml");
    EXPECT_EQ(mapping.head.element, "h");
    ASSERT_EQ(mapping.head.fields.size(), 2U);
    EXPECT_EQ(mapping.head.fields[0].element, "a");
    EXPECT_EQ(mapping.head.fields[0].column, "b");
    EXPECT_EQ(mapping.head.fields[1].element, "c");
    EXPECT_EQ(mapping.head.fields[1].column, "c");
    EXPECT_EQ(mapping.body.element, "rows");
    EXPECT_EQ(mapping.body.rowElement, "r");
    ASSERT_EQ(mapping.body.fields.size(), 1U);
}

struct BrokenMapping {
    const char* name;
    const char* text;
    const char* message;
};

class BrokenMappings : public testing::TestWithParam<BrokenMapping> {};

TEST_P(BrokenMappings, SayWhatIsWrong) {
    try {
        Parse(GetParam().text);
        FAIL() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), -2147467259);
        EXPECT_EQ(error.description(), GetParam().message);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, BrokenMappings,
    testing::Values(
        BrokenMapping{"NoXml", "<mapping><head></mapping>", "映射文件M.Xml无效：不是格式正确的XML。"},
        BrokenMapping{"Empty", "", "映射文件M.Xml无效：不是格式正确的XML。"},
        BrokenMapping{"Root", "<map/>", "映射文件M.Xml无效：根元素应为mapping，而不是map。"},
        BrokenMapping{"NoHead", "<mapping><body element='b' row='r'/></mapping>",
                      "映射文件M.Xml无效：应有且只有一个元素head。"},
        BrokenMapping{"NoBody", "<mapping><head element='h'/></mapping>",
                      "映射文件M.Xml无效：应有且只有一个元素body。"},
        BrokenMapping{"TwoHeads",
                      "<mapping><head element='h'/><head element='h'/><body element='b' row='r'/></mapping>",
                      "映射文件M.Xml无效：应有且只有一个元素head。"},
        BrokenMapping{"Unknown", "<mapping><head element='h'/><body element='b' row='r'/><foot/></mapping>",
                      "映射文件M.Xml无效：mapping中有未知元素foot。"},
        BrokenMapping{"UnknownField", "<mapping><head element='h'><feld/></head><body element='b' row='r'/></mapping>",
                      "映射文件M.Xml无效：head中有未知元素feld。"},
        BrokenMapping{"NoElement", "<mapping><head/><body element='b' row='r'/></mapping>",
                      "映射文件M.Xml无效：head缺少属性element。"},
        BrokenMapping{"NoRow", "<mapping><head element='h'/><body element='b'/></mapping>",
                      "映射文件M.Xml无效：body缺少属性row。"},
        BrokenMapping{"NoFieldElement",
                      "<mapping><head element='h'><field column='c'/></head><body element='b' row='r'/></mapping>",
                      "映射文件M.Xml无效：field缺少属性element。"},
        BrokenMapping{"EmptyColumn",
                      "<mapping><head element='h'><field element='a' column=''/></head><body element='b' row='r'/>"
                      "</mapping>",
                      "映射文件M.Xml无效：元素a的column为空。"},
        BrokenMapping{"Twice",
                      "<mapping><head element='h'/><body element='b' row='r'><field element='a'/>"
                      "<field element='a' column='x'/></body></mapping>",
                      "映射文件M.Xml无效：body中元素a重复。"}),
    test::nameOfCase);

class MappingStore : public testing::Test {
protected:
    refhost::MappingStore Store() {
        return {environment, [this](const std::string& name) -> std::optional<std::string> {
                    asked.push_back(name);
                    if (unreadable) {
                        throw std::runtime_error("disk");
                    }
                    return own;
                }};
    }
    static std::string ErrorOf(refhost::MappingStore& store, std::string_view name) {
        return test::ErrorOf([&] { store.Get(name); }).description();
    }

    refhost::Environment environment;
    std::vector<std::string> asked;
    std::optional<std::string> own;
    bool unreadable = false;
};

TEST_F(MappingStore, ShipsTheMappingOfProvisions) {
    refhost::MappingStore store = Store();
    const Mapping& mapping = store.Get("EaiProof.Xml");
    EXPECT_EQ(mapping.head.element, "header");
    EXPECT_EQ(mapping.head.fields[0].element, "Deccode");
    EXPECT_EQ(mapping.head.fields[0].column, "cDecCode");
    EXPECT_EQ(mapping.head.fields[1].element, "vouchtype");
    EXPECT_EQ(mapping.head.fields[1].column, "cVouchType");
    for (std::size_t field = 2; field < mapping.head.fields.size(); ++field) {
        EXPECT_EQ(mapping.head.fields[field].element, mapping.head.fields[field].column);
    }
    EXPECT_EQ(mapping.body.element, "body");
    EXPECT_EQ(mapping.body.rowElement, "entry");
    for (const refhost::MappedField& field : mapping.body.fields) {
        EXPECT_EQ(field.element, field.column);
    }
}

TEST_F(MappingStore, ShipsTheMappingOfStockRecords) {
    refhost::MappingStore store = Store();
    const Mapping& mapping = store.Get("StoreInOutXmlRs.Xml");
    EXPECT_EQ(mapping.head.element, "header");
    EXPECT_EQ(mapping.body.element, "body");
    EXPECT_EQ(mapping.body.rowElement, "entry");
}

TEST_F(MappingStore, ReadsAMappingOnce) {
    refhost::MappingStore store = Store();
    const Mapping& first = store.Get("EaiProof.Xml");
    EXPECT_EQ(&store.Get("EaiProof.Xml"), &first);
    EXPECT_THAT(asked, testing::ElementsAre("EaiProof.Xml"));
}

TEST_F(MappingStore, PrefersAUsersOwnFile) {
    own = "<mapping><head element='h'/><body element='b' row='r'/></mapping>";
    refhost::MappingStore store = Store();
    EXPECT_EQ(store.Get("EaiProof.Xml").head.element, "h");
    EXPECT_EQ(store.Get("Other.Xml").head.element, "h");
}

TEST_F(MappingStore, DoesNotFallBackFromABrokenFile) {
    own = "<mapping>";
    refhost::MappingStore store = Store();
    EXPECT_EQ(ErrorOf(store, "EaiProof.Xml"), "映射文件EaiProof.Xml无效：不是格式正确的XML。");
    own.reset();
    unreadable = true;
    EXPECT_EQ(ErrorOf(store, "EaiProof.Xml"), "映射文件EaiProof.Xml无效：disk。");
}

TEST_F(MappingStore, KnowsNoOtherFiles) {
    refhost::MappingStore store = Store();
    EXPECT_EQ(ErrorOf(store, "Other.Xml"), "映射文件Other.Xml无效：没有这个文件。");
    asked.clear();
    EXPECT_EQ(ErrorOf(store, "../EaiProof.Xml"), "映射文件../EaiProof.Xml无效：没有这个文件。");
    EXPECT_EQ(ErrorOf(store, "..\\EaiProof.Xml"), "映射文件..\\EaiProof.Xml无效：没有这个文件。");
    EXPECT_THAT(asked, testing::IsEmpty());
}

} // namespace
