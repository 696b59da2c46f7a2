// Workbooks to fill in: made, filled in, read.

#include "import/writing/Template.h"

#include "import/reading/Workbook.h"
#include "import/rows/Spreadsheet.h"
#include "tests/import/PackageFile.h"

#include <gtest/gtest.h>

namespace {

using importing::ClassFields;
using importing::CodeList;
using importing::CodeLists;
using importing::Language;
using importing::Line;

CodeLists KnownCodes() {
    CodeLists lists;
    lists[CodeList::costedWarehouse].Add("01", "成品库");
    lists[CodeList::costedWarehouse].Add("02", "<原料> & 库");
    lists[CodeList::item].Add("1001", "轴承");
    return lists;
}

std::size_t CountOf(const std::string& text, const std::string& piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
        ++count;
    }
    return count;
}

class Template : public testing::Test {
protected:
    std::string Make(const ClassFields& classFields, const CodeLists& codes = {},
                     Language language = Language::chinese) {
        const std::string path = folder_.File("template.xlsx");
        importing::WriteTemplate(path, classFields, codes, language);
        return path;
    }
    std::string Make(const char* className, const CodeLists& codes = {}, Language language = Language::chinese) {
        return Make(*importing::FieldsOf(className), codes, language);
    }
    test::TestFolder folder_;
};

TEST_F(Template, OfEachClassIsReadByItsOwnHeadingsInBothLanguages) {
    for (const ClassFields& classFields : importing::AllClassFields()) {
        for (const Language language : {Language::chinese, Language::english}) {
            importing::Spreadsheet spreadsheet(Make(classFields, {}, language), {}, {}, nullptr);
            EXPECT_EQ(spreadsheet.classFields().className, classFields.className);
            const importing::Sheet sheet = spreadsheet.Read({});
            EXPECT_EQ(sheet.faults, std::vector<importing::Note>()) << classFields.className;
            ASSERT_EQ(sheet.columns.fields.size(), classFields.fields.size());
            for (std::size_t column = 0; column < classFields.fields.size(); ++column) {
                EXPECT_EQ(sheet.columns.fields[column], &classFields.fields[column]) << column;
                EXPECT_EQ(sheet.columns.headings[column].ends_with("*"), classFields.fields[column].required);
            }
            EXPECT_TRUE(sheet.rows.empty());
        }
    }
}

TEST_F(Template, HasANoteAndARuleOnEachColumn) {
    for (const ClassFields& classFields : importing::AllClassFields()) {
        const test::PackageFile package = test::PackageFile::Read(Make(classFields, KnownCodes()));
        EXPECT_EQ(CountOf(package.Part("xl/comments1.xml"), "<comment "), classFields.fields.size());
        EXPECT_EQ(CountOf(package.Part("xl/worksheets/sheet1.xml"), "<dataValidation "), classFields.fields.size());
    }
}

TEST_F(Template, SaysInTheNoteWhatAColumnTakes) {
    const std::string chinese = test::PackageFile::Read(Make("ClsKovra")).Part("xl/comments1.xml");
    EXPECT_EQ(CountOf(chinese, "必填。\n编码，最多 10 个字符，账套中要有这个仓库。\n（字段 cWhCode）"), 1U) << chinese;
    EXPECT_EQ(CountOf(chinese, "数字，不能为负。\n（字段 iCost）"), 1U);
    EXPECT_EQ(CountOf(chinese, "日期，写成 2024-01-05 的样子。\n（字段 dVouDate）"), 1U);
    EXPECT_EQ(CountOf(chinese, "文字，最多 60 个字符。\n（字段 cBatchCode）"), 1U);
    const std::string english =
        test::PackageFile::Read(Make("ClsOppSubject", {}, Language::english)).Part("xl/comments1.xml");
    EXPECT_EQ(
        CountOf(english, "A code of at most 12 characters: one of the account's category codes.\n(Field cRdCode)"), 1U)
        << english;
    EXPECT_EQ(CountOf(english, "A name of the account, of at most 60 characters and without quotes.\n"
                               "(Field cItemCName)"),
              1U);
}

