// Which class a table is for, and where its headings stand.

#include "import/rows/FindClass.h"

#include "import/reading/Csv.h"
#include "import/reading/UnreadableFile.h"
#include "import/rows/Spreadsheet.h"
#include "tests/import/PackageFile.h"

#include <fstream>

#include <gtest/gtest.h>

namespace {

using importing::HeadingMap;
using importing::Note;
namespace message = importing::message;

std::string ClassOf(const std::string& csv, std::size_t headerLine = 0, const HeadingMap& map = {}) {
    importing::CsvTable table(csv, ',');
    const importing::ClassFields* const found = importing::FindClass(table, headerLine, map);
    return found == nullptr ? "none" : std::string(found->className);
}

TEST(FindClass, KnowsEachClassByItsHeadings) {
    EXPECT_EQ(ClassOf("仓库编码,存货编码,数量,单价,金额\n"), "ClsKovra");
    EXPECT_EQ(ClassOf("仓库编码,存货分类编码,存货科目编码\n"), "ClsInvSubject");
    EXPECT_EQ(ClassOf("收发类别编码,部门编码,对方科目编码,暂估科目编码\n"), "ClsOppSubject");
    EXPECT_EQ(ClassOf("收发类别编码,部门编码,直接材料对方科目\n"), "ClsOppSubjectST");
    EXPECT_EQ(ClassOf("单据号,单据日期,仓库编码,存货编码,可变现净值\n"), "ClsKovraProof");
    EXPECT_EQ(ClassOf("Document number,Voucher date,Item code,Adjusted price\n"), "ClsPriceJustVou");
}

TEST(FindClass, LooksBelowTitles) {
    EXPECT_EQ(ClassOf("期初余额表\n单位：元\n仓库编码,存货编码,数量,单价,金额\n"), "ClsKovra");
}

TEST(FindClass, TakesTheLineThatTheUserNames) {
    EXPECT_EQ(ClassOf("收发类别编码,对方科目编码\n仓库编码,存货编码,金额\n", 2), "ClsKovra");
}

TEST(FindClass, CountsTheHeadingsThatTheUserMaps) {
    EXPECT_EQ(ClassOf("库,品号,值\n", 0, {{"库", "仓库编码"}, {"品号", "cInvCode"}, {"值", "金额"}}), "ClsKovra");
}

TEST(FindClass, FindsNoneWithoutHeadings) {
    EXPECT_EQ(ClassOf("01,1001,2,5,10\n"), "none");
    std::string late;
    for (int line = 0; line < 100; ++line) {
        late.append("x,y\n");
    }
    EXPECT_EQ(ClassOf(late + "仓库编码,存货编码,金额\n"), "none");
    EXPECT_EQ(ClassOf(late + "仓库编码,存货编码,金额\n", 101), "ClsKovra");
}

TEST(FindClass, AsksWhereTwoFitAlike) {
    try {
        ClassOf("收发类别编码,部门编码\n");
        FAIL() << "taken";
    } catch (const importing::UnreadableFile& error) {
        EXPECT_EQ(error.note(), (Note{message::classUnclear, {"ClsOppSubject、ClsOppSubjectST"}}));
    }
}

TEST(Spreadsheet, IsReadFromItsFirstLineOnceItsClassIsKnown) {
    const test::TestFolder folder;
    const std::string path = folder.File("期初.csv");
    std::ofstream(path) << "仓库编码,存货编码,金额\n01,1001,10\n";
    importing::Spreadsheet spreadsheet(path, {}, {}, nullptr);
    EXPECT_EQ(spreadsheet.classFields().className, "ClsKovra");
    const importing::Sheet sheet = spreadsheet.Read({});
    EXPECT_EQ(sheet.headerLine, 1U);
    ASSERT_EQ(sheet.rows.size(), 1U);
    EXPECT_EQ(sheet.rows[0].line, 2U);
}

TEST(Spreadsheet, OfAWorkbookIsReadFromItsFirstLineOnceItsClassIsKnown) {
    const test::TestFolder folder;
    const std::string path = folder.File("期初.xlsx");
    const auto cell = [](const std::string& text) { return "<c t=\"inlineStr\"><is><t>" + text + "</t></is></c>"; };
    test::PackageFile::OfSheet("<sheetData><row>" + cell("仓库编码") + cell("存货编码") + cell("金额") + "</row><row>" +
                               cell("01") + cell("1001") + "<c><v>10</v></c></row></sheetData>")
        .Write(path);
    importing::Spreadsheet spreadsheet(path, {}, {}, nullptr);
    const importing::Sheet sheet = spreadsheet.Read({});
    EXPECT_EQ(sheet.headerLine, 1U);
    ASSERT_EQ(sheet.rows.size(), 1U);
    EXPECT_EQ(sheet.rows[0].values, (std::vector<std::string>{"01", "1001", "10"}));
}

TEST(Spreadsheet, WithoutHeadingsIsRefused) {
    const test::TestFolder folder;
    const std::string path = folder.File("x.csv");
    std::ofstream(path) << "01,1001,10\n";
    EXPECT_THROW(importing::Spreadsheet(path, {}, {}, nullptr), importing::UnreadableFile);
}

} // namespace
