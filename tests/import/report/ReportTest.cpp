// The report of an import: its figures, its words, and how a browser shows and prints it.

#include "import/report/Report.h"

#include "import/messages/Figures.h"
#include "import/reading/Csv.h"
#include "tests/import/Browser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using importing::Language;
using importing::Outcome;
using importing::RowOutcome;
using importing::RowState;
using testing::HasSubstr;
using testing::Not;
namespace message = importing::message;

class Report : public testing::Test {
protected:
    Report() {
        outcome.classFields = importing::FieldsOf("ClsKovra");
        importing::CsvTable table("仓库编码,存货编码,数量,单价,金额,备注\n", ',');
        importing::Line line;
        table.Next(line);
        outcome.columns = importing::ReadHeadings(line, *outcome.classFields, {});
        outcome.file = {"账/期初.xlsx", 123456, std::string(64, 'a')};
        outcome.login = {"王会计", "001", "2024"};
        outcome.time = "2024-01-31 17:05:09";
        outcome.number = 7;
        outcome.committed = true;
        outcome.warehouseNames = {{"01", "成品库"}};
        outcome.accountNames = {{"1405", "库存商品"}};
    }

    RowOutcome& Add(RowState state, std::vector<std::string> values, const std::string& account = "1405") {
        RowOutcome& row = outcome.rows.emplace_back();
        row.row.line = outcome.rows.size() + 1;
        row.row.values = std::move(values);
        row.row.values.resize(outcome.columns.fields.size());
        row.state = state;
        row.account = account;
        return row;
    }

    /// An import in which everything happened.
    void Fill() {
        Add(RowState::imported, {"01", "1001", "1000", "1.5", "1500"}).row.corrections = {
            {1, "１００１ ", "1001"}, {5, "<script>alert(1)</script>", "<b>&amp;\"'"}};
        Add(RowState::imported, {"01", "1002", "2.125", "", "0.1"}, "");
        Add(RowState::imported, {"02", "1001", "-3", "", "1234567.8"});
        Add(RowState::refusedByChecks, {"", "1001", "1", "", "5"}).row.refusals = {
            {0, {message::codeUnknown, {"99"}}, ""}};
        Add(RowState::refusedByClass, {"01", "1003", "4", "", "6"}).messages = {"存货编码不合法。"};
        Add(RowState::imported, {"01", "1004", "1", "2", "3"}).row.warnings = {
            {4, {message::amountDiffers, {"1"}}, ""}};
    }

    std::string Html(Language language = Language::chinese) const { return ReportHtml(outcome, language); }

    Outcome outcome;
};

TEST(Figures, AreWrittenAsAccountantsReadThem) {
    EXPECT_EQ(importing::Amount(1234567.8), "1,234,567.80");
    EXPECT_EQ(importing::Amount(-1234.5), "-1,234.50");
    EXPECT_EQ(importing::Amount(-999.999), "-1,000.00");
    EXPECT_EQ(importing::Amount(-0.001), "0.00");
    EXPECT_EQ(importing::Amount(0), "0.00");
    EXPECT_EQ(importing::Quantity(1000), "1,000");
    EXPECT_EQ(importing::Quantity(-123.25), "-123.25");
    EXPECT_EQ(importing::Quantity(0.0000001), "0");
    EXPECT_EQ(importing::Grouped(4353), "4,353");
}

TEST_F(Report, IsBesideTheFileAndAnImportsIsItsOwn) {
    EXPECT_EQ(ReportPath(outcome, Language::chinese), "账/期初.报告-7.html");
    EXPECT_EQ(ReportPath(outcome, Language::english), "账/期初.report-7.html");
    outcome.committed = false;
    EXPECT_EQ(ReportPath(outcome, Language::chinese), "账/期初.试运行.html");
    EXPECT_EQ(ReportPath(outcome, Language::english), "账/期初.test-run.html");
}

