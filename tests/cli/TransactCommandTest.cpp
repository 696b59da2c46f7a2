// `kovra transact`: exit status, the summary in both languages, formats, the journal, and what looks like a mistake.

#include "tests/cli/ProgramFixture.h"

namespace test {
namespace {

std::string Rows(const std::string& rows, const std::string& proc = "ADD") {
    return "<qxinterface roottag=\"row\" docid=\"D\" proc=\"" + proc + "\">" + rows + "</qxinterface>";
}

constexpr const char* good = "<row><cWhCode>01</cWhCode><cInvHead>1405</cInvHead></row>";
constexpr const char* unknownWarehouse = "<row><cWhCode>99</cWhCode><cInvHead>1405</cInvHead></row>";

TEST_F(Program, EndsWithZeroWhenEverythingIsAccepted) {
    const Ended run = Transact(oneSetting);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.error, "1 row accepted.\n");
}

TEST_F(Program, EndsWithOneWhenARowIsRefused) {
    const Ended run = Transact(Rows(std::string(good) + unknownWarehouse));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "1 row accepted, 1 row refused.\n"
                         "  row 2 (仓库编码：99): 仓库编码不合法。\n");
}

TEST_F(Program, EndsWithOneWhenEveryRowIsRefused) {
    const Ended run = Transact(Rows(unknownWarehouse), "--lang zh");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "没有导入任何数据，被拒绝 1 行。\n"
                         "  第 1 行（仓库编码：99）：仓库编码不合法。\n");
}

TEST_F(Program, CountsARowThatIsRefusedAndThenOkAsRefused) {
    Transact(oneSetting);
    const Ended run = Transact(oneSetting);
    EXPECT_TRUE(Contains(run.output, "code=\"101\" dsc=\"对照关系已经存在，无法插入新记录。\"/><item"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "1 row refused, none accepted.\n"
                         "  row 1 (仓库编码：01): 对照关系已经存在，无法插入新记录。\n");
}

TEST_F(Program, EndsWithThreeForAnErrorResult) {
    const Ended run = Transact("<a");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.error, "The request was refused as a whole (100): 解析XML时发生错误,请你检查XML参数格式\n"
                         "Nothing was imported.\n");
}

TEST_F(Program, EndsWithZeroAfterEmpty) {
    Write("login.xml", "<login QxDbName=\"" + account().connectionString() + ";Delete Star=Accept\" cIYear=\"2023\"/>");
    const Ended run = Transact(Rows("", "empty"));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.error, "Operation EMPTY is done; it has no result.\n");
}

TEST_F(Program, SaysThatAllRowsAreAccepted) {
    account().Run("insert into Warehouse (cWhCode) values ('02')");
    const std::string request = Rows(std::string(good) + "<row><cWhCode>02</cWhCode><cInvHead>1405</cInvHead></row>");
    EXPECT_EQ(Transact(request, "--lang zh").error, "2 行全部导入。\n");
}

TEST_F(Program, TellsTheFirstTenRefusalsAndCountsTheOthers) {
    std::string rows;
    for (int row = 0; row < 13; ++row) {
        rows += unknownWarehouse;
    }
    const Ended run = Transact(Rows(rows), "--lang zh");
    EXPECT_TRUE(Contains(run.error, "没有导入任何数据，被拒绝 13 行。"));
    EXPECT_TRUE(Contains(run.error, "  第 10 行（仓库编码：99）"));
    EXPECT_FALSE(Contains(run.error, "第 11 行"));
    EXPECT_TRUE(Contains(run.error, "  另有 3 条拒绝信息，全部见结果\n"));
}

TEST_F(Program, NamesTheEntriesThatRefuseAPriceVoucher) {
    Write("voucher.xml", "<qxinterface roottag=\"v\" docid=\"D\" proc=\"ADD\"><v><header><ID>T1</ID>"
                         "<dCJVDate>no date</dCJVDate></header><body><entry><cInvCode>A</cInvCode></entry></body></v>"
                         "</qxinterface>");
    Write("login.xml", account().LoginXml());
    const Ended run = Kovra("transact --class ClsPriceJustVou --login login.xml --lang zh voucher.xml");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "没有导入任何数据，被拒绝 1 张单据。\n"
                         "  第 1 张单据表体第 1 行：单据T1导入失败：请输入正确的日期格式\n");
}