TEST_F(Template, OffersTheAccountsCodesFromItsSecondSheet) {
    const std::string path = Make("ClsKovra", KnownCodes());
    importing::Workbook workbook(path);
    ASSERT_EQ(workbook.sheets().size(), 2U);
    EXPECT_EQ(workbook.sheets()[0].name, "数据");
    EXPECT_EQ(workbook.sheets()[1].name, "可用编码");
    const std::unique_ptr<importing::Table> table = workbook.Open(1);
    std::vector<std::vector<std::string>> lines;
    for (Line line; table->Next(line);) {
        lines.emplace_back();
        for (const importing::Cell& cell : line.cells) {
            lines.back().push_back(cell.text);
        }
    }
    EXPECT_EQ(lines, (std::vector<std::vector<std::string>>{{"账套中的仓库", "名称", "", "账套中的存货", "名称"},
                                                            {"01", "成品库", "", "1001", "轴承"},
                                                            {"02", "<原料> & 库"}}));
    const std::string sheet = test::PackageFile::Read(path).Part("xl/worksheets/sheet1.xml");
    EXPECT_EQ(CountOf(sheet, "<formula1>'可用编码'!$A$2:$A$3</formula1>"), 1U) << sheet;
    EXPECT_EQ(CountOf(sheet, "<formula1>'可用编码'!$D$2:$D$2</formula1>"), 1U);
}

TEST_F(Template, HasOneSheetWithoutAnAccount) { EXPECT_EQ(importing::Workbook(Make("ClsKovra")).sheets().size(), 1U); }

TEST_F(Template, FilledInIsReadAsItWasTyped) {
    const std::string path = Make("ClsKovra", KnownCodes());
    test::PackageFile package = test::PackageFile::Read(path);
    const std::string part = "xl/worksheets/sheet1.xml";
    std::string sheet = package.Part(part);
    // As Excel stores what is typed: a code in a column of texts as a text, a date by its column's format.
    const std::size_t dates = sheet.find("<col min=\"6\" max=\"6\"");
    ASSERT_NE(dates, std::string::npos);
    const std::size_t style = sheet.find("style=\"", dates) + 7;
    const std::string dateStyle = sheet.substr(style, sheet.find('"', style) - style);
    const auto text = [](const std::string& each) { return "<c t=\"inlineStr\"><is><t>" + each + "</t></is></c>"; };
    sheet.insert(sheet.find("</sheetData>"), "<row r=\"2\">" + text("01") + text("1001") +
                                                 "<c><v>3</v></c><c><v>0.5</v></c><c><v>1.5</v></c><c s=\"" +
                                                 dateStyle + "\"><v>45296</v></c></row>");
    package.Set(part, sheet);
    package.Write(path);
    const importing::Sheet read = importing::Spreadsheet(path, {}, {}, nullptr).Read(KnownCodes());
    ASSERT_EQ(read.rows.size(), 1U);
    EXPECT_TRUE(read.rows[0].refusals.empty());
    EXPECT_TRUE(read.rows[0].corrections.empty());
    const std::vector<std::string>& values = read.rows[0].values;
    EXPECT_EQ(std::vector<std::string>(values.begin(), values.begin() + 6),
              (std::vector<std::string>{"01", "1001", "3", "0.5", "1.5", "2024-01-05"}));
}

TEST_F(Template, KeepsCodesAsTexts) {
    const test::PackageFile package = test::PackageFile::Read(Make("ClsKovra"));
    const std::string& sheet = package.Part("xl/worksheets/sheet1.xml");
    const std::string& styles = package.Part("xl/styles.xml");
    // The formats of cells in order; 49 is the format of texts.
    std::vector<bool> isText;
    const std::size_t formats = styles.find("<cellXfs");
    for (std::size_t at = styles.find("<xf ", formats); at < styles.find("</cellXfs>");
         at = styles.find("<xf ", at + 1)) {
        isText.push_back(styles.compare(at, 19, "<xf numFmtId=\"49\" f") == 0);
    }
    const ClassFields& classFields = *importing::FieldsOf("ClsKovra");
    for (std::size_t column = 0; column < classFields.fields.size(); ++column) {
        const std::string number = std::to_string(column + 1);
        const std::size_t at = sheet.find("<col min=\"" + number + "\" max=\"" + number + "\"");
        ASSERT_NE(at, std::string::npos);
        const std::string element = sheet.substr(at, sheet.find("/>", at) - at);
        const std::size_t style = element.find("style=\"");
        const bool text = style != std::string::npos && isText.at(std::stoul(element.substr(style + 7)));
        EXPECT_EQ(text, classFields.fields[column].length != 0) << classFields.fields[column].element;
    }
}

} // namespace
