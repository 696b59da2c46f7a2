// `kovra import` and `kovra imports` as a shell calls them, in both languages.

#include "tests/cli/ProgramFixture.h"

#include <regex>

namespace test {
namespace {

class ImportCommand : public Program {
protected:
    ImportCommand() : demo_(AccountContent::demo) {
        Write("demo.xml", demo_.LoginXml());
        Write("期初.csv", "仓库编码,存货编码,数量,单价,金额\n01,1001,\"1,000\",5,5000\n01,1007,2,1.5,3\n01,9999,1,1,1\n"
                          "02,9998,1,1,x\n");
    }

    Ended Import(const std::string& more, const std::string& environment = "LC_ALL=C.UTF-8") const {
        return Kovra("import 期初.csv --login demo.xml " + more, environment);
    }
    const TestAccount& demo() const { return demo_; }

private:
    TestAccount demo_;
};

TEST_F(ImportCommand, TellsInChineseWhatATestRunFound) {
    const Ended run = Import("--lang zh");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.error, "可以导入 2 行，数量 1,002，金额 5,003.00\n"
                         "  其中 1 行有更正\n"
                         "拒绝 2 行，数量 2，金额 1.00\n"
                         "  2 处：没有编码“…”。（B4、B5）\n"
                         "  1 处：“…”不是数字。（E5）\n"
                         "这是试运行，账套没有改动；正式导入请加 --commit。\n"
                         "被拒绝的行：期初.拒绝.csv（更正后再导入这个文件）\n"
                         "报告：期初.试运行.html\n");
    EXPECT_TRUE(demo().Rows("select * from Ia_subsidiary where cVouType = '34'").empty());
}

TEST_F(ImportCommand, TellsInEnglishWhatCameIn) {
    const Ended run = Import("--lang en --commit");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "2 rows in the account, quantity 1,002, amount 5,003.00\n"
                         "  of these, 1 row with corrections\n"
                         "2 rows refused, quantity 2, amount 1.00\n"
                         "  2: There is no code \"…\". (B4, B5)\n"
                         "  1: \"…\" is no number. (E5)\n"
                         "To take it back: kovra imports undo 1 --login demo.xml\n"
                         "Refused rows: 期初.refused.csv (correct and import that file)\n"
                         "Report: 期初.report-1.html\n");
    EXPECT_EQ(demo().Rows("select * from Ia_subsidiary where cVouType = '34'").size(), 2U);
}

TEST_F(ImportCommand, EndsWithTheStatusOfWhatHappened) {
    Write("good.csv", "仓库编码,存货编码,金额\n01,1001,5\n");
    EXPECT_EQ(Kovra("import good.csv --login demo.xml").status, 0);
    EXPECT_EQ(Import("--quiet").status, 1);
    EXPECT_EQ(Kovra("import none.csv --login demo.xml").status, 2);
    Write("bad.csv", "仓库编码,存货编码,金额,颜色\n01,1001,5,红\n");
    const Ended unknownColumn = Kovra("import bad.csv --login demo.xml --class ClsKovra");
    EXPECT_EQ(unknownColumn.status, 2) << unknownColumn.output << unknownColumn.error;
    demo().Run("insert into GL_mend (iyear, iperiod, bflag_IA) values (2024, 0, 1)");
    const Ended refused = Kovra("import good.csv --login demo.xml --commit --lang zh");
    EXPECT_EQ(refused.status, 3);
    EXPECT_TRUE(Contains(refused.error, "账套不接受导入（101）：存货核算系统已经期初记账。\n"));
}

TEST_F(ImportCommand, WritesReportAndRefusedRowsWhereItIsTold) {
    Import("--quiet --lang zh --report r.html --refused r.csv");
    EXPECT_TRUE(Contains(Read(Path("r.html")), "5,003.00"));
    EXPECT_TRUE(Contains(Read(Path("r.csv")), "9999"));
    EXPECT_FALSE(std::filesystem::exists(Path("期初.试运行.html")));
    // Corrected, the file of refused rows is imported and brings in just those.
    std::string refused = Read(Path("r.csv"));
    for (const auto& [wrong, right] : {std::pair("9999", "1006"), std::pair("9998", "2001"), std::pair(",x", ",1")}) {
        refused.replace(refused.rfind(wrong), std::string_view(wrong).size(), right);
    }
    Import("--quiet --commit");
    Write("r.csv", refused);
    const Ended run = Kovra("import r.csv --login demo.xml --commit --lang zh", "LC_ALL=C.UTF-8");
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(demo().Rows("select * from Ia_subsidiary where cVouType = '34'").size(), 4U) << run.error;
}