TEST_F(Program, GuessesAtARefusalWithoutAReason) {
    const Ended run = Transact("<qxinterface roottag=\"row\" docid=\"D\" proc=\"ADD\">" + std::string(good) +
                                   "<row><cWhCode>0'1</cWhCode><cInvHead>1405</cInvHead></row></qxinterface>",
                               "--lang zh");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.error, "  第 2 行（仓库编码：0'1）：没有给出原因，常见原因是值中含有单引号（'）\n"));
}

TEST_F(Program, IsSilentWhenAskedTo) {
    const Ended run = Transact(Rows(unknownWarehouse), "--quiet");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(Transact(oneSetting, "-q").error, "");
}

TEST_F(Program, ForgesNoLineFromAValue) {
    const Ended run = Transact(Rows("<row><cWhCode>9\n\x1B[31m</cWhCode><cInvHead>1405</cInvHead></row>"));
    EXPECT_EQ(run.status, 3); // the escape character is no XML
    const Ended broken = Transact(Rows("<row><cWhCode>9\n9</cWhCode><cInvHead>1405</cInvHead></row>"));
    EXPECT_TRUE(Contains(broken.error, "  row 1 (仓库编码：9\\n9): 仓库编码不合法。\n"));
}

// --- warnings

TEST_F(Program, WarnsOfARequestThatSelectsNoRow) {
    const Ended run =
        Transact("<qxinterface roottag=\"rows\" docid=\"D\" proc=\"ADD\">" + std::string(good) + "</qxinterface>");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.error, "The request holds nothing to import.\n"
                         "warning: the request selects no row: its roottag names none of its elements\n");
}

TEST_F(Program, WarnsOfAnUnknownOperation) {
    const Ended run = Transact(Rows(good, "Insert"));
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(Contains(run.error,
                         "warning: the request asks for operation 'INSERT'; ClsInvSubject offers ADD, EDIT, EMPTY\n"));
}

TEST_F(Program, WarnsOfAnEmptyStandardInput) {
    const Ended run = Kovra("transact --class ClsInvSubject --login login.xml --lang zh < /dev/null");
    EXPECT_EQ(run.status, 3);
    EXPECT_TRUE(Contains(run.error, "注意：标准输入是空的；请指定请求文件，或从标准输入送入请求\n"));
}

TEST_F(Program, WarnsOfChildrenThatTheClassDoesNotRead) {
    const Ended run = Transact(Rows("<row><cWhCode>01</cWhCode><cInvHead>1405</cInvHead><cDiffHead>1</cDiffHead></row>"
                                    "<row><cDiffHead>1</cDiffHead><remark/></row>"));
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Contains(run.error,
                         "warning: <cDiffHead> is no field of ClsInvSubject and was not read (2 times, first "
                         "in row 1); did you mean <cDifHead>?\n"
                         "warning: <remark> is no field of ClsInvSubject and was not read (1 times, first in "
                         "row 2)\n"));
}

TEST_F(Program, WarnsOfAnOpeningBalancesFieldInAnotherLetterCaseAlone) {
    Write("request.xml", Rows("<row><cWhCode>01</cWhCode><iquantity>1</iquantity><cColour>red</cColour></row>"));
    Write("login.xml", account().LoginXml());
    const Ended run = Kovra("transact --class ClsKovra --login login.xml --lang zh request.xml");
    // The ledger of this account takes none, and no row is looked at.
    EXPECT_EQ(run.status, 3);
    account().Run("insert into AccInformation (cSysID, cName, cValue) values ('IA', 'dIAStartDate', '2023-01-01'), "
                  "('AA', 'cSysVersion', N'工业')\nGO\n"
                  "insert into QxSystem..UA_Period (cAcc_ID, iYear, iId, dBegin, dEnd) values "
                  "('001', 2023, 1, '2023-01-01', '2023-01-31')");
    const Ended taken = Kovra("transact --class ClsKovra --login login.xml --lang zh request.xml");
    EXPECT_EQ(taken.status, 1);
    EXPECT_TRUE(Contains(taken.error, "注意：<iquantity> 不是 ClsKovra 的字段，未被读取（共 1 处，首见于第 1 行）；"
                                      "是否想写 <iQuantity>？\n"));
    EXPECT_FALSE(Contains(taken.error, "cColour>"));
}

