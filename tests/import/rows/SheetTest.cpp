#include "import/rows/Sheet.h"

#include "import/reading/Csv.h"
#include "import/reading/Workbook.h"
#include "import/request/BuildRequest.h"
#include "import/rows/Amounts.h"
#include "tests/import/PackageFile.h"

#include <gtest/gtest.h>

namespace {

using importing::CodeList;
using importing::CodeLists;
using importing::Note;
using importing::Row;
using importing::Sheet;
using importing::SheetOptions;
namespace message = importing::message;

CodeLists Codes() {
    CodeLists lists;
    lists[CodeList::costedWarehouse].Add("01", "成品库");
    lists[CodeList::item].Add("1001", "轴承");
    lists[CodeList::item].Add("1002", "钢管");
    return lists;
}

Sheet SheetOf(const std::string& csv, const SheetOptions& options = {}, const char* className = "ClsKovra") {
    importing::CsvTable table(csv, ',');
    return importing::ReadSheet(table, *importing::FieldsOf(className), Codes(), options);
}

/// The notes of a row's refusals.
std::vector<Note> Refusals(const Row& row) {
    std::vector<Note> notes;
    for (const importing::Finding& finding : row.refusals) {
        notes.push_back(finding.note);
    }
    return notes;
}

const std::string head = "仓库编码,存货编码,数量,单价,金额\n";

TEST(Sheet, FindsItsHeadingsBelowATitle) {
    const Sheet sheet = SheetOf("期初余额表,,,,\n制表人：张,,,,\n" + head + "01,1001,2,5,10\n");
    EXPECT_TRUE(sheet.faults.empty());
    EXPECT_EQ(sheet.headerLine, 3U);
    ASSERT_EQ(sheet.rows.size(), 1U);
    EXPECT_EQ(sheet.rows[0].line, 4U);
    EXPECT_EQ(sheet.rows[0].values, (std::vector<std::string>{"01", "1001", "2", "5", "10"}));
}

TEST(Sheet, TakesTheLineOfHeadingsThatTheUserNames) {
    const Sheet sheet = SheetOf("仓库编码,存货编码,x\n" + head + "01,1001,2,5,10\n", {.headerLine = 2});
    EXPECT_TRUE(sheet.faults.empty());
    EXPECT_EQ(sheet.rows.size(), 1U);
}

TEST(Sheet, WithoutHeadingsIsOfNoUse) {
    EXPECT_EQ(SheetOf("01,1001,2,5,10\n").faults, (std::vector<Note>{{message::headingsNotFound, {}}}));
}

TEST(Sheet, ListsEveryCorrectionWithOldAndNew) {
    const Sheet sheet = SheetOf(head + "01,1001 ,3,500,\"1,500.00\"\n");
    const Row& row = sheet.rows.at(0);
    ASSERT_EQ(row.corrections.size(), 2U);
    EXPECT_EQ(row.corrections[0].column, 1U);
    EXPECT_EQ(row.corrections[0].old, "1001 ");
    EXPECT_EQ(row.corrections[0].now, "1001");
    EXPECT_EQ(row.corrections[1].old, "1,500.00");
    EXPECT_EQ(row.corrections[1].now, "1500");
}

TEST(Sheet, NamesEveryFaultOfARowAtOnce) {
    const Sheet sheet = SheetOf(head + "1,9001,两个,5,\n");
    ASSERT_EQ(sheet.rows.size(), 1U);
    EXPECT_EQ(Refusals(sheet.rows[0]), (std::vector<Note>{{message::codeLeadingZeros, {"1", "01"}},
                                                          {message::codeUnknownNear, {"9001", "1001", "轴承"}},
                                                          {message::numberNone, {"两个"}},
                                                          {message::valueMissing, {"金额"}}}));
    EXPECT_EQ(sheet.rows[0].refusals[0].proposal, "01");
}

TEST(Sheet, MendsLeadingZerosWhenAskedTo) {
    const Sheet sheet = SheetOf(head + "1,1001,2,5,10\n", {.fixCodes = true});
    EXPECT_EQ(sheet.rows.at(0).values[0], "01");
    EXPECT_EQ(sheet.rows.at(0).corrections.at(0).old, "1");
}

TEST(Sheet, LeavesEmptyLinesOut) {
    const Sheet sheet = SheetOf(head + "\n01,1001,2,5,10\n , ,,,\n");
    EXPECT_EQ(sheet.rows.size(), 1U);
}

TEST(Sheet, RefusesARowThatRepeatsAnEarlierOne) {
    const Sheet sheet = SheetOf(head + "01,1001,2,5,10\n01,1002,2,5,10\n 01,1001,7,5,35\n");
    EXPECT_TRUE(sheet.rows.at(0).refusals.empty());
    EXPECT_EQ(Refusals(sheet.rows.at(2)), (std::vector<Note>{{message::rowRepeated, {"2"}}}));
    EXPECT_TRUE(
        SheetOf(head + "01,1001,2,5,10\n01,1001,7,5,35\n", {.allowDuplicates = true}).rows.at(1).refusals.empty());
}

TEST(Sheet, TellsRowsWithOtherBatchesApart) {
    const Sheet sheet = SheetOf("仓库,存货,金额,批号\n01,1001,1,A\n01,1001,1,B\n");
    EXPECT_TRUE(sheet.rows.at(1).refusals.empty());
}

TEST(Sheet, RefusesCellsWithoutAHeading) {
    const Sheet sheet = SheetOf(head + "01,1001,2,5,10,备注在此\n");
    EXPECT_EQ(Refusals(sheet.rows.at(0)), (std::vector<Note>{{message::cellWithoutHeading, {"备注在此"}}}));
}

TEST(Sheet, RefusesANegativeUnitCostButNotANegativeAmount) {
    const Sheet sheet = SheetOf(head + "01,1001,-2,-5,-10\n");
    EXPECT_EQ(Refusals(sheet.rows.at(0)), (std::vector<Note>{{message::numberNegative, {"-5"}}}));
}

TEST(Sheet, WarnsWhenTheAmountIsNotQuantityTimesUnitCost) {
    const Sheet sheet = SheetOf(head + "01,1001,3,3.33,10\n01,1002,3,3.33,9.99\n");
    ASSERT_EQ(sheet.rows.at(0).warnings.size(), 1U);
    EXPECT_EQ(sheet.rows[0].warnings[0].note, (Note{message::amountDiffers, {"0.01"}}));
    EXPECT_TRUE(sheet.rows.at(1).warnings.empty());
    EXPECT_TRUE(sheet.rows.at(0).refusals.empty());
}

TEST(Sheet, LeavesALineOfTotalsOutAndHoldsItAgainstTheRows) {
    const std::string rows = head + "01,1001,2,5,10\n01,1002,4,5,20\n";
    EXPECT_TRUE(SheetOf(rows + "合计,,6,,30.00\n").faults.empty());
    EXPECT_EQ(SheetOf(rows + "合 计：,,6,,30\n").rows.size(), 2U);
    EXPECT_EQ(SheetOf(rows + "Total,,6,,31\n").faults,
              (std::vector<Note>{{message::totalsDiffer, {"E4", "31", "30"}}}));
}

TEST(Sheet, HoldsNoTotalsAgainstRowsThatAreRefused) {
    EXPECT_TRUE(SheetOf(head + "01,9001,2,5,10\n合计,,6,,30\n").faults.empty());
}

TEST(Sheet, AddsUpAmountsToTheCent) {
    std::string rows = head;
    for (int row = 0; row < 1000; ++row) {
        rows += "01,1001,1,0.1,0.1\n";
    }
    const Sheet sheet = SheetOf(rows, {.allowDuplicates = true});
    EXPECT_EQ(importing::SumOf(sheet.rows, 4), 100.0);
}

/// A sheet of a workbook with the headings of the opening balances.
Sheet ReadWorkbook(const std::string& rows, const std::string& behind, const SheetOptions& options) {
    const test::TestFolder folder;
    const auto cell = [](const std::string& text) { return "<c t='inlineStr'><is><t>" + text + "</t></is></c>"; };
    test::PackageFile::OfSheet("<sheetData><row r='1'>" + cell("仓库") + cell("存货") + cell("金额") + "</row>" + rows +
                               "</sheetData>" + behind)
        .Write(folder.File("book.xlsx"));
    importing::Workbook workbook(folder.File("book.xlsx"));
    const std::unique_ptr<importing::Table> table = workbook.Open(0);
    return importing::ReadSheet(*table, *importing::FieldsOf("ClsKovra"), Codes(), options);
}

const std::string row2 = "<row r='2'><c t='inlineStr'><is><t>01</t></is></c><c><v>1001</v></c><c><v>7</v></c></row>";
const std::string hiddenRow3 =
    "<row r='3' hidden='1'><c t='inlineStr'><is><t>01</t></is></c><c><v>1002</v></c><c><v>8</v></c></row>";

TEST(Sheet, WithHiddenRowsAsksWhatBecomesOfThem) {
    EXPECT_EQ(ReadWorkbook(row2 + hiddenRow3, "", {}).faults, (std::vector<Note>{{message::rowsHidden, {"1"}}}));

    const Sheet taken = ReadWorkbook(row2 + hiddenRow3, "", {.hidden = SheetOptions::Hidden::include});
    EXPECT_TRUE(taken.faults.empty());
    EXPECT_EQ(taken.rows.size(), 2U);

    const Sheet skipped = ReadWorkbook(row2 + hiddenRow3, "", {.hidden = SheetOptions::Hidden::skip});
    EXPECT_TRUE(skipped.faults.empty());
    EXPECT_EQ(skipped.rows.size(), 1U);
    EXPECT_EQ(skipped.hiddenRows, 1U);
}

TEST(Sheet, RefusesRowsWithMergedCells) {
    const Sheet sheet = ReadWorkbook(row2, "<mergeCells><mergeCell ref='A2:A3'/></mergeCells>", {});
    EXPECT_EQ(Refusals(sheet.rows.at(0)), (std::vector<Note>{{message::cellsMerged, {}}}));
}

TEST(Sheet, TakesATitleOfMergedCells) {
    const Sheet sheet = ReadWorkbook(row2, "<mergeCells><mergeCell ref='A1:C1'/></mergeCells>", {});
    EXPECT_TRUE(sheet.rows.at(0).refusals.empty());
}

const std::string vouchers = "单据号,制单日期,存货编码,调整后单价,自由项1\n";

TEST(Documents, AreRefusedAsAWhole) {
    const Sheet sheet = SheetOf(vouchers + "T1,2024-01-05,1001,5,\nT2,2024-01-05,1001,6,\nT1,2024-01-05,9001,7,\n", {},
                                "ClsPriceJustVou");
    EXPECT_EQ(Refusals(sheet.rows.at(0)), (std::vector<Note>{{message::documentRefused, {"T1"}}}));
    EXPECT_TRUE(sheet.rows.at(1).refusals.empty());
    EXPECT_EQ(sheet.rows.at(2).refusals.at(0).note.message, message::codeUnknownNear);
}

TEST(Documents, HaveOneHeader) {
    const Sheet sheet = SheetOf(vouchers + "T1,2024-01-05,1001,5,\nT1,2024-01-06,1002,6,\n", {}, "ClsPriceJustVou");
    EXPECT_EQ(Refusals(sheet.rows.at(1)), (std::vector<Note>{{message::headerDiffers, {"T1", "2"}}}));
    EXPECT_EQ(Refusals(sheet.rows.at(0)), (std::vector<Note>{{message::documentRefused, {"T1"}}}));
}

TEST(Request, HoldsTheRowsThatAreTaken) {
    const Sheet sheet = SheetOf("仓库,存货,金额,备注\n01,1001,\"1,500\",6' 管 <大>\n9,1001,1,\n01,1002,2,\n");
    EXPECT_EQ(importing::BuildRequest(sheet, "期初-2024", "ADD"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<qxinterface roottag=\"row\" docid=\"期初-2024\" proc=\"ADD\">\n"
              "<row><cWhCode>01</cWhCode><cInvCode>1001</cInvCode><iPrice>1500</iPrice>"
              "<cMemo>6'' 管 &lt;大&gt;</cMemo></row>\n"
              "<row><cWhCode>01</cWhCode><cInvCode>1002</cInvCode><iPrice>2</iPrice></row>\n"
              "</qxinterface>\n");
}

TEST(Request, CarriesTheElementsThatAProjectNeeds) {
    const Sheet sheet = SheetOf("仓库,存货,金额,项目大类,项目\n01,1001,1,97,RD01\n");
    EXPECT_NE(importing::BuildRequest(sheet, "x", "ADD")
                  .find("<cItem_class>97</cItem_class><cItemCode>RD01</cItemCode><cItemCName></cItemCName>"
                        "<cName></cName>"),
              std::string::npos);
}

TEST(Request, NamesAProjectUnderBothSpellingsThatTheClassReads) {
    const Sheet sheet = SheetOf("收发类别,项目大类,项目,项目大类名称,项目名称,对方科目\n101,97,RD01,研发,新泵,1405\n",
                                {}, "ClsOppSubject");
    EXPECT_NE(importing::BuildRequest(sheet, "x", "ADD")
                  .find("<cItem_class>97</cItem_class><citem_class>97</citem_class><cItemCode>RD01</cItemCode>"
                        "<citemcode>RD01</citemcode><cItemCName>研发</cItemCName><cName>新泵</cName>"),
              std::string::npos);
}

TEST(Request, PutsTheRowsOfADocumentTogether) {
    const Sheet sheet = SheetOf(vouchers + "T1,2024/1/5,1001,5,甲\nT2,2024/1/5,1001,6,\nT1,2024/1/5,1001,7,乙\n", {},
                                "ClsPriceJustVou");
    EXPECT_EQ(importing::BuildRequest(sheet, "x", "ADD"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<qxinterface roottag=\"document\" docid=\"x\" proc=\"ADD\">\n"
              "<document><header><ID>T1</ID><dCJVDate>2024-01-05</dCJVDate></header><body>\n"
              "<entry><cInvCode>1001</cInvCode><iCJVACost>5</iCJVACost><cFree1>甲</cFree1></entry>\n"
              "<entry><cInvCode>1001</cInvCode><iCJVACost>7</iCJVACost><cFree1>乙</cFree1></entry>\n"
              "</body></document>\n"
              "<document><header><ID>T2</ID><dCJVDate>2024-01-05</dCJVDate></header><body>\n"
              "<entry><cInvCode>1001</cInvCode><iCJVACost>6</iCJVACost></entry>\n"
              "</body></document>\n"
              "</qxinterface>\n");
}

TEST(Request, GivesProvisionsTheirVoucherType) {
    const Sheet sheet = SheetOf("单据号,存货编码,跌价余额\nDJ1,1001,12.5\n", {}, "ClsKovraProof");
    EXPECT_NE(importing::BuildRequest(sheet, "x", "ADD")
                  .find("<header><Deccode>DJ1</Deccode><vouchtype>48</vouchtype></header>"),
              std::string::npos);
}

TEST(Sheet, KeepsARowWhoseTextIsTotal) {
    const Sheet sheet = SheetOf("仓库编码,存货编码,金额,备注\n01,1001,10,合计\n01,1002,5,Total\n合计,,15,\n");
    EXPECT_TRUE(sheet.faults.empty());
    EXPECT_EQ(sheet.rows.size(), 2U);
}

TEST(Sheet, KnowsNoRepetitionOfARowWhoseCodeIsRefused) {
    const Sheet sheet = SheetOf(head + "01,9001,1,5,5\n01,8001,1,5,5\n01,,1,5,5\n");
    ASSERT_EQ(sheet.rows.size(), 3U);
    for (const Row& row : sheet.rows) {
        EXPECT_EQ(row.refusals.size(), 1U) << row.line;
        EXPECT_EQ(row.refusals.at(0).column, 1U) << row.line;
    }
}

} // namespace
