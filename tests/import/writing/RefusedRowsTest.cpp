// The file of refused rows: written, corrected and imported again.

#include "import/writing/RefusedRows.h"

#include "import/cells/Defuse.h"
#include "import/reading/OpenTable.h"
#include "import/rows/Spreadsheet.h"
#include "tests/import/PackageFile.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

namespace refused_rows {
namespace {

using importing::Cell;
using importing::Language;
using importing::Outcome;
using importing::RowState;
namespace message = importing::message;

std::string ReadAll(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

importing::Sheet ReadAgain(const std::string& path) { return importing::Spreadsheet(path, {}, {}, nullptr).Read({}); }

/// What the checks made of the file at `path`, as an import would tell it.
Outcome OutcomeOf(const std::string& path) {
    importing::Sheet sheet = ReadAgain(path);
    Outcome outcome;
    outcome.classFields = sheet.classFields;
    outcome.columns = sheet.columns;
    outcome.file.path = path;
    for (importing::Row& row : sheet.rows) {
        const bool refused = !row.refusals.empty();
        outcome.rows.push_back({.row = std::move(row),
                                .state = refused ? RowState::refusedByChecks : RowState::ready,
                                .key = {},
                                .messages = {},
                                .account = {}});
    }
    return outcome;
}

std::vector<std::string> Texts(const std::vector<Cell>& cells) {
    std::vector<std::string> texts;
    for (const Cell& cell : cells) {
        texts.push_back(cell.text);
    }
    return texts;
}

class RefusedRows : public testing::Test {
protected:
    std::string Csv(const std::string& text) const {
        std::ofstream(folder_.File("期初.csv"), std::ios::binary) << text;
        return folder_.File("期初.csv");
    }
    test::TestFolder folder_;
};

const std::string head = "仓库编码,存货编码,数量,金额,备注\n";

TEST(RefusedRowsPath, IsBesideTheFile) {
    using importing::RefusedRowsPath;
    EXPECT_EQ(RefusedRowsPath("账/期初.xlsx", Language::chinese), "账/期初.拒绝.xlsx");
    EXPECT_EQ(RefusedRowsPath("opening.csv", Language::english), "opening.refused.csv");
    EXPECT_EQ(RefusedRowsPath("a.b/opening", Language::english), "a.b/opening.refused.csv");
    EXPECT_EQ(RefusedRowsPath("opening.xlsm", Language::english), "opening.refused.xlsx");
}

TEST(Defused, TextsAreNoFormulasAndComeBack) {
    using importing::Defused;
    using importing::Undefused;
    EXPECT_EQ(Defused("=1+1"), "'=1+1");
    EXPECT_EQ(Defused("+86"), "'+86");
    EXPECT_EQ(Defused("-50"), "'-50");
    EXPECT_EQ(Defused("@SUM(A1)"), "'@SUM(A1)");
    EXPECT_EQ(Defused("\t=1"), "'\t=1");
    EXPECT_EQ(Defused("1001"), "1001");
    EXPECT_EQ(Defused("'quoted'"), "'quoted'");
    for (const char* const text : {"=1", "'=1", "''=1", "'", "'a", "", "a=1", "-"}) {
        EXPECT_EQ(Undefused(Defused(text)), text);
    }
}

TEST_F(RefusedRows, OfACsvFileStandInOneWithTheirReasonAndLine) {
    const Outcome outcome =
        OutcomeOf(Csv(head + "01,1001,2,10,好\n01,1002,两个,\"1,50\",\"多, \"\"行\"\"\"\n01,1003,x,5,=1+1\n"));
    const std::string path = folder_.File("期初.拒绝.csv");
    importing::WriteRefusedRows(outcome, Language::chinese, path);
    EXPECT_EQ(ReadAll(path), "\xEF\xBB\xBF拒绝原因,原行号,仓库编码,存货编码,数量,金额,备注\r\n"
                             "\"数量：“两个”不是数字。金额：“1,50”的逗号位置不对：是 1.5 还是 150？\",3,"
                             "01,1002,两个,\"1,50\",\"多, \"\"行\"\"\"\r\n"
                             "数量：“x”不是数字。备注：公式 =1+1 没有保存计算结果；请在 Excel 中打开并保存一次。,4,"
                             "01,1003,x,5,'=1+1\r\n");
}

TEST_F(RefusedRows, AreToldInEnglishToo) {
    const Outcome outcome = OutcomeOf(Csv("Warehouse code,Item code,Quantity,Amount\n01,1002,x,y\n"));
    const std::string path = folder_.File("refused.csv");
    importing::WriteRefusedRows(outcome, Language::english, path);
    EXPECT_EQ(ReadAll(path), "\xEF\xBB\xBFRefused because,Original line,Warehouse code,Item code,Quantity,Amount\r\n"
                             "\"Quantity: \"\"x\"\" is no number. Amount: \"\"y\"\" is no number.\",2,01,1002,x,y\r\n");
}

TEST_F(RefusedRows, OfACsvFileAreReadAsTheyWere) {
    const Outcome outcome = OutcomeOf(Csv(head + "01,1002,-50,5e,-9\n01,1003,-50,x,'=1\n"));
    const std::string path = folder_.File("期初.拒绝.csv");
    importing::WriteRefusedRows(outcome, Language::chinese, path);
    const Outcome again = OutcomeOf(path);
    ASSERT_EQ(again.rows.size(), 2U);
    EXPECT_EQ(again.columns.faults, std::vector<importing::Note>());
    EXPECT_EQ(Texts(again.rows[0].row.cells),
              (std::vector<std::string>{"金额：“5e”不是数字。", "2", "01", "1002", "-50", "5e", "-9"}));
    EXPECT_EQ(again.rows[1].row.cells.back().text, "'=1");
    ASSERT_EQ(again.rows[0].row.refusals.size(), 1U);
    EXPECT_EQ(again.rows[0].row.refusals[0].note, (importing::Note{message::numberNone, {"5e"}}));
    EXPECT_EQ(importing::ValueOf(again, again.rows[0].row, "iQuantity"), "-50");
}

TEST_F(RefusedRows, OfRefusedRowsHaveTheirFrontColumnsOnce) {
    const std::string first = folder_.File("期初.拒绝.csv");
    importing::WriteRefusedRows(OutcomeOf(Csv(head + "01,1001,1,1,\n01,1002,x,5,\n")), Language::chinese, first);
    const std::string second = folder_.File("期初.拒绝.拒绝.csv");
    importing::WriteRefusedRows(OutcomeOf(first), Language::chinese, second);
    EXPECT_EQ(ReadAll(second), "\xEF\xBB\xBF拒绝原因,原行号,仓库编码,存货编码,数量,金额,备注\r\n"
                               "数量：“x”不是数字。,2,01,1002,x,5,\r\n");
}

TEST_F(RefusedRows, HaveTheClassesReasonsToo) {
    Outcome outcome = OutcomeOf(Csv(head + "01,1001,1,1,\n"));
    outcome.rows[0].state = RowState::refusedByClass;
    outcome.rows[0].messages = {"仓库编码不合法。"};
    const std::string path = folder_.File("期初.拒绝.csv");
    importing::WriteRefusedRows(outcome, Language::chinese, path);
    EXPECT_TRUE(ReadAll(path).find("\r\n仓库编码不合法。,2,01,1001,1,1,\r\n") != std::string::npos) << ReadAll(path);
}

/// A workbook with every kind of cell in a row that is refused.
std::string Workbook(const test::TestFolder& folder) {
    const auto text = [](const std::string& each) {
        return "<c t=\"inlineStr\"><is><t xml:space=\"preserve\">" + each + "</t></is></c>";
    };
    const std::string headings = text("仓库编码") + text("存货编码") + text("数量") + text("单价") + text("金额") +
                                 text("入库日期") + text("生产日期") + text("失效日期") + text("保质期") +
                                 text("备注") + text("批号");
    const std::string cells = "<c><v>1</v></c>" + text("  007 ") + "<c t=\"b\"><v>1</v></c><c t=\"e\"><v>#N/A</v></c>" +
                              "<c><f>A1*2</f></c><c s=\"1\"><v>45296</v></c><c s=\"1\"><v>60</v></c>" +
                              "<c s=\"1\"><v>45296.5</v></c><c><v>-12.5</v></c>" + text("=cmd|' /C calc'!A0") +
                              text("_x005F_x0041_&#9;b");
    test::PackageFile::OfSheet("<sheetData><row>" + headings + "</row><row>" + cells + "</row></sheetData>", "",
                               "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/></cellXfs>")
        .Write(folder.File("期初.xlsx"));
    return folder.File("期初.xlsx");
}

TEST_F(RefusedRows, OfAWorkbookKeepTheKindsOfTheirCells) {
    const Outcome outcome = OutcomeOf(Workbook(folder_));
    ASSERT_EQ(outcome.rows.size(), 1U);
    const std::string path = folder_.File("期初.拒绝.xlsx");
    importing::WriteRefusedRows(outcome, Language::chinese, path);
    const Outcome again = OutcomeOf(path);
    ASSERT_EQ(again.rows.size(), 1U);
    const std::vector<Cell>& before = outcome.rows[0].row.cells;
    const std::vector<Cell>& after = again.rows[0].row.cells;
    ASSERT_EQ(after.size(), before.size() + 2);
    EXPECT_EQ(after[1].text, "2");
    for (std::size_t column = 0; column < before.size(); ++column) {
        EXPECT_EQ(after[column + 2].text, before[column].text) << column;
        // The words of an error and of a formula stand for them.
        const bool words = before[column].kind == Cell::Kind::error || before[column].kind == Cell::Kind::noValue;
        EXPECT_EQ(after[column + 2].kind, words ? Cell::Kind::text : before[column].kind) << column;
    }
    // And so each is refused again, for the same reason.
    ASSERT_EQ(again.rows[0].row.refusals.size(), outcome.rows[0].row.refusals.size());
    for (std::size_t index = 0; index < again.rows[0].row.refusals.size(); ++index) {
        EXPECT_EQ(again.rows[0].row.refusals[index].note, outcome.rows[0].row.refusals[index].note) << index;
    }
    EXPECT_EQ(again.rows[0].row.refusals.size(), 5U);
}

TEST_F(RefusedRows, OfTheSameOutcomeAreTheSameBytes) {
    const Outcome outcome = OutcomeOf(Workbook(folder_));
    importing::WriteRefusedRows(outcome, Language::chinese, folder_.File("1.xlsx"));
    importing::WriteRefusedRows(outcome, Language::chinese, folder_.File("2.xlsx"));
    EXPECT_EQ(ReadAll(folder_.File("1.xlsx")), ReadAll(folder_.File("2.xlsx")));
}

TEST_F(RefusedRows, ThatCannotBeWrittenAreAnError) {
    const Outcome outcome = OutcomeOf(Workbook(folder_));
    EXPECT_THROW(importing::WriteRefusedRows(outcome, Language::chinese, folder_.File("none/x.xlsx")),
                 std::runtime_error);
    EXPECT_THROW(importing::WriteRefusedRows(outcome, Language::chinese, folder_.File("none/x.csv")),
                 std::runtime_error);
}

} // namespace
} // namespace refused_rows