// --- formats

TEST_F(Program, WritesTheResultAsATable) {
    const Ended run = Transact(Rows(std::string(good) + unknownWarehouse), "--format table");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "Row  Outcome   Code  Key           Message\n"
                          "---  --------  ----  ------------  ----------------\n"
                          "  1  accepted     0  仓库编码：01  ok\n"
                          "  2  refused    101  仓库编码：99  仓库编码不合法。\n");
}

TEST_F(Program, WritesTheResultAsJson) {
    const Ended run = Transact(Rows(std::string(good) + unknownWarehouse), "--format json");
    EXPECT_EQ(run.output, "{\"class\":\"ClsInvSubject\",\"docid\":\"D\",\"proc\":\"ADD\",\"rows\":2,\"accepted\":1,"
                          "\"refused\":1,\"undone\":false,\"outcomes\":["
                          "{\"row\":1,\"key\":\"仓库编码：01， ， \",\"code\":0,\"dsc\":\"ok\"},\n"
                          "{\"row\":2,\"key\":\"仓库编码：99， ， \",\"code\":101,\"dsc\":\"仓库编码不合法。\"}]}\n");
    EXPECT_EQ(Transact("<a", "--format json").output,
              "{\"class\":\"ClsInvSubject\",\"docid\":\"\",\"proc\":\"\",\"error\":{\"code\":\"100\","
              "\"dsc\":\"解析XML时发生错误,请你检查XML参数格式\"}}\n");
}

TEST_F(Program, RefusesAnUnknownFormat) {
    const Ended run = Transact(oneSetting, "--format yaml");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "xml, table, json"));
    EXPECT_TRUE(account().Rows("select * from IA_HeadSet").empty());
}

// --- the journal

TEST_F(Program, KeepsAJournalOfEachOutcome) {
    Transact(Rows(std::string(good) + unknownWarehouse), "--journal journal.jsonl");
    Transact("<a", "--journal journal.jsonl");
    EXPECT_EQ(Read(Path("journal.jsonl")),
              "{\"begin\":\"ClsInvSubject\",\"request\":\"request.xml\"}\n"
              "{\"row\":1,\"key\":\"仓库编码：01， ， \",\"code\":0,\"dsc\":\"ok\"}\n"
              "{\"row\":2,\"key\":\"仓库编码：99， ， \",\"code\":101,\"dsc\":\"仓库编码不合法。\"}\n"
              "{\"end\":\"done\"}\n"
              "{\"begin\":\"ClsInvSubject\",\"request\":\"request.xml\"}\n"
              "{\"end\":\"refused\"}\n");
}

TEST_F(Program, ImportsNothingWhenTheJournalCannotBeWritten) {
    const Ended run = Transact(oneSetting, "--journal nowhere/journal");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(Contains(run.error, "nowhere/journal"));
    EXPECT_EQ(Transact(oneSetting, "--journal /dev/full").status, 2);
    EXPECT_TRUE(account().Rows("select * from IA_HeadSet").empty());
}

// --- encodings

TEST_F(Program, KeepsTheResultInUtf8WhateverTheLocale) {
    Write("request.xml", oneSetting);
    for (const char* locale : {"LC_ALL=C", "LC_ALL=C.UTF-8", "LC_ALL=POSIX", "LC_ALL=none"}) {
        EXPECT_EQ(Kovra("transact --class ClsInvSubject --login login.xml request.xml", locale).output.find("<qx"), 0U);
    }
    EXPECT_TRUE(Contains(Kovra("transact --class ClsInvSubject --login login.xml request.xml", "LC_ALL=C").error,
                         "仓库编码：01"));
}

} // namespace
} // namespace test