TEST_F(Report, HasNeitherScriptsNorOutsideLinks) {
    Fill();
    for (const Language language : {Language::chinese, Language::english}) {
        const std::string html = Html(language);
        EXPECT_THAT(html, Not(HasSubstr("<script")));
        EXPECT_THAT(html, Not(HasSubstr("http://")));
        EXPECT_THAT(html, Not(HasSubstr("https://")));
        EXPECT_THAT(html, HasSubstr("default-src 'none'"));
    }
}

TEST_F(Report, SaysOfATestRunThatNothingChanged) {
    outcome.committed = false;
    Add(RowState::ready, {"01", "1001", "1", "", "5"});
    EXPECT_THAT(Html(), HasSubstr("<p>试运行：可导入 1 行，拒绝 0 行。</p>\n<p>账套没有任何改动。</p>"));
    EXPECT_THAT(Html(), HasSubstr("<h1>期初余额·试运行报告</h1>"));
    EXPECT_THAT(Html(Language::english), HasSubstr("<h1>Opening balances: Report of a test run</h1>"));
}

TEST_F(Report, SaysWhyAFileIsUnusable) {
    outcome.committed = false;
    outcome.faults = {{message::headingMissing, {"iPrice", "金额", "Amount"}}};
    EXPECT_THAT(Html(), HasSubstr("<p>文件不能导入，没有导入任何数据。</p>\n<p>缺少“金额”列（iPrice）。</p>"));
}

TEST_F(Report, SaysThatTheAccountRefusesEverything) {
    outcome.refused = importing::RequestRefusal{"102", "12月已结账"};
    Add(RowState::notReached, {"01", "1001", "1", "", "5"});
    EXPECT_THAT(Html(), HasSubstr("<p>账套不接受这次导入（102）：12月已结账</p>"));
}

TEST_F(Report, SaysWhatIsOpenAfterAnInterruption) {
    outcome.interrupted = true;
    Add(RowState::alreadyIn, {"01", "1001", "1", "", "5"});
    Add(RowState::inDoubt, {"01", "1002", "1", "", "5"});
    Add(RowState::notReached, {"01", "1003", "1", "", "5"});
    const std::string html = Html();
    EXPECT_THAT(html, HasSubstr("<p>已导入 1 行，拒绝 0 行。</p>"));
    EXPECT_THAT(html, HasSubstr("<p>其中 1 行以前已导入，没有重复写入。</p>"));
    EXPECT_THAT(html, HasSubstr("<p>导入中断，还有 1 行没有处理；再次运行同一命令即可继续。</p>"));
    EXPECT_THAT(html, HasSubstr("<p>有 1 行不能确定是否已入账，请在账套中核对。</p>"));
}

TEST_F(Report, ListsTwoThousandCorrectionsAndCountsTheOthers) {
    for (int row = 0; row < 1001; ++row) {
        Add(RowState::imported, {"01", "1001", "1", "", "5"}).row.corrections = {{2, "１", "1"}, {4, "５", "5"}};
    }
    EXPECT_THAT(Html(), HasSubstr("<p>另有 2 处没有列出。</p>"));
}

/// A report as four frames show it: Chinese and English, 360 and 1280 pixels wide.
class ReportInABrowser : public Report {
protected:
    static constexpr int narrow = 360;
    static constexpr int wide = 1280;

    void SetUp() override {
        if (!test::HasBrowser()) {
            GTEST_SKIP() << "chromium or poppler-utils is not installed";
        }
    }
};