TEST_F(ImportCommand, WritesNoFileOfRefusedRowsWhereThereAreNone) {
    Write("good.csv", "仓库编码,存货编码,金额\n01,1001,5\n");
    EXPECT_EQ(Kovra("import good.csv --login demo.xml --lang en").status, 0);
    EXPECT_TRUE(std::filesystem::exists(Path("good.test-run.html")));
    EXPECT_FALSE(std::filesystem::exists(Path("good.refused.csv")));
}

TEST_F(ImportCommand, QuietSaysNothingOfWhatWentWell) { EXPECT_EQ(Import("--quiet --commit").error, ""); }

TEST_F(ImportCommand, WritesTheOutcomeAsJson) {
    const Ended run = Import("--json --quiet --lang zh");
    EXPECT_TRUE(Contains(run.output, R"("class":"ClsKovra")"));
    EXPECT_TRUE(Contains(run.output, R"("run":"test")"));
    EXPECT_TRUE(Contains(run.output, R"("taken":{"rows":2,"quantity":1002,"amount":5003.00})"));
    EXPECT_TRUE(
        Contains(run.output, R"({"line":2,"state":"ready","corrections":[{"cell":"C2","old":"1,000","new":"1000"}]})"));
    EXPECT_TRUE(
        Contains(run.output, R"({"line":4,"state":"refused","reasons":[{"cell":"B4","words":"没有编码“9999”。"}]})"));
    EXPECT_TRUE(run.output.ends_with("]}\n"));
}

TEST_F(ImportCommand, ListsShowsAndTakesImportsBack) {
    EXPECT_EQ(Kovra("imports list --login demo.xml --lang zh").error, "还没有导入过。\n");
    Import("");
    Import("--commit");
    const std::string list = Kovra("imports list --login demo.xml --lang zh", "LC_ALL=C.UTF-8").output;
    EXPECT_TRUE(std::regex_search(
        list,
        std::regex(R"( *2  \d{4}-\d\d-\d\d \d\d:\d\d:\d\d  已完成 +ClsKovra  期初.csv  王会计 +2 +2 +5,003.00\n)")))
        << list;
    EXPECT_TRUE(Contains(list, "试运行"));
    const std::string shown = Kovra("imports show 2 --login demo.xml --lang en", "LC_ALL=C.UTF-8").output;
    EXPECT_TRUE(std::regex_search(shown, std::regex("SHA-256 of the file: [0-9a-f]{64}\n"))) << shown;
    EXPECT_TRUE(std::regex_search(shown, std::regex(R"(\n +2  imported +\d+\n +3  imported +\d+\n)"))) << shown;

    const Ended undone = Kovra("imports undo 2 --login demo.xml --lang en");
    EXPECT_EQ(undone.status, 0);
    EXPECT_EQ(undone.error, "Import 2 is taken back; 2 rows deleted from the account\n");
    EXPECT_TRUE(demo().Rows("select * from Ia_subsidiary where cVouType = '34'").empty());
    const Ended again = Kovra("imports undo 2 --login demo.xml --lang en");
    EXPECT_EQ(again.status, 2);
    EXPECT_TRUE(Contains(again.error, "2 is a test run, or was taken back already"));
    EXPECT_EQ(Kovra("imports undo 9 --login demo.xml").status, 2);
}

TEST_F(ImportCommand, DoesNotTakeBackWhatWasChanged) {
    Import("--commit");
    demo().Run("update Ia_subsidiary set iAInPrice = 1 where cInvCode = '1007'");
    const Ended undone = Kovra("imports undo 1 --login demo.xml --lang zh");
    EXPECT_EQ(undone.status, 1);
    EXPECT_EQ(undone.error, "1 行导入后改动过或已删除，没有撤销任何内容。\n  文件中的行：3\n");
}

} // namespace
} // namespace test
