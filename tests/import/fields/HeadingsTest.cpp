#include "import/fields/Headings.h"

#include <set>

#include <gtest/gtest.h>

namespace {

using importing::Cell;
using importing::Columns;
using importing::Field;
using importing::HeadingMap;
using importing::Line;
using importing::Note;
namespace message = importing::message;

Line Headings(const std::vector<std::string>& headings) {
    Line line;
    line.number = 1;
    for (const std::string& heading : headings) {
        line.cells.push_back({heading.empty() ? Cell::Kind::empty : Cell::Kind::text, heading});
    }
    return line;
}

Columns Read(const std::vector<std::string>& headings, const HeadingMap& map = {}) {
    return importing::ReadHeadings(Headings(headings), *importing::FieldsOf("ClsKovra"), map);
}

std::vector<std::string> Elements(const Columns& columns) {
    std::vector<std::string> elements;
    for (const Field* const field : columns.fields) {
        elements.emplace_back(field == nullptr ? "" : field->element);
    }
    return elements;
}

TEST(Headings, AreReadInChineseEnglishByElementAndSynonym) {
    const Columns columns = Read({"仓库编码", "Item code", "iPrice", "结存数量", "unit cost"});
    EXPECT_EQ(Elements(columns), (std::vector<std::string>{"cWhCode", "cInvCode", "iPrice", "iQuantity", "iCost"}));
    EXPECT_TRUE(columns.faults.empty());
}

TEST(Headings, AreReadWithoutWidthBlanksMarksAndUnits) {
    const Columns columns = Read({"仓库 编码*", "ＣInvCode", "金额（元）", "数量(个)"});
    EXPECT_EQ(Elements(columns), (std::vector<std::string>{"cWhCode", "cInvCode", "iPrice", "iQuantity"}));
}

TEST(Headings, ThatAreUnknownStopWithTheNearest) {
    const Columns columns = Read({"仓库编码", "存货编码", "金额", "数里", "颜色深浅"});
    EXPECT_EQ(columns.faults, (std::vector<Note>{{message::headingUnknownNear, {"D1", "数里", "数量", "Quantity"}},
                                                 {message::headingUnknown, {"E1", "颜色深浅"}}}));
}

TEST(Headings, ThatStandTwiceStop) {
    const Columns columns = Read({"仓库编码", "存货编码", "金额", "仓库"});
    EXPECT_EQ(columns.faults,
              (std::vector<Note>{{message::headingTwice, {"D1", "仓库", "仓库编码", "Warehouse code"}}}));
}

TEST(Headings, ThatAreRequiredAndMissingStop) {
    EXPECT_EQ(Read({"仓库编码", "数量"}).faults,
              (std::vector<Note>{{message::headingMissing, {"cInvCode", "存货编码", "Item code"}},
                                 {message::headingMissing, {"iPrice", "金额", "Amount"}}}));
}

TEST(Headings, AreReadAsTheUserSays) {
    const Columns columns = Read({"仓库编码", "品号", "金额"}, {{"品号", "cInvCode"}});
    EXPECT_EQ(Elements(columns), (std::vector<std::string>{"cWhCode", "cInvCode", "iPrice"}));
    EXPECT_TRUE(columns.faults.empty());
}

TEST(Headings, AreMappedByEachNameOfAFieldAndLeftOutByNone) {
    const Columns columns = Read({"库", "品号", "名称", "金额"}, {{"库", "仓库"}, {"品号", "Item code"}, {"名称", ""}});
    EXPECT_EQ(Elements(columns), (std::vector<std::string>{"cWhCode", "cInvCode", "", "iPrice"}));
    EXPECT_TRUE(columns.faults.empty());
}

TEST(Headings, MustBeThereWhereTheUserMapsThem) {
    EXPECT_EQ(Read({"仓库编码", "存货编码", "金额"}, {{"品号", "cInvCode"}}).faults,
              (std::vector<Note>{{message::mapHeadingMissing, {"品号"}}}));
}

TEST(Headings, NeverNameAColumnThatTheClassHasNot) {
    const Columns columns = Read({"仓库编码", "存货编码", "金额", "额外"}, {{"额外", "cVouType"}});
    EXPECT_EQ(columns.faults, (std::vector<Note>{{message::mapFieldUnknown, {"额外", "cVouType"}}}));
}

TEST(Headings, MayBeEmptyForAColumnWithoutCells) {
    EXPECT_TRUE(Read({"仓库编码", "", "存货编码", "金额"}).faults.empty());
}

TEST(ClassFields, HaveNamesThatAreUniqueInTheirClass) {
    for (const importing::ClassFields& classFields : importing::AllClassFields()) {
        for (const auto name : {&Field::element, &Field::chinese, &Field::english}) {
            std::set<std::string_view> names;
            for (const Field& field : classFields.fields) {
                EXPECT_FALSE((field.*name).empty()) << field.element;
                EXPECT_TRUE(names.insert(field.*name).second) << classFields.className << " " << field.*name;
            }
        }
    }
}

TEST(ClassFields, AreThereForEachClass) {
    for (const char* const name :
         {"ClsInvSubject", "ClsKovra", "ClsKovraProof", "ClsOppSubject", "ClsOppSubjectST", "ClsPriceJustVou"}) {
        EXPECT_NE(importing::FieldsOf(name), nullptr) << name;
    }
    EXPECT_EQ(importing::FieldsOf("ClsOther"), nullptr);
}

TEST(ClassFields, GiveALengthForTextsAlone) {
    for (const importing::ClassFields& classFields : importing::AllClassFields()) {
        for (const Field& field : classFields.fields) {
            const bool isText = field.type != importing::FieldType::number &&
                                field.type != importing::FieldType::price && field.type != importing::FieldType::date;
            EXPECT_EQ(isText, field.length != 0) << classFields.className << " " << field.element;
        }
    }
}

} // namespace