TEST_F(ReportInABrowser, ShowsItsFiguresAndFitsNarrowAndWidePages) {
    Fill();
    const std::string longText(200, 'x');
    outcome.rows[0].row.corrections.push_back({5, longText, longText});
    outcome.file.path = "很长的文件夹名/" + longText + ".xlsx";
    const std::vector<test::Shown> all = test::Show(
        {{Html(), wide}, {Html(), narrow}, {Html(Language::english), wide}, {Html(Language::english), narrow}});
    for (const test::Shown& shown : all) {
        EXPECT_LE(shown.overflow, 0);
        EXPECT_EQ(shown.scripts, 0);
        EXPECT_EQ(shown.links, 0);
        EXPECT_THAT(shown.texts.at(""), HasSubstr("<script>alert(1)</script>"));
        EXPECT_THAT(shown.texts.at(""), HasSubstr("<b>&amp;\"'"));
        EXPECT_EQ(shown.texts.at("hash"), std::string(64, 'a'));
        EXPECT_EQ(shown.texts.at("operator"), "王会计");
        EXPECT_EQ(shown.texts.at("time"), "2024-01-31 17:05:09");
    }
    EXPECT_EQ(all[0].texts.at("outcome"), "已导入 4 行，拒绝 2 行。");
    EXPECT_EQ(all[0].texts.at("totals"), "\t行数\t数量\t金额\n"
                                         "已导入\t4\t1,000.125\t1,236,070.90\n"
                                         "其中有更正\t1\t\t\n"
                                         "拒绝\t2\t5\t11.00");
    EXPECT_EQ(all[0].texts.at("warehouses"), "仓库编码\t名称\t行数\t数量\t金额\n"
                                             "01\t成品库\t3\t1,003.125\t1,503.10\n"
                                             "02\t\t1\t-3\t1,234,567.80\n"
                                             "合计\t\t4\t1,000.125\t1,236,070.90");
    EXPECT_EQ(all[0].texts.at("accounts"), "科目编码\t名称\t行数\t数量\t金额\n"
                                           "（未设科目）\t\t1\t2.125\t0.10\n"
                                           "1405\t库存商品\t3\t998\t1,236,070.80\n"
                                           "合计\t\t4\t1,000.125\t1,236,070.90");
    EXPECT_EQ(all[0].texts.at("refusals"), "原因\t次数\t最先出现在\n"
                                           "没有编码“…”。\t1\tA5\n"
                                           "存货编码不合法。（账套的提示）\t1\t第 6 行");
    EXPECT_EQ(all[0].texts.at("warnings"), "原因\t次数\t最先出现在\n金额与数量乘单价相差 …。\t1\tE7");
    EXPECT_THAT(all[0].texts.at("corrections"), HasSubstr("B2\t存货编码\t１００１ \t1001"));
    EXPECT_EQ(all[2].texts.at("outcome"), "4 rows were imported, 2 were refused.");
    EXPECT_EQ(all[2].texts.at("totals"), "\tRows\tQuantity\tAmount\n"
                                         "Imported\t4\t1,000.125\t1,236,070.90\n"
                                         "of these, corrected\t1\t\t\n"
                                         "Refused\t2\t5\t11.00");
    // On a narrow page each figure stands under its heading.
    EXPECT_THAT(all[1].texts.at("totals"), HasSubstr("1,236,070.90"));
    EXPECT_THAT(all[1].texts.at("totals"), Not(HasSubstr("\t")));
}

TEST_F(ReportInABrowser, IsPrintedOnSheetsWithHeadingsAndALineToSign) {
    Fill();
    for (int row = 0; row < 100; ++row) {
        Add(RowState::imported, {"01", "1001", "1", "", "5"}).row.corrections = {{2, "１", "1"}};
    }
    const std::vector<std::string> sheets = test::Print(Html());
    ASSERT_GE(sheets.size(), 3U);
    EXPECT_LE(sheets.size(), 6U);
    EXPECT_THAT(sheets.front(), HasSubstr("期初余额·导入报告"));
    EXPECT_THAT(sheets.front(), HasSubstr("1,236,570.90"));
    // The corrections go on over several sheets, each with the headings.
    EXPECT_THAT(sheets[1], HasSubstr("原值"));
    EXPECT_THAT(sheets[2], HasSubstr("原值"));
    EXPECT_THAT(sheets.back(), HasSubstr("制单"));
    EXPECT_THAT(sheets.back(), HasSubstr("审核"));
}

} // namespace
