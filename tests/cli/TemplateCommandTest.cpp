// `kovra template`: a workbook to fill in.

#include "import/reading/Workbook.h"
#include "tests/cli/ProgramFixture.h"

namespace test {
namespace {

using TemplateCommand = Program;

TEST_F(TemplateCommand, MakesAWorkbookWithTheAccountsCodes) {
    const Ended run = Kovra("template ClsInvSubject -o 科目.xlsx --login login.xml --lang zh");
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(run.error, "已生成 科目.xlsx，带 * 的列必填。\n");
    importing::Workbook workbook(Path("科目.xlsx"));
    ASSERT_EQ(workbook.sheets().size(), 2U);
    const std::unique_ptr<importing::Table> codes = workbook.Open(1);
    importing::Line line;
    ASSERT_TRUE(codes->Next(line));
    EXPECT_EQ(line.cells.at(0).text, "账套中的仓库");
    ASSERT_TRUE(codes->Next(line));
    EXPECT_EQ(line.cells.at(0).text, "01");
    EXPECT_EQ(line.cells.at(1).text, "原料库");
}

TEST_F(TemplateCommand, SpeaksEnglish) {
    const Ended run = Kovra("template ClsKovra -o opening.xlsx --lang en");
    EXPECT_EQ(run.error, "Made opening.xlsx; the columns with * are required.\n");
    importing::Workbook workbook(Path("opening.xlsx"));
    ASSERT_EQ(workbook.sheets().size(), 1U);
    EXPECT_EQ(workbook.sheets()[0].name, "Rows");
    importing::Line line;
    ASSERT_TRUE(workbook.Open(0)->Next(line));
    EXPECT_EQ(line.cells.at(0).text, "Warehouse code*");
}

TEST_F(TemplateCommand, OverwritesNothing) {
    Write("opening.xlsx", "filled in");
    const Ended run = Kovra("template ClsKovra -o opening.xlsx --lang zh");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.error, "kovra: opening.xlsx 已经存在，没有覆盖\n");
    EXPECT_EQ(Read(Path("opening.xlsx")), "filled in");
}

TEST_F(TemplateCommand, SaysWhatIsMissing) {
    EXPECT_EQ(Kovra("template -o x.xlsx --lang zh").error, "kovra: 缺少 CLASS\n用法见 kovra template --help\n");
    EXPECT_EQ(Kovra("template ClsKovra --lang zh").error, "kovra: 缺少 --output\n用法见 kovra template --help\n");
    EXPECT_TRUE(Contains(Kovra("template ClsX -o x.xlsx --lang zh").error, "没有名为“ClsX”的类"));
    EXPECT_EQ(Kovra("template ClsKovra -o none/x.xlsx").status, 2);
}

} // namespace
} // namespace test
